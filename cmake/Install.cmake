# The package that Windows developers use: DLL, import library, headers, and
# find_package(fl_filesystem) with its target fl::filesystem.
include(CMakePackageConfigHelpers)

install(TARGETS fl_filesystem EXPORT fl_filesystem-targets
        RUNTIME COMPONENT runtime
        LIBRARY COMPONENT runtime
        ARCHIVE COMPONENT development
        INCLUDES DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
install(DIRECTORY include/ DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" COMPONENT development)

set(package_folder "${CMAKE_INSTALL_LIBDIR}/cmake/fl_filesystem")
install(EXPORT fl_filesystem-targets NAMESPACE fl:: FILE fl_filesystem-targets.cmake
        DESTINATION "${package_folder}" COMPONENT development)
write_basic_package_version_file("${PROJECT_BINARY_DIR}/fl_filesystem-config-version.cmake"
                                 COMPATIBILITY SameMinorVersion)
install(FILES cmake/fl_filesystem-config.cmake cmake/HeaderLibraries.cmake
              "${PROJECT_BINARY_DIR}/fl_filesystem-config-version.cmake"
        DESTINATION "${package_folder}" COMPONENT development)
