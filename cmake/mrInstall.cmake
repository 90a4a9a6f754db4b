# The installed package: libraries, headers in one folder, the program, and what CMake and pkg-config find.
# Everything in it names the rest by a relative path, so the installed folder can be moved.

include(CMakePackageConfigHelpers)

set(mr_header_folder ${CMAKE_INSTALL_INCLUDEDIR}/mr)
set(mr_package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/mr)

# mr_install_library(TARGET PKG-CONFIG-NAME REQUIRES EXPORT): a library and its headers.
function(mr_install_library target name requires export)
  set_target_properties(${target} PROPERTIES
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}
    INSTALL_RPATH $ORIGIN)
  install(TARGETS ${target} EXPORT ${export}
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    FILE_SET HEADERS DESTINATION ${mr_header_folder})

  get_target_property(library ${target} OUTPUT_NAME)
  if(NOT library)
    set(library ${target})
  endif()
  file(RELATIVE_PATH prefix /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/mr.pc.in ${PROJECT_BINARY_DIR}/package/${name}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/package/${name}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endfunction()

# mr_install_export(EXPORT): the targets of an export set, as mr::NAME.
function(mr_install_export export)
  install(EXPORT ${export} NAMESPACE mr:: DESTINATION ${mr_package_folder})
endfunction()

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/mrConfig.cmake.in
  ${PROJECT_BINARY_DIR}/package/mrConfig.cmake INSTALL_DESTINATION ${mr_package_folder})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/package/mrConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/package/mrConfig.cmake ${PROJECT_BINARY_DIR}/package/mrConfigVersion.cmake
  DESTINATION ${mr_package_folder})
