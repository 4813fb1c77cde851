# SPDX-License-Identifier: MIT
# What every target of this project is built with, and how a library of it is made.

add_library(ProjectOptions INTERFACE)
set(project_options
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion -Werror
    # GCC 12 sees overlapping copies in the operator+ of std::string that are not there.
    $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
    # A product and a sum are rounded one by one, as on a processor that cannot do both in one step: the same
    # numbers everywhere.
    -ffp-contract=off
    # Nobody replaces single functions of a library, so its own calls need not go through its export table.
    -fno-semantic-interposition)
# The compiler of Windows' resources has options of its own.
target_compile_options(ProjectOptions INTERFACE "$<$<COMPILE_LANGUAGE:CXX>:${project_options}>")
if(MINGW)
    # The same sources make the same bytes, whenever they are built.
    target_link_options(ProjectOptions INTERFACE LINKER:--no-insert-timestamp)
endif()
if(UTILITYDLL_SANITIZE)
    target_compile_options(ProjectOptions INTERFACE
        -fsanitize=${UTILITYDLL_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(ProjectOptions INTERFACE -fsanitize=${UTILITYDLL_SANITIZE})
endif()
if(UTILITYDLL_FUZZ)
    # The fuzzer finds its way by the branches that it sees taken, in the libraries too.
    target_compile_options(ProjectOptions INTERFACE -fsanitize=fuzzer-no-link)
endif()

# velm_backend(<variable> <elsewhere>): the folder that holds this platform's files of one service: win32, or
# <elsewhere> where the target is not Windows.
function(velm_backend variable elsewhere)
    if(WIN32)
        set(${variable} win32 PARENT_SCOPE)
    else()
        set(${variable} ${elsewhere} PARENT_SCOPE)
    endif()
endfunction()

# velm_version_number(<variable> <version>): "5.0.0.20" as the number with a byte for each part, 0x05000014.
function(velm_version_number variable version)
    string(REPLACE "." ";" parts ${version})
    set(number 0)
    foreach(part IN LISTS parts)
        math(EXPR number "${number} * 256 + ${part}")
    endforeach()
    math(EXPR number "${number}" OUTPUT_FORMAT HEXADECIMAL)
    string(REGEX REPLACE "^0x" "0000000" number ${number})
    string(REGEX REPLACE "^.*(........)$" "0x\\1" number ${number})
    set(${variable} ${number} PARENT_SCOPE)
endfunction()
velm_version_number(LIBRARY_VERSION_NUMBER ${PROJECT_VERSION})

# velm_register(<target> <name> <version number>): the library tells under that name and version that it is loaded.
function(velm_register target name number)
    configure_file(${PROJECT_SOURCE_DIR}/cmake/RegisterLibrary.cpp.in
        ${CMAKE_CURRENT_BINARY_DIR}/${target}/RegisterLibrary.cpp @ONLY)
    target_sources(${target} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${target}/RegisterLibrary.cpp)
endfunction()

# velm_library(<target> <folder> <API macro> <source>...): a shared library whose exports carry the macro of
# its generated header <folder>/Export.h; everything else in it is hidden.
function(velm_library target folder macro)
    add_library(${target} SHARED ${ARGN})
    velm_register(${target} ${target} ${LIBRARY_VERSION_NUMBER})
    set_property(GLOBAL APPEND PROPERTY VELM_LIBRARIES ${target})
    set_property(GLOBAL APPEND PROPERTY VELM_FOLDERS ${folder})
    include(GenerateExportHeader)
    generate_export_header(${target} EXPORT_MACRO_NAME ${macro}
        EXPORT_FILE_NAME ${PROJECT_BINARY_DIR}/include/${folder}/Export.h)
    target_include_directories(${target} PUBLIC
        $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}> $<BUILD_INTERFACE:${PROJECT_BINARY_DIR}/include>
        $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
    target_compile_features(${target} PUBLIC cxx_std_20)
    target_link_libraries(${target} PRIVATE $<BUILD_INTERFACE:ProjectOptions>)
    if(NOT WIN32)
        # What a debugger reads of them, and what the comparison of interfaces does (tools/abi.sh); packages have it apart.
        # They name no folder of this machine.
        target_compile_options(${target} PRIVATE "$<$<CONFIG:Release>:-g;-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.>")
        target_link_options(${target} PRIVATE LINKER:--version-script=${PROJECT_SOURCE_DIR}/cmake/exports.map)
        set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${PROJECT_SOURCE_DIR}/cmake/exports.map)
    endif()
    set_target_properties(${target} PROPERTIES
        VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR} PREFIX ""
        INSTALL_RPATH "$ORIGIN") # the libraries lie beside each other
    if(WIN32)
        velm_version_resource(${target} dll "${target} of the survey and charting suite")
    endif()
endfunction()

set(VELM_MODULE_FOLDER ${CMAKE_INSTALL_LIBDIR}/utilitydll)

# velm_module(<target> <build folder> <component> <library> <source>...): a module that is loaded when something needs that
# library. It is built into the folder of the build tree, where it is found as in a package, and installed.
function(velm_module target folder component library)
    add_library(${target} MODULE ${ARGN})
    target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR} ${PROJECT_BINARY_DIR}/include)
    target_link_libraries(${target} PRIVATE ${library} ProjectOptions)
    set_target_properties(${target} PROPERTIES PREFIX "" LIBRARY_OUTPUT_DIRECTORY ${folder})
    install(TARGETS ${target} LIBRARY DESTINATION ${VELM_MODULE_FOLDER} COMPONENT ${component})
endfunction()
