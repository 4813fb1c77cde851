# SPDX-License-Identifier: MIT
# Libraries that are headers alone serve every target, wherever they are installed for this machine. Each is linked
# into a folder of its own, so that nothing else of the system's include folder gets onto the path of a cross build.
function(velm_header_only target folder)
    find_path(${target}_FOLDER ${folder} NO_CMAKE_FIND_ROOT_PATH HINTS /usr/include /usr/local/include REQUIRED)
    file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/header-only/${target})
    file(CREATE_LINK ${${target}_FOLDER}/${folder} ${PROJECT_BINARY_DIR}/header-only/${target}/${folder} SYMBOLIC)
    add_library(${target} INTERFACE)
    target_include_directories(${target} SYSTEM INTERFACE ${PROJECT_BINARY_DIR}/header-only/${target})
endfunction()

velm_header_only(Cli11 CLI)
velm_header_only(NlohmannJson nlohmann)
