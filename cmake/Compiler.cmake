# Warnings, sanitizers and the compiler cache, the same for every target.
add_library(tvx_flags INTERFACE)
target_compile_options(tvx_flags INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
# g++ 12 sees overlapping copies in `std::string + "literal"` where there are none.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  target_compile_options(tvx_flags INTERFACE -Wno-restrict)
endif()
if(TVX_SANITIZE)
  target_compile_options(tvx_flags INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all
                                             -fno-omit-frame-pointer)
  # With the sanitizers' code in between, g++ sees an empty std::optional read where it is not.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(tvx_flags INTERFACE -Wno-maybe-uninitialized)
  endif()
  target_link_options(tvx_flags INTERFACE -fsanitize=address,undefined)
endif()
if(TVX_FUZZ)
  target_compile_options(tvx_flags INTERFACE -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all)
  target_link_options(tvx_flags INTERFACE -fsanitize=address,undefined)
endif()

# ccache, where it is installed; the settings make it hit with precompiled headers and in any folder.
find_program(TVX_CCACHE ccache)
if(TVX_CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER
      ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
      CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1 ${TVX_CCACHE})
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(tvx_flags INTERFACE -fpch-preprocess)
  endif()
endif()
