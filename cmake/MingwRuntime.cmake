# Puts GCC's runtime beside our programs and the DLL, so that `bin` runs as it is.
# The runtime is shared and not linked into each: exceptions pass from the DLL to
# its callers. FL_MINGW_RUNTIME lists the files.
set(FL_MINGW_RUNTIME "")
foreach(library libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
  execute_process(COMMAND "${CMAKE_CXX_COMPILER}" -print-file-name=${library}
                  OUTPUT_VARIABLE file OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(IS_ABSOLUTE "${file}")
    file(COPY "${file}" DESTINATION "${PROJECT_BINARY_DIR}/bin")
    list(APPEND FL_MINGW_RUNTIME "${file}")
  endif()
endforeach()
