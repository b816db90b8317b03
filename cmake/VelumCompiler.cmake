# How every target of this tree is compiled. A project that adds Velum as a subdirectory keeps its own flags: these are set on
# an interface target, not globally, except for the sanitizers, which must cover whatever is linked together.

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES AND PROJECT_IS_TOP_LEVEL)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "" FORCE)
endif()

add_library(velum_compile_options INTERFACE)
target_compile_features(velum_compile_options INTERFACE cxx_std_20)
target_compile_options(velum_compile_options INTERFACE
  -ffp-contract=off)                     # the same bits with and without fused multiply-add

if(VELUM_STRICT)
  target_compile_options(velum_compile_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror
    # g++ 12 sees overlaps and overflows where std::string joins texts (GCC bug 105651, mended in 13).
    "$<$<AND:$<CXX_COMPILER_ID:GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>:-Wno-array-bounds;-Wno-restrict;-Wno-stringop-overflow>")
  find_program(VELUM_CCACHE ccache)
  if(VELUM_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    # A precompiled header defeats the cache unless it is told to look at what the header holds. Folders are looked at from the
    # tree's own, so that one preset takes over what another has compiled in the same way.
    if(NOT DEFINED ENV{CCACHE_BASEDIR})
      set(VELUM_CCACHE_BASE "CCACHE_BASEDIR=${PROJECT_SOURCE_DIR}")
    endif()
    set(CMAKE_CXX_COMPILER_LAUNCHER
      ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
      CCACHE_NOHASHDIR=1 ${VELUM_CCACHE_BASE} ${VELUM_CCACHE})
    # clang writes the time of each header into a precompiled one; from the cache it would be another clone's.
    add_compile_options("$<$<CXX_COMPILER_ID:Clang>:SHELL:-Xclang -fno-pch-timestamp>")
  endif()
endif()

if(VELUM_COVERAGE)
  # The counters lie in mapped files, so that those of a process count however it ends.
  add_compile_options(-fcoverage-mapping "SHELL:-mllvm -runtime-counter-relocation"
    "-fprofile-instr-generate=${PROJECT_BINARY_DIR}/counts/%c%m.profraw")
  add_link_options(-fprofile-instr-generate)
endif()

if(VELUM_SANITIZE)
  add_compile_options(-fsanitize=${VELUM_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${VELUM_SANITIZE})
endif()
