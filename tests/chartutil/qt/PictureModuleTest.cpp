// SPDX-License-Identifier: MIT
// What only a program with the Qt module can be asked: PNG and PDF pictures, and where Qt is loaded.

#include "apps/chartutil/drawing/PictureModule.h"
#include "apps/chartutil/commands/colors/PalettePicture.h"
#include "tests/support/Program.h"

#include <cstdlib>
#include <filesystem>
#include <gmock/gmock.h>

namespace fs = std::filesystem;

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

namespace {

constexpr RGBColor kRed(255, 0, 0);

std::string Rendered(const Surface& surface, PictureFormat format) {
    std::string whyNot, file;
    RenderPictureFunction* const render = LoadPictureModule(format, whyNot);
    EXPECT_NE(nullptr, render) << whyNot;
    EXPECT_TRUE(render && render(
                              surface, format, [](std::size_t) {}, file));
    return file;
}

unsigned long U32(const std::string& bytes, std::size_t at) {
    unsigned long value = 0;
    for (std::size_t i = 0; i < 4; ++i) value = value * 256 + static_cast<unsigned char>(bytes.at(at + i));
    return value;
}

// The libraries that the system's loader brings in for a program, with all that they need.
std::string Libraries(const std::string& program) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "empty", "");
    EXPECT_EQ(0, RunWithFiles("/usr/bin/ldd", {program}, folder.File(L"empty"), folder.File(L"output"),
                              folder.File(L"error")));
    return ReadBytes(folder.Path() / "output");
}

// The program apart from its module.
class LonelyProgram {
public:
    LonelyProgram() {
        fs::create_directory(m_folder.Path() / "bin");
        fs::copy_file(ChartutilPath(), m_folder.Path() / "bin/chartutil");
    }

    std::string PalettePictureError(const std::string& name) const {
        WriteBytes(m_folder.Path() / "empty", "");
        const fs::path picture = m_folder.Path() / name;
        EXPECT_EQ(2,
                  RunWithFiles((m_folder.Path() / "bin/chartutil").string(),
                               {"colors", "palette", "--picture", picture.string()}, m_folder.File(L"empty"),
                               m_folder.File(L"output"), m_folder.File(L"error")));
        EXPECT_FALSE(fs::exists(picture));
        return ReadBytes(m_folder.Path() / "error");
    }

private:
    TemporaryFolder m_folder;
};

} // namespace

TEST(PictureModule, PngHasFourPixelsToAMillimetre) {
    Surface surface(30, 20.25);
    const std::string blank = Rendered(surface, PictureFormat::PNG);
    EXPECT_THAT(blank, StartsWith("\x89PNG\r\n\x1A\n"));
    EXPECT_EQ(120u, U32(blank, 16));
    EXPECT_EQ(81u, U32(blank, 20));
    const std::size_t resolution = blank.find("pHYs");
    ASSERT_NE(std::string::npos, resolution);
    EXPECT_EQ(4000u, U32(blank, resolution + 4)); // pixels to a metre
    surface.Text(2, 10, "Soundings", {3}, kRed);
    EXPECT_GT(Rendered(surface, PictureFormat::PNG).size(), blank.size() + 100);
}

TEST(PictureModule, EveryKindOfShapeShows) {
    const auto differs = [](auto draw) {
        Surface surface(20, 20);
        const std::string blank = Rendered(surface, PictureFormat::PNG);
        draw(surface);
        return Rendered(surface, PictureFormat::PNG) != blank;
    };
    EXPECT_FALSE(differs([](Surface&) {}));
    EXPECT_TRUE(differs([](Surface& s) { s.Rectangle(1, 1, 5, 5, kRed); }));
    EXPECT_TRUE(differs([](Surface& s) { s.Frame(1, 1, 5, 5, {kRed}); }));
    EXPECT_TRUE(differs([](Surface& s) { s.Line(1, 1, 5, 5, {kRed, 0.5, {1, 0.5}}); }));
    EXPECT_TRUE(differs([](Surface& s) { s.Polygon({{{1, 1}, {9, 1}, {5, 9}}}, kRed); }));
    EXPECT_TRUE(differs([](Surface& s) { s.Text(1, 9, "5", {3}, kRed); }));
}

