# SPDX-License-Identifier: MIT
# CPack runs this when the files of all packages lie ready, a folder for each component in CPACK_TEMPORARY_DIRECTORY: what a
# package of Debian's has otherwise than a tree that can be moved, and what it has besides.
set(prefix ${CPACK_PACKAGING_INSTALL_PREFIX})
set(libraries ${prefix}/${CPACK_UTILITYDLL_LIBRARIES})
set(runtime ${CPACK_TEMPORARY_DIRECTORY}/runtime)
set(version ${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})

# run(<command>...): what it prints is in `output`; a failure ends the packing.
function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT result EQUAL 0)
        list(JOIN ARGN " " command)
        message(FATAL_ERROR "${command}\nended with ${result}:\n${output}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

# Below /usr the system's loader finds the libraries.
file(GLOB binaries ${CPACK_TEMPORARY_DIRECTORY}/*${prefix}/bin/* ${runtime}${libraries}/*.so.${CPACK_PACKAGE_VERSION}
    ${CPACK_TEMPORARY_DIRECTORY}/*${libraries}/utilitydll/*.so)
foreach(binary IN LISTS binaries)
    file(RPATH_REMOVE FILE ${binary})
    if(NOT binary MATCHES "/runtime/") # whose debug information CPack puts into a package of its own
        run(${CPACK_UTILITYDLL_STRIP} --strip-unneeded --remove-section=.comment ${binary})
    endif()
endforeach()
set(package_config ${CPACK_TEMPORARY_DIRECTORY}/development${libraries}/pkgconfig/utilitydll.pc)
file(READ ${package_config} text)
string(REPLACE " -Wl,-rpath,\${libdir}" "" text "${text}")
string(REGEX REPLACE "prefix=[^\n]*" "prefix=${prefix}" text "${text}")
file(WRITE ${package_config} "${text}")

# What hosts that are packages themselves depend on. A symbol that is gone breaks them, and a new one that is not in the kept
# list would leave them without the version that they need: both end the packing. `tools/packages.sh --symbols` renews the list.
# What is gone counts where the list has a lower version than this one, which is why the revision is in it.
file(MAKE_DIRECTORY ${CPACK_UTILITYDLL_MADE})
set(shlibs)
file(GLOB sonames RELATIVE ${runtime}${libraries} ${runtime}${libraries}/*.so.${CPACK_PACKAGE_VERSION_MAJOR})
foreach(soname IN LISTS sonames)
    string(REGEX REPLACE "[.]so[.].*" "" name ${soname})
    string(APPEND shlibs
        "${name} ${CPACK_PACKAGE_VERSION_MAJOR} ${CPACK_DEBIAN_RUNTIME_PACKAGE_NAME} (>= ${CPACK_PACKAGE_VERSION})\n")
endforeach()
file(WRITE ${CPACK_UTILITYDLL_MADE}/shlibs "${shlibs}")
run(dpkg-gensymbols -c4 -v${version} -p${CPACK_DEBIAN_RUNTIME_PACKAGE_NAME} -P${runtime}
    -I${CMAKE_CURRENT_LIST_DIR}/${CPACK_DEBIAN_RUNTIME_PACKAGE_NAME}.symbols -O${CPACK_UTILITYDLL_MADE}/symbols)

# Every package has a changelog: the one entry of Debian's says where the project's own is.
string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC) # that of SOURCE_DATE_EPOCH where it is set
foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    string(TOUPPER ${component} name)
    set(documents
        ${CPACK_TEMPORARY_DIRECTORY}/${component}${prefix}/share/doc/${CPACK_DEBIAN_${name}_PACKAGE_NAME})
    file(WRITE ${documents}/changelog.Debian
        "${CPACK_DEBIAN_PACKAGE_SOURCE} (${version}) bookworm; urgency=medium\n\n"
        "  * Release ${CPACK_PACKAGE_VERSION}; changelog.gz beside this file says what has changed.\n\n"
        " -- ${CPACK_DEBIAN_PACKAGE_MAINTAINER}  ${date}\n")
    configure_file(${CPACK_UTILITYDLL_CHANGELOG} ${documents}/changelog COPYONLY)
    run(gzip -9n ${documents}/changelog.Debian ${documents}/changelog)
endforeach()
file(GLOB manuals ${CPACK_TEMPORARY_DIRECTORY}/tools${prefix}/share/man/man*/*.[1-9])
if(manuals)
    run(gzip -9n ${manuals})
endif()

# The same sources make the same bytes, whenever they are packed.
if(DEFINED ENV{SOURCE_DATE_EPOCH})
    run(find ${CPACK_TEMPORARY_DIRECTORY} -exec touch --no-dereference --date=@$ENV{SOURCE_DATE_EPOCH} {} +)
endif()
