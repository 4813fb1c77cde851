# SPDX-License-Identifier: MIT
# Programs and libraries that tests run, load, or put in the place of others: each beside the test that needs it.

# The module's start-up alone, with stand-ins for what it calls, and a program that loads it. The stand-ins need some
# sources of the base library.
add_library(StartUpStandIns SHARED module/StandIns.cpp ../VelmBase/LibraryVersion.cpp ../VelmBase/NumberText.cpp
    ../VelmBase/WideString.cpp ../VelmBase/${system}/Module.cpp ../VelmBase/${system}/UntilUnloaded.cpp)
target_compile_definitions(StartUpStandIns PRIVATE VelmBaseR_EXPORTS Framework_EXPORTS VersionControlR_EXPORTS)
add_library(StartUpModule SHARED ../UtilityDLL/module/UtilityDLL.cpp ../UtilityDLL/module/${system}/UtilityDLL.cpp)
target_compile_definitions(StartUpModule PRIVATE UtilityDLL_EXPORTS LIBRARY_VERSION=${LIBRARY_VERSION_NUMBER})
target_link_libraries(StartUpModule PRIVATE StartUpStandIns)
add_executable(LoadModule module/LoadModule.cpp support/${system}/Library.cpp)
target_link_libraries(LoadModule PRIVATE StartUpStandIns ${CMAKE_DL_LIBS})

# Siblings that do not fit: a version-control library that says no, and one that was built with another version.
add_library(StandInVersionControl SHARED module/StandInVersionControl.cpp)
target_compile_definitions(StandInVersionControl PRIVATE VersionControlR_EXPORTS)
set_target_properties(StandInVersionControl PROPERTIES OUTPUT_NAME VersionControlR)
add_library(OtherVelmConfigure SHARED ../VelmConfigure/DataSearch.cpp)
target_compile_definitions(OtherVelmConfigure PRIVATE VelmConfigureR_EXPORTS DATA_FROM_LIBRARY=L".")
target_link_libraries(OtherVelmConfigure PRIVATE VelmBaseR)
velm_version_number(other_version 5.0.0.21)
velm_register(OtherVelmConfigure VelmConfigureR ${other_version})
set_target_properties(OtherVelmConfigure PROPERTIES OUTPUT_NAME VelmConfigureR)
foreach(library StandInVersionControl OtherVelmConfigure)
    set_target_properties(${library} PROPERTIES SOVERSION ${PROJECT_VERSION_MAJOR} PREFIX ""
        LIBRARY_OUTPUT_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/${library}
        RUNTIME_OUTPUT_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/${library})
endforeach()
foreach(library StartUpStandIns StartUpModule LoadModule StandInVersionControl OtherVelmConfigure)
    target_include_directories(${library} PRIVATE ${PROJECT_SOURCE_DIR} ${PROJECT_BINARY_DIR}/include)
    target_link_libraries(${library} PRIVATE ProjectOptions)
endforeach()
add_executable(PrintOpenFault module/PrintOpenFault.cpp)
target_link_libraries(PrintOpenFault PRIVATE UtilityDLL ProjectOptions)

# The example of the README, as it is printed there, with what a host would do with its messages.
file(READ ${PROJECT_SOURCE_DIR}/README.md readme)
string(REGEX MATCH "\n```cpp\n(#[^\n]*)\n([^`]*)```" readme_example "${readme}")
set(README_INCLUDE "${CMAKE_MATCH_1}")
set(README_STATEMENTS "${CMAKE_MATCH_2}")
configure_file(whole/ReadmeExample.cpp.in ReadmeExample.cpp @ONLY)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/README.md)
add_executable(ReadmeExample ${CMAKE_CURRENT_BINARY_DIR}/ReadmeExample.cpp)
target_link_libraries(ReadmeExample PRIVATE UtilityDLL ProjectOptions)

# Tests that run programs with libraries of their own choice.
foreach(name StartUpTest StartUp_RefusedTest LanguagesTest)
    add_dependencies(${name} LoadModule StartUpModule StandInVersionControl OtherVelmConfigure PrintOpenFault chartutil)
    target_compile_definitions(${name} PRIVATE
        LOAD_MODULE="${drive}$<TARGET_FILE:LoadModule>" START_UP_MODULE="${drive}$<TARGET_FILE:StartUpModule>"
        PRINT_OPEN_FAULT="${drive}$<TARGET_FILE:PrintOpenFault>"
        STAND_IN_VERSION_CONTROL="${drive}$<TARGET_FILE_DIR:StandInVersionControl>"
        OTHER_VELM_CONFIGURE="${drive}$<TARGET_FILE_DIR:OtherVelmConfigure>")
endforeach()

if(WIN32)
    # The host of StartUp_UnloadTest, and its library that stands on the suite.
    add_executable(LoadOften module/win32/LoadOften.cpp support/win32/Library.cpp support/win32/Resources.cpp
        support/win32/GuiResources.cpp)
    target_include_directories(LoadOften PRIVATE ${PROJECT_SOURCE_DIR})
    target_link_libraries(LoadOften PRIVATE ProjectOptions gdi32 psapi)
    add_library(PlugIn SHARED module/win32/PlugIn.cpp)
    target_link_libraries(PlugIn PRIVATE UtilityDLL ProjectOptions)
    set_target_properties(PlugIn PROPERTIES PREFIX "")
    add_dependencies(StartUp_UnloadTest LoadOften PlugIn StandInVersionControl)
    target_compile_definitions(StartUp_UnloadTest PRIVATE
        STAND_IN_VERSION_CONTROL="${drive}$<TARGET_FILE_DIR:StandInVersionControl>"
        LOAD_OFTEN="${drive}$<TARGET_FILE:LoadOften>" PLUG_IN="${drive}$<TARGET_FILE:PlugIn>"
        UTILITYDLL_FILE="${drive}$<TARGET_FILE:UtilityDLL>" FRAMEWORK_FILE="${drive}$<TARGET_FILE:Framework>")
