# Compiles for 64-bit Windows with MinGW-w64 GCC and the posix thread model (std::thread and
# std::mutex need it). On Linux that is cross-compiling, and what is built runs under Wine;
# on Windows it is the GCC that the Path leads to. Another one:
# -DCMAKE_CXX_COMPILER=... -DCMAKE_C_COMPILER=...
if(NOT CMAKE_HOST_WIN32)
  set(CMAKE_SYSTEM_NAME Windows)
  set(CMAKE_SYSTEM_PROCESSOR x86_64)
endif()

# Debian keeps both thread models side by side, others have one and no word for it
foreach(language IN ITEMS C CXX)
  set(name gcc)
  if(language STREQUAL CXX)
    set(name g++)
  endif()
  if(NOT CMAKE_${language}_COMPILER)
    find_program(FL_MINGW_${language} NAMES x86_64-w64-mingw32-${name}-posix x86_64-w64-mingw32-${name}
                 NAMES_PER_DIR)
    if(NOT FL_MINGW_${language} AND CMAKE_HOST_WIN32)
      find_program(FL_MINGW_${language} ${name})
    endif()
    if(NOT FL_MINGW_${language})
      message(FATAL_ERROR "There is no MinGW-w64 GCC (Debian: g++-mingw-w64-x86-64-posix). "
                          "Install it, or set CMAKE_${language}_COMPILER.")
    endif()
    set(CMAKE_${language}_COMPILER "${FL_MINGW_${language}}")
  endif()
endforeach()
execute_process(COMMAND "${CMAKE_CXX_COMPILER}" -v OUTPUT_QUIET ERROR_VARIABLE fl_compiler_says)
if(fl_compiler_says MATCHES "Thread model: win32")
  message(FATAL_ERROR "${CMAKE_CXX_COMPILER} has the thread model win32; the library needs one "
                      "with the thread model posix.")
endif()

if(NOT CMAKE_HOST_WIN32)
  find_program(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
  execute_process(COMMAND "${CMAKE_CXX_COMPILER}" -print-sysroot
                  OUTPUT_VARIABLE fl_sysroot OUTPUT_STRIP_TRAILING_WHITESPACE)
  # what the user names is for the target, too
  set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32 ${fl_sysroot} ${CMAKE_PREFIX_PATH})
  set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
  set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
  set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
  set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
  set(CMAKE_CROSSCOMPILING_EMULATOR "${CMAKE_CURRENT_LIST_DIR}/../scripts/run-under-wine")
endif()
