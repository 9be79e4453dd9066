# Runs the port for vcpkg over functions that do what vcpkg's do, with our toolchain:
# cmake -DWORK=... -DBUILD_FOLDERS=... -DTOOLCHAIN=... -DPORT_FOLDER=... -P run_port.cmake
cmake_minimum_required(VERSION 3.22)

get_filename_component(PORT "${PORT_FOLDER}" NAME)
set(CURRENT_PACKAGES_DIR "${WORK}/packages/${PORT}_x64-windows")
set(build_Release "${BUILD_FOLDERS}-rel")
set(build_Debug "${BUILD_FOLDERS}-dbg")
set(prefix_Release "${CURRENT_PACKAGES_DIR}")
set(prefix_Debug "${CURRENT_PACKAGES_DIR}/debug")

function(run)
  execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    list(JOIN ARGN " " command)
    message(FATAL_ERROR "${command}\n${output}")
  endif()
endfunction()

function(vcpkg_cmake_configure)
  cmake_parse_arguments(PARSE_ARGV 0 arg "" "SOURCE_PATH" "OPTIONS;OPTIONS_RELEASE;OPTIONS_DEBUG")
  foreach(type IN ITEMS Release Debug)
    string(TOUPPER ${type} own)
    run("${CMAKE_COMMAND}" -G Ninja -S "${arg_SOURCE_PATH}" -B "${build_${type}}"
        -DCMAKE_BUILD_TYPE=${type} "-DCMAKE_INSTALL_PREFIX=${prefix_${type}}" -DBUILD_SHARED_LIBS=ON
        "-DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN}" ${arg_OPTIONS} ${arg_OPTIONS_${own}})
  endforeach()
endfunction()

function(vcpkg_cmake_install)
  foreach(type IN ITEMS Debug Release)
    run("${CMAKE_COMMAND}" --build "${build_${type}}" --target install)
  endforeach()
endfunction()

# Both configurations' targets into share/, where they find their files from.
function(vcpkg_cmake_config_fixup)
  cmake_parse_arguments(PARSE_ARGV 0 arg "" "PACKAGE_NAME;CONFIG_PATH" "")
  set(share "${CURRENT_PACKAGES_DIR}/share/${arg_PACKAGE_NAME}")
  file(GLOB files "${CURRENT_PACKAGES_DIR}/${arg_CONFIG_PATH}/*")
  file(COPY ${files} DESTINATION "${share}")
  file(REMOVE_RECURSE "${CURRENT_PACKAGES_DIR}/${arg_CONFIG_PATH}")
  file(GLOB debug_files "${CURRENT_PACKAGES_DIR}/debug/${arg_CONFIG_PATH}/*-debug.cmake")
  foreach(file IN LISTS debug_files)
    get_filename_component(name "${file}" NAME)
    file(READ "${file}" text)
    string(REPLACE "\${_IMPORT_PREFIX}/" "\${_IMPORT_PREFIX}/debug/" text "${text}")
    file(WRITE "${share}/${name}" "${text}")
  endforeach()
  file(REMOVE_RECURSE "${CURRENT_PACKAGES_DIR}/debug/${arg_CONFIG_PATH}")
  file(GLOB targets "${share}/*-targets.cmake")
  foreach(file IN LISTS targets) # one folder nearer to the root than lib/cmake/name
    file(READ "${file}" text)
    string(REPLACE "get_filename_component(_IMPORT_PREFIX \"\${CMAKE_CURRENT_LIST_FILE}\" PATH)"
                   "get_filename_component(_IMPORT_PREFIX \"\${CMAKE_CURRENT_LIST_DIR}\" REALPATH)"
                   changed "${text}")
    string(REGEX REPLACE "(get_filename_component\\(_IMPORT_PREFIX \"\\\${_IMPORT_PREFIX}\" PATH\\)\n)(get_filename_component\\(_IMPORT_PREFIX \"\\\${_IMPORT_PREFIX}\" PATH\\)\n)get_filename_component\\(_IMPORT_PREFIX \"\\\${_IMPORT_PREFIX}\" PATH\\)\n"
                         "\\1\\2" changed "${changed}")
    if(changed STREQUAL text)
      message(FATAL_ERROR "${file} finds its folder in a way that is not known here")
    endif()
    file(WRITE "${file}" "${changed}")
  endforeach()
  # empty folders are refused
  foreach(folder IN ITEMS lib/cmake debug/lib/cmake)
    file(GLOB rest "${CURRENT_PACKAGES_DIR}/${folder}/*")
    if(NOT rest)
      file(REMOVE_RECURSE "${CURRENT_PACKAGES_DIR}/${folder}")
    endif()
  endforeach()
endfunction()

function(vcpkg_fixup_pkgconfig)
  file(GLOB descriptions "${CURRENT_PACKAGES_DIR}/lib/pkgconfig/*.pc")
  if(NOT descriptions)
    message(FATAL_ERROR "there is no description for pkg-config")
  endif()
endfunction()

function(vcpkg_copy_pdbs) # there are none but with Microsoft's compiler
endfunction()

function(vcpkg_install_copyright)
  cmake_parse_arguments(PARSE_ARGV 0 arg "" "" "FILE_LIST")
  file(INSTALL ${arg_FILE_LIST} DESTINATION "${CURRENT_PACKAGES_DIR}/share/${PORT}")
  get_filename_component(name "${arg_FILE_LIST}" NAME)
  file(RENAME "${CURRENT_PACKAGES_DIR}/share/${PORT}/${name}" "${CURRENT_PACKAGES_DIR}/share/${PORT}/copyright")
endfunction()

include("${PORT_FOLDER}/portfile.cmake")
