# Header-only libraries, also where the target's own system has none.
#
# fl_header_library(<target> <header> [<package> [<version>]]) makes the interface
# target <target>, through which <header> can be included. It looks
#
# 1. for <package> and its target <package>::headers, by find_package;
# 2. for <header> among the target system's headers, by find_path;
# 3. while cross-compiling, among the build host's own headers. These can't be put
#    on the include path as they are: /usr/include also holds the host's C library.
#    So a folder of the build tree gets a link to the one library and nothing else.

function(fl_header_library target header)
  if(TARGET ${target})
    return()
  endif()
  add_library(${target} INTERFACE)
  set(host_folders /usr/include /usr/local/include)

  if(ARGC GREATER 2 AND NOT CMAKE_CROSSCOMPILING)
    find_package(${ARGN} QUIET)
    if(TARGET ${ARGV2}::headers)
      target_link_libraries(${target} INTERFACE ${ARGV2}::headers)
      return()
    endif()
  endif()

  find_path(${target}_INCLUDE_DIR ${header})
  set(folder "${${target}_INCLUDE_DIR}")
  if(CMAKE_CROSSCOMPILING AND (NOT folder OR folder IN_LIST host_folders))
    find_path(${target}_HOST_INCLUDE_DIR ${header} PATHS ${host_folders} NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
    set(host_folder "${${target}_HOST_INCLUDE_DIR}")
    if(host_folder)
      string(REGEX REPLACE "/.*" "" library "${header}")
      set(folder "${CMAKE_CURRENT_BINARY_DIR}/host-headers/${target}")
      file(MAKE_DIRECTORY "${folder}")
      file(CREATE_LINK "${host_folder}/${library}" "${folder}/${library}" SYMBOLIC)
    endif()
  endif()
  if(NOT folder)
    message(FATAL_ERROR "fl_filesystem needs the header ${header}. Install its library, or set "
                        "${target}_INCLUDE_DIR to the folder that holds it.")
  endif()
  target_include_directories(${target} SYSTEM INTERFACE "${folder}")
endfunction()
