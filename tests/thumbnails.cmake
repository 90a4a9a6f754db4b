# Tinted images, the geometry of thumbnails, and thumbnails: on a renderer that records, and as pictures.

mr_test(mr_thumbnail_tests
  LIBRARIES mr
  SOURCES
    image/mrRecolouredImageTest.cpp
    image/mrRecolouredImageCacheTest.cpp
    file/mrPieChartTest.cpp
    file/mrThumbAttsTest.cpp
    file/mrThumbnailsTest.cpp)

if(MR_RENDERER)
  mr_test(mr_thumbnail_picture_tests
    LIBRARIES mr mr_renderer
    SOURCES file/mrThumbnailsPictureTest.cpp)
endif()
