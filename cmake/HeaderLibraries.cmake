# Header-only libraries, also where the target's own system has none. Part of the
# installed package, too: its users look for Boost by the same rules.
#
# fl_header_library(<target> <header> [<package> [<version>]]) makes the interface
# target <target>, through which <header> can be included. It looks
#
# 1. for the target <package>::headers, made already or by find_package, which goes by the
#    package's own description and not by CMake's;
# 2. for <header> below <PACKAGE>_ROOT and among the target system's headers, by find_path;
# 3. while cross-compiling, among the build host's own headers. These can't be put
#    on the include path as they are: /usr/include also holds the host's C library.
#    So a folder of the build tree gets a link to the one library and nothing else.
#
# Nothing found is an error, or, inside find_package, makes the package not found.

function(fl_header_library target header)
  if(TARGET ${target})
    return()
  endif()
  set(host_folders /usr/include /usr/local/include)
  set(folder "")
  set(roots "")

  if(ARGC GREATER 2)
    string(TOUPPER ${ARGV2} root)
    set(roots ${${root}_ROOT} $ENV{${root}_ROOT} ${${ARGV2}_ROOT} $ENV{${ARGV2}_ROOT})
    if(NOT TARGET ${ARGV2}::headers AND NOT CMAKE_CROSSCOMPILING AND NOT ${target}_INCLUDE_DIR)
      find_package(${ARGN} QUIET CONFIG HINTS ${roots})
    endif()
    if(TARGET ${ARGV2}::headers)
      get_target_property(is_imported ${ARGV2}::headers IMPORTED)
      if(NOT is_imported)
        # part of the same project: its folders may be those of many targets behind it
        add_library(${target} INTERFACE)
        target_link_libraries(${target} INTERFACE ${ARGV2}::headers)
        return()
      endif()
      # its folders and not the target itself, which other directories may not see
      get_target_property(folder ${ARGV2}::headers INTERFACE_INCLUDE_DIRECTORIES)
    endif()
  endif()

  if(NOT folder)
    find_path(${target}_INCLUDE_DIR ${header} HINTS ${roots} PATH_SUFFIXES include)
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
  endif()

  if(NOT folder)
    set(message "fl_filesystem needs the header ${header}. Install its library, or set "
                "${target}_INCLUDE_DIR to the folder that holds it.")
    list(JOIN message "" message)
    if(CMAKE_FIND_PACKAGE_NAME)
      set(${CMAKE_FIND_PACKAGE_NAME}_FOUND FALSE PARENT_SCOPE)
      set(${CMAKE_FIND_PACKAGE_NAME}_NOT_FOUND_MESSAGE "${message}" PARENT_SCOPE)
      return()
    endif()
    message(FATAL_ERROR "${message}")
  endif()
  add_library(${target} INTERFACE)
  target_include_directories(${target} SYSTEM INTERFACE "${folder}")
endfunction()
