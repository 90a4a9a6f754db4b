# Images and meshes in files. zlib makes the odd and the broken PNG files.
pkg_check_modules(ZLIB REQUIRED IMPORTED_TARGET zlib)

mr_test(test_files
  LIBRARIES PkgConfig::ZLIB
  SOURCES
    platform/gr/gr_stretch_bltTest.cpp
    platform/gx/gxPNGTest.cpp)
