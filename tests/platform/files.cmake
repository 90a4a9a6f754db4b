# Images and meshes in files. zlib makes the odd and the broken PNG files, gdk-pixbuf images of other formats.
pkg_check_modules(PIXBUF REQUIRED IMPORTED_TARGET gdk-pixbuf-2.0)
pkg_check_modules(ZLIB REQUIRED IMPORTED_TARGET zlib)

mr_test(test_files
  LIBRARIES PkgConfig::PIXBUF PkgConfig::ZLIB
  SOURCES
    platform/gr/gr_stretch_bltTest.cpp
    platform/gx/gxImageFileUtilsTest.cpp
    platform/gx/gxPNGTest.cpp
    platform/gx/gx_read_dmt_fileTest.cpp)
