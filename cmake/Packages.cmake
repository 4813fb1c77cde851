# SPDX-License-Identifier: MIT
# Debian's packages, which `cpack` makes of what is built (tools/packages.sh): one for each component of the installation.
# What the packages alone have, such as their copyright and changelog, is left out of `cmake --install`.

# velm_package(<component> <package> <section> <description>): the first line of the description says what it is.
function(velm_package component package section description)
    string(TOUPPER ${component} name)
    set(components ${components} ${component} PARENT_SCOPE)
    set(CPACK_DEBIAN_${name}_PACKAGE_NAME ${package} PARENT_SCOPE)
    set(CPACK_DEBIAN_${name}_PACKAGE_SECTION ${section} PARENT_SCOPE)
    set(CPACK_DEBIAN_${name}_DESCRIPTION ${description} PARENT_SCOPE)
    install(FILES cmake/debian/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package}
        COMPONENT ${component} EXCLUDE_FROM_ALL)
    if(EXISTS ${PROJECT_SOURCE_DIR}/cmake/debian/${package}.lintian-overrides)
        install(FILES cmake/debian/${package}.lintian-overrides DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides
            RENAME ${package} COMPONENT ${component} EXCLUDE_FROM_ALL)
    endif()
endfunction()

set(components)
set(about "UtilityDLL is the class library of a hydrographic survey and charting suite:
settings files with seals, records of how a chart is drawn, measured text,
colours, contour definitions, geometry and dialogs.")
velm_package(runtime utilitydll5 libs "class library for hydrographic survey and charting
${about}\n
This package has the libraries, their languages and the module that measures\ntext. Programs that use no windows need no more.\n")
velm_package(gui utilitydll-gui libs "windows and pictures of UtilityDLL, with Qt
${about}\n
This package has the modules with Qt: windows and dialogs for any program that\nuses the library, PNG and PDF pictures for chartutil, and the desktop's entry\nfor its editor of contour definitions.\n")
velm_package(development utilitydll-dev libdevel "development files of UtilityDLL
${about}\n
This package has the headers, the links for the linker and the packages for\nCMake (find_package) and pkg-config.\n")
velm_package(tools chartutil science "command line for settings files, soundings and charts
chartutil reads, checks and changes the settings files of a charting suite,\nmeasures text, converts colour tables, edits contour definitions and draws\nsurvey charts from soundings.\n
Charts need the package chartutil-sheet; PNG and PDF pictures and dialogs need\nutilitydll-gui. The sample survey is in /usr/share/utilitydll.\n")
velm_package(sheet chartutil-sheet science "survey charts from soundings, for chartutil
This package has the modules of chartutil that need GDAL: the geometry of chart\nsheets (surface, contours, depth areas) and drawings as DXF. With it\nchartutil draws the chart of a project as SVG or DXF; with utilitydll-gui also\nas PDF and PNG.\n")
velm_package(documentation utilitydll-doc doc "manual and reference of UtilityDLL and chartutil
${about}\n
This package has the manual and the reference of all classes as web pages: open\n/usr/share/doc/utilitydll-doc/html/index.html.\n")

# They are of one version, or the modules are not used.
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
foreach(component gui development tools)
    string(TOUPPER ${component} name)
    set(CPACK_COMPONENT_${name}_DEPENDS runtime)
endforeach()
set(CPACK_COMPONENT_SHEET_DEPENDS tools runtime)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_RECOMMENDS "fonts-dejavu-core, fonts-liberation")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SUGGESTS "utilitydll-gui")
set(CPACK_DEBIAN_GUI_PACKAGE_RECOMMENDS "chartutil")
set(CPACK_DEBIAN_TOOLS_PACKAGE_RECOMMENDS "chartutil-sheet, utilitydll-gui")
set(CPACK_DEBIAN_TOOLS_PACKAGE_SUGGESTS "utilitydll-doc")
set(CPACK_DEBIAN_SHEET_PACKAGE_RECOMMENDS "utilitydll-gui")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS "utilitydll-doc")

# The true dependencies are those of the files.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
foreach(component development documentation)
    string(TOUPPER ${component} name)
    set(CPACK_DEBIAN_${name}_PACKAGE_SHLIBDEPS OFF)
endforeach()
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_ARCHITECTURE all)

# Hosts of a package learn from its list of symbols, which is held against the kept one, what they need.
set(control ${PROJECT_SOURCE_DIR}/cmake/debian)
set(made ${PROJECT_BINARY_DIR}/debian)
# CPack would call ldconfig in scripts, where Debian wants the trigger; a script's name in the list keeps it from that, and
# there need not be such a file.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA
    ${made}/symbols ${made}/shlibs ${control}/triggers ${control}/postinst ${control}/postrm)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_RUNTIME_DEBUGINFO_PACKAGE ON)

# The site, where the targets manual and reference have made it.
install(DIRECTORY ${PROJECT_BINARY_DIR}/manual/ DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/utilitydll-doc/html
    COMPONENT documentation EXCLUDE_FROM_ALL)
install(DIRECTORY ${PROJECT_BINARY_DIR}/reference/html/
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/utilitydll-doc/html/reference COMPONENT documentation EXCLUDE_FROM_ALL)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME utilitydll)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_DEBIAN_PACKAGE_SOURCE utilitydll)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1~deb12)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "The UtilityDLL developers <developers@utilitydll.example.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each package has its own
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_COMPONENTS_ALL ${components})
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_THREADS 0)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/debian/FinishPackages.cmake)
# What that script is told.
set(CPACK_UTILITYDLL_STRIP ${CMAKE_STRIP})
set(CPACK_UTILITYDLL_LIBRARIES ${CMAKE_INSTALL_LIBDIR})
set(CPACK_UTILITYDLL_CHANGELOG ${PROJECT_SOURCE_DIR}/CHANGELOG.md)
set(CPACK_UTILITYDLL_MADE ${made})
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_VERBATIM_VARIABLES ON)
include(CPack)
