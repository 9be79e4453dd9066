# The package that Windows developers use: DLL, import library, headers, and
# find_package(fl_filesystem) with its target fl::filesystem. Of a native build it has
# fl::simulation, too, the machine that the library runs on there.
include(CMakePackageConfigHelpers)

# Where an installed program has its modules. get_install_path() goes by the names of the
# default; in any other folder, such as the `bin` of package managers, it answers with the
# module's own pathname.
if(WIN32)
  set(program_folder "${CMAKE_INSTALL_BINDIR}/win64")
else()
  set(program_folder "${CMAKE_INSTALL_BINDIR}")
endif()
set(FL_INSTALL_PROGRAM_FOLDER "${program_folder}" CACHE STRING "Where DLL and programs are installed")

install(TARGETS fl_filesystem EXPORT fl_filesystem-targets
        RUNTIME DESTINATION "${FL_INSTALL_PROGRAM_FOLDER}" COMPONENT runtime
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT runtime
        ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT development
        INCLUDES DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
install(DIRECTORY include/ DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" COMPONENT development)
if(TARGET fl_filesystem_simulation)
  install(TARGETS fl_filesystem_simulation EXPORT fl_filesystem-targets
          LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT runtime
          ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT development)
  # but what our own tests have beside them
  install(DIRECTORY simulation/include/ DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/fl_simulation"
          COMPONENT development PATTERN include/simulation EXCLUDE)
endif()

set(package_folder "${CMAKE_INSTALL_LIBDIR}/cmake/fl_filesystem")
install(EXPORT fl_filesystem-targets NAMESPACE fl:: FILE fl_filesystem-targets.cmake
        DESTINATION "${package_folder}" COMPONENT development)
write_basic_package_version_file("${PROJECT_BINARY_DIR}/fl_filesystem-config-version.cmake"
                                 COMPATIBILITY SameMinorVersion)
install(FILES cmake/fl_filesystem-config.cmake cmake/HeaderLibraries.cmake
              debuggers/fl_filesystem.natvis
              "${PROJECT_BINARY_DIR}/fl_filesystem-config-version.cmake"
        DESTINATION "${package_folder}" COMPONENT development)

# For builds without CMake.
cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX BASE_DIRECTORY
           "${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR}/pkgconfig" OUTPUT_VARIABLE FL_PKGCONFIG_TO_PREFIX)
get_target_property(FL_PKGCONFIG_LIBRARY fl_filesystem OUTPUT_NAME)
if(NOT FL_PKGCONFIG_LIBRARY)
  set(FL_PKGCONFIG_LIBRARY fl_filesystem)
endif()
if(NOT BUILD_SHARED_LIBS AND WIN32)
  set(FL_PKGCONFIG_CFLAGS " -DFL_FILESYSTEM_STATIC")
  list(TRANSFORM FL_SYSTEM_LIBRARIES PREPEND " -l" OUTPUT_VARIABLE FL_PKGCONFIG_LIBS)
  list(JOIN FL_PKGCONFIG_LIBS "" FL_PKGCONFIG_LIBS)
endif()
configure_file(cmake/fl_filesystem.pc.in fl_filesystem.pc @ONLY)
if(WIN32 AND NOT CMAKE_BUILD_TYPE STREQUAL "Debug") # it has no word for two configurations
  install(FILES "${PROJECT_BINARY_DIR}/fl_filesystem.pc"
          DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig" COMPONENT development)
endif()

install(FILES debuggers/fl_filesystem_gdb.py
        DESTINATION "${CMAKE_INSTALL_DATADIR}/fl_filesystem" COMPONENT development)

# The companion with all that it needs to run. A program's own installer brings the
# compiler's runtime that the whole program is built with.
if(TARGET flfs)
  install(TARGETS flfs RUNTIME DESTINATION "${FL_INSTALL_PROGRAM_FOLDER}" COMPONENT tools)
  install(FILES ${FL_MINGW_RUNTIME} DESTINATION "${FL_INSTALL_PROGRAM_FOLDER}" COMPONENT tools)
  install(FILES ${FL_MINGW_RUNTIME} DESTINATION "${FL_INSTALL_PROGRAM_FOLDER}"
          COMPONENT compiler_runtime EXCLUDE_FROM_ALL)
endif()

# What debuggers and crash reports want, apart from what is shipped. With MinGW it is
# scripts/package that takes it out of the programs.
foreach(target IN ITEMS fl_filesystem flfs)
  set(symbols "$<TARGET_FILE:${target}>.debug")
  if(MSVC)
    set(symbols "$<TARGET_PDB_FILE:${target}>")
  endif()
  if(WIN32 AND TARGET ${target} AND (BUILD_SHARED_LIBS OR target STREQUAL "flfs"))
    install(FILES "${symbols}" DESTINATION "${FL_INSTALL_PROGRAM_FOLDER}" COMPONENT symbols OPTIONAL)
  endif()
endforeach()

# Of others' work that is in our files, or shipped beside them. Ours has no licence yet.
install(FILES packaging/NOTICE.md DESTINATION "${CMAKE_INSTALL_DATADIR}/fl_filesystem" COMPONENT runtime)
foreach(notice IN ITEMS libcli11-dev nlohmann-json3-dev gcc-mingw-w64-x86-64-posix-runtime
        mingw-w64-x86-64-dev)
  if(EXISTS "/usr/share/doc/${notice}/copyright")
    install(FILES "/usr/share/doc/${notice}/copyright" RENAME "${notice}.txt"
            DESTINATION "${CMAKE_INSTALL_DATADIR}/fl_filesystem/licences" COMPONENT runtime)
  endif()
endforeach()
