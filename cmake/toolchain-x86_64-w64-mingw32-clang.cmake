# Compiles for 64-bit Windows with Clang over the headers and libraries of
# MinGW-w64 GCC, posix thread model. For compiling only: a second opinion on our
# code, not a build that we ship.
include("${CMAKE_CURRENT_LIST_DIR}/toolchain-x86_64-w64-mingw32-posix.cmake")

set(CMAKE_C_COMPILER clang)
set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_C_COMPILER_TARGET x86_64-w64-mingw32)
set(CMAKE_CXX_COMPILER_TARGET x86_64-w64-mingw32)

# Debian keeps two thread models side by side, in folders that Clang doesn't know.
file(GLOB fl_mingw_gcc /usr/lib/gcc/x86_64-w64-mingw32/*-posix)
if(NOT fl_mingw_gcc)
  message(FATAL_ERROR "Clang needs the headers of MinGW-w64 GCC with the posix thread model "
                      "(Debian: g++-mingw-w64-x86-64-posix)")
endif()
list(GET fl_mingw_gcc 0 fl_mingw_gcc)
set(CMAKE_CXX_FLAGS_INIT
    "-nostdinc++ -isystem ${fl_mingw_gcc}/include/c++ -isystem ${fl_mingw_gcc}/include/c++/x86_64-w64-mingw32 -isystem ${fl_mingw_gcc}/include/c++/backward")
# Clang 19 warns of a header of its own, which that of MinGW-w64 for its built-in functions includes
string(APPEND CMAKE_CXX_FLAGS_INIT " -Wno-#warnings")
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