endif()

if(NOT WIN32)
    # The host program that IniFile_SaveFaultTest kills and traces; it is found beside it.
    add_executable(SaveLoop settings/posix/SaveLoop.cpp)
    target_link_libraries(SaveLoop PRIVATE UtilityDLL ProjectOptions)
    add_dependencies(IniFile_SaveFaultTest SaveLoop)

    # The host that Wnd_ModuleTest runs apart from this build's libraries, and the module that it must not use.
    add_executable(WindowHost Framework/posix/WindowHost.cpp)
    target_link_libraries(WindowHost PRIVATE Framework ProjectOptions)
    set_target_properties(WindowHost PROPERTIES BUILD_WITH_INSTALL_RPATH ON INSTALL_RPATH "$ORIGIN/lib")
    add_library(ForeignModule MODULE Framework/posix/ForeignModule.cpp)
    target_link_libraries(ForeignModule PRIVATE VelmBaseR ProjectOptions)
    set_target_properties(ForeignModule PROPERTIES PREFIX "")
    target_compile_definitions(Wnd_ModuleTest PRIVATE PROJECT_VERSION="${PROJECT_VERSION}")
    add_dependencies(Wnd_ModuleTest WindowHost ForeignModule)
endif()

if(NOT WIN32)
    # It opens faces that are not installed.
    target_link_libraries(DeviceFaceTest PRIVATE FrameworkFontFaces)

    # The host that DeviceModuleTest runs apart from this build's libraries.
    add_executable(FontHost Framework/posix/FontHost.cpp)
    target_link_libraries(FontHost PRIVATE Framework ProjectOptions)
    set_target_properties(FontHost PROPERTIES BUILD_WITH_INSTALL_RPATH ON INSTALL_RPATH "$ORIGIN/lib")
    target_compile_definitions(DeviceModuleTest PRIVATE PROJECT_VERSION="${PROJECT_VERSION}")
    add_dependencies(DeviceModuleTest FontHost)
endif()

# The host program of Thread_HostEndTest, which gets at the library by loading it alone.
add_executable(LoadingHost runtime/LoadingHost.cpp support/${system}/Library.cpp)
target_include_directories(LoadingHost PRIVATE ${PROJECT_SOURCE_DIR} ${PROJECT_BINARY_DIR}/include)
target_compile_definitions(LoadingHost PRIVATE UTILITYDLL_STATIC_DEFINE)
target_link_libraries(LoadingHost PRIVATE ProjectOptions ${CMAKE_DL_LIBS})
add_dependencies(LoadingHost UtilityDLL) # whose generated header it includes
add_dependencies(Thread_HostEndTest LoadingHost)
target_compile_definitions(Thread_HostEndTest PRIVATE
    LOADING_HOST="${drive}$<TARGET_FILE:LoadingHost>" UTILITYDLL_FILE="${drive}$<TARGET_FILE:UtilityDLL>")

# The host program whose static objects outlive the observer, with a library that has some too.
add_library(ObserverAtExitLibrary SHARED runtime/ObserverAtExitLibrary.cpp)
set_target_properties(ObserverAtExitLibrary PROPERTIES CXX_VISIBILITY_PRESET default)
add_executable(ObserverAtExit runtime/ObserverAtExit.cpp)
foreach(target ObserverAtExitLibrary ObserverAtExit)
    target_link_libraries(${target} PRIVATE UtilityDLL ProjectOptions)
endforeach()
target_link_libraries(ObserverAtExit PRIVATE ObserverAtExitLibrary)
add_dependencies(ObserverAtExitTest ObserverAtExit)
target_compile_definitions(ObserverAtExitTest PRIVATE OBSERVER_AT_EXIT="${drive}$<TARGET_FILE:ObserverAtExit>")

# Prints what this platform measures of fonts and texts. `./test --windows` prints the table of Linux into the build tree
# for Windows, whose test compares.
add_executable(FontTable text/FontTable.cpp)
target_link_libraries(FontTable PRIVATE UtilityDLL ProjectOptions)
if(WIN32)
    target_compile_definitions(FontTableTest PRIVATE LINUX_FONT_TABLE="${drive}${PROJECT_BINARY_DIR}/FontTable.csv")
endif()

# Takes the pictures of dialogs for the documents, when somebody asks for them: tools/dialog-pictures.sh.
if(Qt6_FOUND OR WIN32)
    velm_backend(toolkit qt)
    add_executable(DialogPictures EXCLUDE_FROM_ALL pictures/DialogPictures.cpp pictures/${toolkit}/Camera.cpp)
    target_link_libraries(DialogPictures PRIVATE TestSupport $<IF:$<BOOL:${WIN32}>,gdiplus,QtTestSupport> ProjectOptions)
    target_compile_definitions(DialogPictures PRIVATE PROJECT_DATA_FOLDER="${drive}${PROJECT_SOURCE_DIR}/data")
endif()
