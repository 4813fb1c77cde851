// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/TestFiles.h"

#include <cstdlib>
#include <filesystem>
#include <string>

/// Makes a font the only one that there is, for this process, if it has not asked for any yet, and for those
/// that it starts while this lives.
class OnlyFont {
public:
    OnlyFont(const std::string& file, const std::string& bytes) {
        const std::filesystem::path fonts = m_folder.Path() / "fonts";
        const std::filesystem::path settings = m_folder.Path() / "fonts.conf";
        std::filesystem::create_directories(fonts);
        WriteBytes(fonts / file, bytes);
        WriteBytes(settings, "<fontconfig><dir>" + fonts.string() + "</dir><cachedir>" +
                                 (m_folder.Path() / "cache").string() + "</cachedir></fontconfig>");
        setenv("FONTCONFIG_FILE", settings.c_str(), 1);
    }
    ~OnlyFont() { unsetenv("FONTCONFIG_FILE"); }
    OnlyFont(const OnlyFont&) = delete;
    OnlyFont& operator=(const OnlyFont&) = delete;

private:
    TemporaryFolder m_folder;
};
