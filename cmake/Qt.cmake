# Qt 6 is in modules alone, which lie in the folder utilitydll beside the libraries and are loaded when something
# needs them. Nothing that a server loads links it.

set(UTILITYDLL_QT AUTO CACHE STRING
    "The modules with Qt, for windows and for PNG and PDF pictures: AUTO makes them where Qt 6 is, ON needs Qt, OFF")
set_property(CACHE UTILITYDLL_QT PROPERTY STRINGS AUTO ON OFF)
set(VELM_MODULE_FOLDER ${CMAKE_INSTALL_LIBDIR}/utilitydll)
if(UTILITYDLL_QT AND NOT WIN32)
    find_package(Qt6 QUIET COMPONENTS Gui Widgets)
endif()
if(UTILITYDLL_QT STREQUAL "ON" AND NOT Qt6_FOUND)
    message(FATAL_ERROR "UTILITYDLL_QT is ON, but Qt 6 was not found (Debian: qt6-base-dev)")
elseif(NOT Qt6_FOUND AND NOT WIN32)
    message(STATUS "UTILITYDLL_QT is ${UTILITYDLL_QT}: no windows can be made, and chartutil makes SVG pictures alone; "
        "for windows, PNG and PDF a build needs Qt 6 (Debian: qt6-base-dev)")
endif()

# velm_qt_module(<target> <build folder> <Qt library> <source>...): a module that is built into the folder of the
# build tree, where it is found as in a package, and installed. Makes nothing where Qt is not.
function(velm_qt_module target folder qt)
    if(NOT Qt6_FOUND)
        return()
    endif()
    add_library(${target} MODULE ${ARGN})
    target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR} ${PROJECT_BINARY_DIR}/include)
    target_link_libraries(${target} PRIVATE Qt6::${qt} ProjectOptions)
    set_target_properties(${target} PROPERTIES PREFIX "" LIBRARY_OUTPUT_DIRECTORY ${folder})
    install(TARGETS ${target} LIBRARY DESTINATION ${VELM_MODULE_FOLDER})
endfunction()
