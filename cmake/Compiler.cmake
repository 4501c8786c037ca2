include(CheckCXXCompilerFlag)

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# What people get unless they ask for something else: optimised, with debug information.
if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE RelWithDebInfo CACHE STRING "Debug is for developers" FORCE)
endif()

# Programs that people get are loaded at another address each time.
if(NOT CMAKE_BUILD_TYPE STREQUAL "Debug")
  include(CheckPIESupported)
  check_pie_supported()
  set(CMAKE_POSITION_INDEPENDENT_CODE ON)
endif()

# A symbol that is unique in the process keeps its library mapped after dlclose.
check_cxx_compiler_flag(-fno-gnu-unique TUV_HAS_NO_GNU_UNIQUE)

find_program(TUV_CCACHE ccache)
if(TUV_CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env
                                  CCACHE_SLOPPINESS=pch_defines,time_macros ${TUV_CCACHE})
endif()

# The sanitizers' build, the longest, reads a target's costly headers once. The others read them in
# every file unless told otherwise: there each file must include what it uses.
function(tuv_precompile target)
  if(TUV_PRECOMPILE)
    target_precompile_headers(${target} PRIVATE ${ARGN})
  endif()
endfunction()

# Faults in memory end the program where they happen, and what the loader has bound cannot be
# rebound. The debug build goes without, the sanitizers see more.
function(tuv_harden target)
  if(CMAKE_BUILD_TYPE STREQUAL "Debug" OR TUV_SANITIZE OR NOT TUV_HARDEN)
    return()
  endif()
  target_compile_options(${target} PRIVATE -fstack-protector-strong -U_FORTIFY_SOURCE
                                           -D_FORTIFY_SOURCE=2 -D_GLIBCXX_ASSERTIONS)
  target_link_options(${target} PRIVATE LINKER:-z,relro,-z,now)
endfunction()

# How every target of the project is compiled.
function(tuv_compile target)
  target_compile_options(
    ${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wconversion
                      -Wno-sign-conversion -Werror)
  if(TUV_HAS_NO_GNU_UNIQUE)
    target_compile_options(${target} PRIVATE -fno-gnu-unique)
  endif()
  # g++ 12 takes texts put together with + for overlapping copies once it optimises.
  target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
  if(TUV_SANITIZE)
    target_compile_definitions(${target} PRIVATE TUV_SANITIZE)
    target_compile_options(${target} PRIVATE -fsanitize=address,undefined -fno-omit-frame-pointer
                                             -fno-sanitize-recover=undefined -g1)
    target_link_options(${target} PRIVATE -fsanitize=address,undefined)
  endif()
  if(TUV_FUZZ)
    target_compile_options(${target} PRIVATE -fsanitize=fuzzer-no-link)
  endif()
  tuv_harden(${target})
endfunction()
