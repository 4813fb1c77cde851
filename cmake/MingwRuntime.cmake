# SPDX-License-Identifier: MIT
# The libraries share one C++ runtime, so that texts and exceptions can pass between them: its DLLs are put beside the
# programs that are built, and installed with them.
set(runtime_dlls)
foreach(name libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${name}
        OUTPUT_VARIABLE dll OUTPUT_STRIP_TRAILING_WHITESPACE)
    if(NOT IS_ABSOLUTE ${dll})
        message(FATAL_ERROR "${name} was not found beside ${CMAKE_CXX_COMPILER}")
    endif()
    list(APPEND runtime_dlls ${dll})
endforeach()
file(COPY ${runtime_dlls} DESTINATION ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
install(FILES ${runtime_dlls} DESTINATION ${CMAKE_INSTALL_BINDIR})
