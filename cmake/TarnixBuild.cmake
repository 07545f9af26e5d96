# How every target of this project is compiled.

if(PROJECT_IS_TOP_LEVEL)
  if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
  endif()
  set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

  # One place for programs and one for libraries, found by each other relative to themselves: a build tree can be moved.
  set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")
  set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/lib")
  set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)

  # What was compiled in one checkout is found in the compiler cache by another one, or a copy in another place.
  find_program(CCACHE_PROGRAM ccache)
  if(CCACHE_PROGRAM AND NOT DEFINED CMAKE_CXX_COMPILER_LAUNCHER)
    set(ccache_settings "CCACHE_BASEDIR=${PROJECT_SOURCE_DIR}" CCACHE_NOHASHDIR=1)
    if(TARNIX_PRECOMPILE)
      list(APPEND ccache_settings CCACHE_SLOPPINESS=pch_defines,time_macros)
    endif()
    set(CMAKE_CXX_COMPILER_LAUNCHER "${CMAKE_COMMAND}" -E env ${ccache_settings} "${CCACHE_PROGRAM}")
  endif()
endif()

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)

add_library(tarnix_build INTERFACE)
# Designated initializers leave the other fields at their defaults on purpose.
target_compile_options(tarnix_build INTERFACE
  -Wall -Wextra -Wshadow -Wno-missing-field-initializers $<$<BOOL:${TARNIX_WERROR}>:-Werror>)
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 sees overlapping copies in every `"literal" + std::string` (GCC bug 105651).
  target_compile_options(tarnix_build INTERFACE -Wno-restrict)
endif()

if(TARNIX_SANITIZE)
  set(sanitizers "${TARNIX_SANITIZE}")
  if(sanitizers MATCHES undefined)
    target_compile_options(tarnix_build INTERFACE -fno-sanitize-recover=undefined)
  endif()
  target_compile_options(tarnix_build INTERFACE -fsanitize=${sanitizers} -fno-omit-frame-pointer)
  target_link_options(tarnix_build INTERFACE -fsanitize=${sanitizers})
endif()
if(TARNIX_SANITIZE AND CMAKE_CXX_COMPILER_ID STREQUAL GNU)
  # The sanitizers' own code makes GCC see uninitialized values in the standard library.
  target_compile_options(tarnix_build INTERFACE -Wno-maybe-uninitialized)
endif()
if(TARNIX_FUZZ)
  target_compile_options(tarnix_build INTERFACE -fsanitize=fuzzer-no-link)
endif()

# tarnix_precompile(TARGET HEADER...): with TARNIX_PRECOMPILE these and the most common headers of the standard library are
# read once for all sources of the target. Builds without it show what a source has forgotten to include.
function(tarnix_precompile target)
  if(TARNIX_PRECOMPILE)
    target_precompile_headers(${target} PRIVATE <algorithm> <array> <cstdint> <map> <memory> <optional> <span> <string>
      <string_view> <unordered_map> <unordered_set> <utility> <vector> ${ARGN})
  endif()
endfunction()

# tarnix_glob(OUT PATTERN...): the files that match, looked up again at every build.
function(tarnix_glob out)
  file(GLOB_RECURSE files CONFIGURE_DEPENDS RELATIVE "${CMAKE_CURRENT_SOURCE_DIR}" ${ARGN})
  list(SORT files)
  set(${out} "${files}" PARENT_SCOPE)
endfunction()
