# The package that Windows developers use: DLL, import library, headers, and
# find_package(fl_filesystem) with its target fl::filesystem.
include(CMakePackageConfigHelpers)

# Where an installed program has its modules. get_install_path() goes by the names of the
# default; in any other folder, such as the `bin` of package managers, it answers with the
# module's own pathname.
set(FL_INSTALL_PROGRAM_FOLDER "${CMAKE_INSTALL_BINDIR}/win64" CACHE STRING
    "Where DLL and programs are installed")

install(TARGETS fl_filesystem EXPORT fl_filesystem-targets
        RUNTIME DESTINATION "${FL_INSTALL_PROGRAM_FOLDER}" COMPONENT runtime
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT runtime
        ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT development
        INCLUDES DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
install(DIRECTORY include/ DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" COMPONENT development)

set(package_folder "${CMAKE_INSTALL_LIBDIR}/cmake/fl_filesystem")
install(EXPORT fl_filesystem-targets NAMESPACE fl:: FILE fl_filesystem-targets.cmake
        DESTINATION "${package_folder}" COMPONENT development)
write_basic_package_version_file("${PROJECT_BINARY_DIR}/fl_filesystem-config-version.cmake"
                                 COMPATIBILITY SameMinorVersion)
install(FILES cmake/fl_filesystem-config.cmake cmake/HeaderLibraries.cmake
              debuggers/fl_filesystem.natvis
              "${PROJECT_BINARY_DIR}/fl_filesystem-config-version.cmake"
        DESTINATION "${package_folder}" COMPONENT development)

install(FILES debuggers/fl_filesystem_gdb.py
        DESTINATION "${CMAKE_INSTALL_DATADIR}/fl_filesystem" COMPONENT development)

# The companion with all that it needs to run. A program's own installer brings the
# compiler's runtime that the whole program is built with.
if(TARGET flfs)
  install(TARGETS flfs RUNTIME DESTINATION "${FL_INSTALL_PROGRAM_FOLDER}" COMPONENT tools)
  install(FILES ${FL_MINGW_RUNTIME} DESTINATION "${FL_INSTALL_PROGRAM_FOLDER}" COMPONENT tools)
endif()
