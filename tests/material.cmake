mr_test(mr_material_test LIBRARIES mr SOURCES
  utils/mrTypesTest.cpp
  utils/mrUtilsTest.cpp
  utils/mrXMLUtilsTest.cpp
  file/mrFileMatTest.cpp
  file/mrFileMultimatTest.cpp
  file/mrFMFacetTest.cpp
  file/mrFMPlainMatTest.cpp
  file/mrFMTextureTest.cpp
  file/mrMatPropTest.cpp)
target_include_directories(mr_material_test PRIVATE utils)
