# What every target of the project is compiled with.

function(mr_compile target)
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow
    # Reports name their source file by its path from the project's root, the same on every machine.
    -fmacro-prefix-map=${PROJECT_SOURCE_DIR}/=)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # Its inlining of std::string's operator+ gives false reports, GCC bug 105651.
    target_compile_options(${target} PRIVATE -Wno-restrict)
  endif()
  if(MR_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
  if(MR_SANITIZE)
    target_compile_options(${target} PRIVATE
      -fsanitize=${MR_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(${target} PRIVATE -fsanitize=${MR_SANITIZE})
  endif()
endfunction()
