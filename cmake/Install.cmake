# SPDX-License-Identifier: MIT
# What `cmake --install` lays down: libraries, headers under their own folders, the package for find_package and
# pkg-config, the host program and its data. A component is what one of Debian's packages has of it (cmake/Packages.cmake).
include(CMakePackageConfigHelpers)

set(package_targets UtilityDLL Framework VersionControlR VelmConfigureR VelmBaseR)
install(TARGETS ${package_targets} EXPORT UtilityDLLTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
install(TARGETS chartutil RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tools)
# A folder named private holds what only the sources of its library include.
install(DIRECTORY VelmBase VelmConfigure VersionControl UtilityDLL Framework DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
    COMPONENT development FILES_MATCHING PATTERN "*.h" PATTERN "posix" EXCLUDE PATTERN "win32" EXCLUDE PATTERN "qt" EXCLUDE PATTERN "freetype" EXCLUDE PATTERN "private" EXCLUDE PATTERN "languages" EXCLUDE)
install(DIRECTORY ${PROJECT_BINARY_DIR}/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
install(DIRECTORY data/ DESTINATION ${CMAKE_INSTALL_DATADIR}/utilitydll COMPONENT tools)

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/UtilityDLL)
install(EXPORT UtilityDLLTargets NAMESPACE UtilityDLL:: DESTINATION ${package_folder}
    COMPONENT development)
configure_package_config_file(cmake/UtilityDLLConfig.cmake.in ${PROJECT_BINARY_DIR}/UtilityDLLConfig.cmake
    INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/UtilityDLLConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)

# The package can be moved: its pkg-config file finds everything from where it lies itself.
set(package_link)
foreach(target IN LISTS package_targets)
    string(APPEND package_link "-l:$<TARGET_LINKER_FILE_NAME:${target}> ")
endforeach()
if(NOT WIN32)
    # ldconfig keeps no library whose name does not begin with "lib".
    string(APPEND package_link "-Wl,-rpath,\${libdir}")
endif()
file(RELATIVE_PATH package_root ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
configure_file(cmake/utilitydll.pc.in ${PROJECT_BINARY_DIR}/utilitydll.pc.configured @ONLY)
file(GENERATE OUTPUT ${PROJECT_BINARY_DIR}/utilitydll.pc INPUT ${PROJECT_BINARY_DIR}/utilitydll.pc.configured)
install(FILES ${PROJECT_BINARY_DIR}/UtilityDLLConfig.cmake ${PROJECT_BINARY_DIR}/UtilityDLLConfigVersion.cmake
    DESTINATION ${package_folder} COMPONENT development)
install(FILES ${PROJECT_BINARY_DIR}/utilitydll.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
if(WIN32)
    include(cmake/WindowsPackage.cmake)
else()
    # Debian's packages have it in the form that their system wants.
    install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/utilitydll COMPONENT licence)
endif()
