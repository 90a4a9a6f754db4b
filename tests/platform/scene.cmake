mr_test(mr_scene_tests LIBRARIES mr_platform SOURCES
  platform/dg/dgElementsTest.cpp
  platform/dg/dgStructureTest.cpp
  platform/dg/dgViewTest.cpp)

# Another program, so that scenes are tested where there is no OpenGL too.
pkg_check_modules(EPOXY REQUIRED IMPORTED_TARGET epoxy)
mr_test(mr_renderer_tests LIBRARIES mr_renderer PkgConfig::EPOXY SOURCES
  renderer/dgOffscreenContextTest.cpp
  renderer/dgOffscreenMeshTest.cpp
  renderer/dgOffscreenProgramTest.cpp
  renderer/dgOffscreenRendererTest.cpp
  renderer/dgOffscreenTextureTest.cpp
  renderer/picture.cpp)
