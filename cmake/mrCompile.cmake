# What every target of the project is compiled with.

include(CheckIPOSupported)
check_ipo_supported(RESULT mr_ipo_supported OUTPUT mr_ipo_output LANGUAGES CXX)

# A library's functions call each other directly and are inlined into each other, across its sources: all
# public ones begin with small checks.
function(mr_compile_whole target)
  target_compile_options(${target} PRIVATE -fno-semantic-interposition)
  target_link_options(${target} PRIVATE LINKER:-Bsymbolic-functions)
  set_target_properties(${target} PROPERTIES INTERPROCEDURAL_OPTIMIZATION_RELEASE ${mr_ipo_supported})
endfunction()

# A library of the project: it exports its own names alone, so that nothing ties it to the process and it unloads.
function(mr_export_own target)
  set(exports ${PROJECT_SOURCE_DIR}/cmake/exports.map)
  target_link_options(${target} PRIVATE LINKER:--version-script=${exports})
  set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${exports})
endfunction()

function(mr_compile target)
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow
    # Colours are truncated: a multiplication fused with an addition would give others on some processors.
    -ffp-contract=off
    # Reports name their source file by its path from the project's root, the same on every machine.
    -fmacro-prefix-map=${PROJECT_SOURCE_DIR}/=)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # Its inlining of std::string's operator+ gives false reports, GCC bug 105651.
    target_compile_options(${target} PRIVATE -Wno-restrict)
  endif()
  if(MR_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
  if(MR_FUZZ)
    # Lets libFuzzer see which way an input takes.
    target_compile_options(${target} PRIVATE -fsanitize=fuzzer-no-link)
  endif()
  if(MR_SANITIZE)
    target_compile_options(${target} PRIVATE
      -fsanitize=${MR_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(${target} PRIVATE -fsanitize=${MR_SANITIZE})
  endif()
endfunction()
