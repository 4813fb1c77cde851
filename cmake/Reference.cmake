# SPDX-License-Identifier: MIT
# Target `reference`: the pages of every public header, in <build>/reference/html. It fails where one of them has a public
# name without a comment.
find_package(Doxygen 1.9.4 QUIET)
if(NOT DOXYGEN_FOUND)
    return()
endif()

# The headers that are installed (cmake/Install.cmake), but for what stands in detail and promises nothing.
file(GLOB_RECURSE reference_headers CONFIGURE_DEPENDS
    VelmBase/*.h VelmConfigure/*.h VersionControl/*.h UtilityDLL/*.h Framework/*.h)
list(FILTER reference_headers EXCLUDE REGEX "/(private|posix|win32|qt|freetype|detail)/")

# The first line of each, the one of the licence, is read as the room that the header belongs to: a group of pages.dox,
# named after the folder. So the headers themselves need no marks.
set(reference_rooms)
foreach(header IN LISTS reference_headers)
    cmake_path(GET header PARENT_PATH folder)
    list(APPEND reference_rooms ${folder})
endforeach()
list(REMOVE_DUPLICATES reference_rooms)
list(SORT reference_rooms ORDER DESCENDING) # the first that fits counts: a folder's own headers come behind its folders
set(reference_filters)
foreach(folder IN LISTS reference_rooms)
    file(RELATIVE_PATH room ${PROJECT_SOURCE_DIR} ${folder})
    string(REPLACE "/" "_" room ${room})
    string(APPEND reference_filters
        " \"${folder}/*=sed -e '1s|.*|/** @file */ /** @addtogroup ${room} */ /** @{ */|' -e '$a /** @} */'\"")
endforeach()

set(reference_folder ${PROJECT_BINARY_DIR}/reference)
list(JOIN reference_headers "\" \"" reference_input)
configure_file(cmake/reference/Doxyfile.in ${reference_folder}/Doxyfile @ONLY)
add_custom_command(OUTPUT ${reference_folder}/made
    COMMAND ${CMAKE_COMMAND} -E rm -rf ${reference_folder}/html
    COMMAND Doxygen::doxygen ${reference_folder}/Doxyfile
    COMMAND ${CMAKE_COMMAND} -E touch ${reference_folder}/made
    DEPENDS ${reference_headers} ${reference_folder}/Doxyfile ${PROJECT_SOURCE_DIR}/cmake/reference/pages.dox
    COMMENT "Making the reference of the headers" VERBATIM)
add_custom_target(reference DEPENDS ${reference_folder}/made)
