# What Explorer shows of a file under "Details", and what installers compare: name, version and
# description in the DLL and in programs. Toolchains without a compiler for resources do without.
#
# fl_version_resource(<target> <description>)
if(WIN32)
  include(CheckLanguage)
  check_language(RC)
  if(CMAKE_RC_COMPILER)
    enable_language(RC)
  endif()
endif()
set(FL_VERSION_RESOURCE "${CMAKE_CURRENT_LIST_DIR}/version.rc.in")

function(fl_version_resource target description)
  if(NOT CMAKE_RC_COMPILER)
    return()
  endif()
  get_target_property(type ${target} TYPE)
  set(file_type VFT_DLL)
  set(suffix .dll)
  if(type STREQUAL "EXECUTABLE")
    set(file_type VFT_APP)
    set(suffix .exe)
  endif()
  configure_file("${FL_VERSION_RESOURCE}" ${target}.rc @ONLY)
  # an object of its own: warning switches aren't for this compiler
  add_library(${target}_version OBJECT "${CMAKE_CURRENT_BINARY_DIR}/${target}.rc")
  target_sources(${target} PRIVATE "$<TARGET_OBJECTS:${target}_version>")
endfunction()
