# An overlay port: it builds the checkout that it lies in.
get_filename_component(SOURCE_PATH "${CMAKE_CURRENT_LIST_DIR}/../../../.." ABSOLUTE)

vcpkg_cmake_configure(
    SOURCE_PATH "${SOURCE_PATH}"
    OPTIONS
        -DFL_FILESYSTEM_BUILD_TESTS=OFF
        -DFL_FILESYSTEM_BUILD_TOOLS=OFF
        -DFL_INSTALL_PROGRAM_FOLDER=bin
)
vcpkg_cmake_install()
vcpkg_cmake_config_fixup(PACKAGE_NAME fl_filesystem CONFIG_PATH lib/cmake/fl_filesystem)
vcpkg_fixup_pkgconfig()
vcpkg_copy_pdbs()

file(REMOVE_RECURSE "${CURRENT_PACKAGES_DIR}/debug/include" "${CURRENT_PACKAGES_DIR}/debug/share")

# no licence has been chosen yet, and the notices say so
vcpkg_install_copyright(FILE_LIST "${SOURCE_PATH}/packaging/NOTICE.md")
file(INSTALL "${CMAKE_CURRENT_LIST_DIR}/usage" DESTINATION "${CURRENT_PACKAGES_DIR}/share/${PORT}")
