#pragma once

#include "tests/support/TestFiles.h"

#include <cstdlib>
#include <filesystem>
#include <string>

/// Makes a font the only one that there is, for the rest of the process: it asks once what is installed.
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

private:
    TemporaryFolder m_folder;
};
