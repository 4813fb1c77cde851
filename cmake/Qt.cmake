# SPDX-License-Identifier: MIT
# Qt 6 is in modules alone, which lie in the folder utilitydll beside the libraries and are loaded when something
# needs them. Nothing that a server loads links it.

set(UTILITYDLL_QT AUTO CACHE STRING
    "The modules with Qt, for windows and for PNG and PDF pictures: AUTO makes them where Qt 6 is, ON needs Qt, OFF")
set_property(CACHE UTILITYDLL_QT PROPERTY STRINGS AUTO ON OFF)
if(UTILITYDLL_QT AND NOT WIN32)
    find_package(Qt6 QUIET COMPONENTS Gui Widgets)
endif()
if(UTILITYDLL_QT STREQUAL "ON" AND NOT Qt6_FOUND)
    message(FATAL_ERROR "UTILITYDLL_QT is ON, but Qt 6 was not found (Debian: qt6-base-dev)")
elseif(NOT Qt6_FOUND AND NOT WIN32)
    message(STATUS "UTILITYDLL_QT is ${UTILITYDLL_QT}: no windows can be made, and chartutil makes SVG pictures alone; "
        "for windows, PNG and PDF a build needs Qt 6 (Debian: qt6-base-dev)")
endif()

# velm_qt_module(<target> <build folder> <Qt library> <source>...): a module with Qt; none where Qt is not.
function(velm_qt_module target folder qt)
    if(Qt6_FOUND)
        velm_module(${target} ${folder} gui Qt6::${qt} ${ARGN})
    endif()
endfunction()
