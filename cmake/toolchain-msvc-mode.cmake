# Clang as Microsoft's compiler, over the headers of MinGW-w64: no program comes of it, but
# sources are judged by Microsoft's rules, and objects name what they export, import and
# ask the linker for. For scripts/check-msvc-mode; with FL_MICROSOFT_STL in the environment over
# the standard library in that folder, for scripts/check-msvc-stl.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(CMAKE_C_COMPILER clang)
set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_C_COMPILER_TARGET x86_64-pc-windows-msvc)
set(CMAKE_CXX_COMPILER_TARGET x86_64-pc-windows-msvc)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
set(CMAKE_AR x86_64-w64-mingw32-ar)

find_program(FL_MINGW_COMPILER NAMES x86_64-w64-mingw32-g++-posix x86_64-w64-mingw32-g++ REQUIRED)
execute_process(COMMAND "${FL_MINGW_COMPILER}" -print-file-name=libstdc++.a
                OUTPUT_VARIABLE fl_mingw_library OUTPUT_STRIP_TRAILING_WHITESPACE)
cmake_path(GET fl_mingw_library PARENT_PATH fl_mingw_gcc)
execute_process(COMMAND clang++ -print-resource-dir
                OUTPUT_VARIABLE fl_clang_resources OUTPUT_STRIP_TRAILING_WHITESPACE)
set(fl_mode "${CMAKE_CURRENT_LIST_DIR}/msvc-mode")

set(fl_standard "${fl_mingw_gcc}/include/c++" "${fl_mingw_gcc}/include/c++/x86_64-w64-mingw32")
set(fl_version 19.32)
if(DEFINED ENV{FL_MICROSOFT_STL})
  set(fl_standard "${fl_mode}/runtime" "$ENV{FL_MICROSOFT_STL}")
  file(STRINGS "$ENV{FL_MICROSOFT_STL}/yvals_core.h" fl_version REGEX "^#if _MSC_VER < 19[0-9][0-9]")
  string(REGEX REPLACE ".* 19([0-9][0-9]).*" "19.\\1" fl_version "${fl_version}")
endif()
list(TRANSFORM fl_standard PREPEND "-isystem ")

# As GCC 4.2 the headers of MinGW-w64 take it for one that can do without what Clang hasn't
# in this mode.
set(CMAKE_CXX_FLAGS_INIT
    -fms-compatibility -fms-compatibility-version=${fl_version} -fms-extensions -fno-delayed-template-parsing
    -nostdlibinc -D__GNUC__=4 -D__GNUC_MINOR__=2 "'-D__declspec(x)=__declspec(x)'"
    -include "${fl_mode}/prelude.h" -isystem "${fl_mode}"
    ${fl_standard}
    -isystem "${fl_clang_resources}/include" -isystem /usr/x86_64-w64-mingw32/include)
list(JOIN CMAKE_CXX_FLAGS_INIT " " CMAKE_CXX_FLAGS_INIT)

set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
# Nothing can be linked, and nothing has to be found out.
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
foreach(language IN ITEMS C CXX)
  set(CMAKE_${language}_COMPILER_WORKS TRUE)
  set(CMAKE_${language}_ABI_COMPILED TRUE)
  set(CMAKE_${language}_SIZEOF_DATA_PTR 8)
endforeach()
set(CMAKE_SIZEOF_VOID_P 8)
set(CMAKE_HAVE_LIBC_PTHREAD TRUE)
