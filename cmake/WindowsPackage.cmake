# SPDX-License-Identifier: MIT
# What the package for Windows has besides: how to use it, its licence, and the licences of what it ships of others, as
# Debian's packages have them. The C++ runtime's refers to the GPL, whose text goes with it.
configure_file(cmake/WindowsReadMe.txt.in ${PROJECT_BINARY_DIR}/ReadMe.txt @ONLY NEWLINE_STYLE CRLF)
install(FILES ${PROJECT_BINARY_DIR}/ReadMe.txt DESTINATION .)
set(documents /usr/share/doc)
install(FILES LICENSE DESTINATION licences RENAME UtilityDLL.txt)
foreach(row "gcc-runtime ${documents}/gcc-mingw-w64-base/copyright" "mingw-w64 ${documents}/mingw-w64-common/copyright"
        "CLI11 ${documents}/libcli11-dev/copyright" "nlohmann-json ${documents}/nlohmann-json3-dev/copyright"
        "GPL-3 /usr/share/common-licenses/GPL-3")
    separate_arguments(row)
    list(POP_FRONT row name text)
    install(FILES ${text} DESTINATION licences RENAME ${name}.txt)
endforeach()
