# Read by find_package(fl_filesystem). The headers hold times of Boost.DateTime, so
# whoever uses them gets the folder of Boost's headers, too.
cmake_policy(VERSION 3.22)
include("${CMAKE_CURRENT_LIST_DIR}/HeaderLibraries.cmake")
fl_header_library(fl_boost_headers boost/version.hpp Boost 1.74)
include(CMakeFindDependencyMacro)
if(NOT WIN32) # there the library is linked to call_once
  find_dependency(Boost 1.74 CONFIG COMPONENTS thread)
endif()
if(TARGET fl_boost_headers)
  if(NOT TARGET fl::boost_headers)
    add_library(fl::boost_headers ALIAS fl_boost_headers)
  endif()
  include("${CMAKE_CURRENT_LIST_DIR}/fl_filesystem-targets.cmake")
  # where both configurations are installed, only Debug is compiled for Debug: a build of no type
  # takes the first
  get_target_property(fl_configurations fl::filesystem IMPORTED_CONFIGURATIONS)
  if("RELEASE" IN_LIST fl_configurations)
    list(REMOVE_ITEM fl_configurations RELEASE)
    list(PREPEND fl_configurations RELEASE)
    set_target_properties(fl::filesystem PROPERTIES IMPORTED_CONFIGURATIONS "${fl_configurations}")
  endif()
  set_target_properties(fl::filesystem PROPERTIES
    MAP_IMPORTED_CONFIG_RELWITHDEBINFO "RelWithDebInfo;Release;"
    MAP_IMPORTED_CONFIG_MINSIZEREL "MinSizeRel;Release;"
    INTERFACE_SOURCES "${CMAKE_CURRENT_LIST_DIR}/fl_filesystem.natvis")
  if(MSVC AND NOT CMAKE_GENERATOR MATCHES "^Visual Studio") # whose projects go by the sources
    set_target_properties(fl::filesystem PROPERTIES
      INTERFACE_LINK_OPTIONS "/NATVIS:${CMAKE_CURRENT_LIST_DIR}/fl_filesystem.natvis")
  endif()
endif()
