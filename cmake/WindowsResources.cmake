# SPDX-License-Identifier: MIT
# What Windows reads in a program or library without running it: its version, its icon, and the controls that it asks for.
enable_language(RC)

# velm_version_resource(<target> <dll or exe> <description>): what the properties of the file show.
function(velm_version_resource target extension description)
    string(REPLACE "." "," version ${PROJECT_VERSION})
    if(extension STREQUAL "dll")
        set(type VFT_DLL)
    else()
        set(type VFT_APP)
    endif()
    configure_file(${PROJECT_SOURCE_DIR}/cmake/Version.rc.in ${CMAKE_CURRENT_BINARY_DIR}/${target}/Version.rc @ONLY)
    target_sources(${target} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${target}/Version.rc)
endfunction()

# velm_manifest(<target> <number>): the controls of the present Windows. Number 1 is for all of a program, 2 for what a
# library makes.
function(velm_manifest target number)
    set(folder ${CMAKE_CURRENT_BINARY_DIR}/${target})
    configure_file(${PROJECT_SOURCE_DIR}/cmake/Windows.manifest.in ${folder}/Windows.manifest @ONLY)
    velm_resource_file(${target} Manifest "${number} 24" ${folder}/Windows.manifest) # 24: RT_MANIFEST
endfunction()

# velm_icon(<target> <file>): the icon of a program.
function(velm_icon target file)
    velm_resource_file(${target} Icon "1 ICON" ${file})
endfunction()

# velm_resource_file(<target> <name> <number and type> <file>): a resource that is a file as it is.
function(velm_resource_file target name resource file)
    set(script ${CMAKE_CURRENT_BINARY_DIR}/${target}/${name}.rc)
    file(CONFIGURE OUTPUT ${script} CONTENT "${resource} \"${file}\"\n" @ONLY)
    target_sources(${target} PRIVATE ${script})
    set_source_files_properties(${script} PROPERTIES OBJECT_DEPENDS ${file})
endfunction()