TEST(PictureModule, PdfPageHasThePapersSize) {
    const std::string pdf = Rendered(Surface(210, 297), PictureFormat::PDF);
    EXPECT_THAT(pdf, StartsWith("%PDF-1."));
    EXPECT_THAT(pdf, HasSubstr("/MediaBox [0 0 595.275591 841.889764]"));
    // One digit less than the next whole point has.
    EXPECT_THAT(Rendered(Surface(352.77, 100), PictureFormat::PDF),
                HasSubstr("/MediaBox [0 0 999.977953 283.464567 ]"));
}

TEST(PictureModule, PdfHoldsTextAsText) {
    const std::string pdf = Rendered(PalettePicture(), PictureFormat::PDF);
    EXPECT_THAT(pdf, AllOf(HasSubstr("/Type /Font"), HasSubstr("/ToUnicode")));
    EXPECT_LT(pdf.size(), 100'000u);
}

TEST(PictureModule, SamePageGivesSameBytes) {
    for (const PictureFormat format : {PictureFormat::PNG, PictureFormat::PDF})
        EXPECT_EQ(Rendered(PalettePicture(), format), Rendered(PalettePicture(), format));
    EXPECT_THAT(Rendered(PalettePicture(), PictureFormat::PDF), HasSubstr("/CreationDate (D:19700101000000"));
}

TEST(PictureModule, CommandWritesPngAndPdf) {
    const TemporaryFolder folder;
    for (const auto& [name, start] : {std::pair("p.PNG", "\x89PNG"), {"p.pdf", "%PDF-"}}) {
        const std::string path = (folder.Path() / name).string();
        const ProgramResult result = RunChartutil({"colors", "palette", "--picture", path});
        EXPECT_EQ(0, result.exitCode) << result.error;
        EXPECT_EQ("", result.error);
        EXPECT_THAT(ReadBytes(fs::path(path)), StartsWith(start));
    }
}

TEST(PictureModule, EveryCommandEndsWellAfterDrawing) {
    const TemporaryFolder folder;
    for (int i = 0; i < 20; ++i) {
        const ProgramResult result =
            RunChartutil({"text", "measure", "A", "--picture", (folder.Path() / "p.png").string()});
        ASSERT_EQ(0, result.exitCode) << "call " << i << result.error;
    }
}

TEST(PictureModule, MachineWithoutFontsMakesPictures) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "fonts.conf", "<?xml version=\"1.0\"?><fontconfig></fontconfig>");
    setenv("FONTCONFIG_FILE", (folder.Path() / "fonts.conf").c_str(), 1);
    for (const char* name : {"p.png", "p.pdf"}) {
        const ProgramResult result =
            RunChartutil({"colors", "palette", "--picture", (folder.Path() / name).string()});
        EXPECT_EQ(0, result.exitCode) << result.error;
    }
    unsetenv("FONTCONFIG_FILE");
}

TEST(PictureModule, ProgramAndLibrariesNeedNoQt) {
    EXPECT_THAT(Libraries(ChartutilPath()), AllOf(HasSubstr("UtilityDLL.so"), HasSubstr("Framework.so"),
                                                  HasSubstr("VelmBaseR.so"), Not(HasSubstr("Qt"))));
}

TEST(PictureModule, ErrorSaysWhatIsMissingAndWhere) {
    const LonelyProgram program;
    const std::string error = program.PalettePictureError("a.png");
    EXPECT_THAT(error, AllOf(HasSubstr("a.png: this program has no /"),
                             HasSubstr("utilitydll/chartutil_pictures.so"), HasSubstr("qt6-base-dev"),
                             HasSubstr("makes no PNG; name the picture .svg")));

    // Where it is looked for, something lies that is no module.
    const std::size_t begin = error.find("has no ") + 7;
    const fs::path module = error.substr(begin, error.find(" (", begin) - begin);
    fs::create_directories(module.parent_path());
    WriteBytes(module, "no library");
    EXPECT_THAT(program.PalettePictureError("a.pdf"),
                AllOf(HasSubstr("cannot load " + module.string()), HasSubstr("libqt6gui6"),
                      HasSubstr("makes no PDF")));
}
