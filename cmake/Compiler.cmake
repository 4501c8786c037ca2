include(CheckCXXCompilerFlag)

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# A symbol that is unique in the process keeps its library mapped after dlclose.
check_cxx_compiler_flag(-fno-gnu-unique TUV_HAS_NO_GNU_UNIQUE)

find_program(TUV_CCACHE ccache)
if(TUV_CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env
                                  CCACHE_SLOPPINESS=pch_defines,time_macros ${TUV_CCACHE})
endif()

# The sanitizers' build, the longest, reads a target's costly headers once. The others read them in
# every file: there each file must include what it uses.
function(tuv_precompile target)
  if(TUV_SANITIZE)
    target_precompile_headers(${target} PRIVATE ${ARGN})
  endif()
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
endfunction()
