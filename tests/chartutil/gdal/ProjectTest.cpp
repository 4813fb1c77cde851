// SPDX-License-Identifier: MIT
#include "apps/chartutil/sheet/project/Project.h"

#include "UtilityDLL/runtime/PlotErrorReporter.h"
#include "apps/chartutil/terminal/Errors.h"
#include "tests/support/TestFiles.h"

#include <gmock/gmock.h>

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

namespace {

// A project of these settings, and what was reported of it without the folder's name.
struct OpenedProject {
    explicit OpenedProject(const std::string& settings,
                           const std::map<std::string, std::string>& files = {}) {
        WriteBytes(folder.Path() / "project.ini", settings);
        for (const auto& [name, bytes] : files) WriteBytes(folder.Path() / name, bytes);
        PlotErrorReporter::Get().Clear();
        project = OpenProject(UserText(folder.Path().string()));
        const std::string prefix = folder.Path().string() + "/";
        for (const std::wstring& context : PlotErrorReporter::Get().GetContexts())
            for (const ErrorString& error : PlotErrorReporter::Get()[context]) {
                std::string text = ToUtf8(error.Text());
                for (std::size_t at; (at = text.find(prefix)) != std::string::npos;)
                    text.erase(at, prefix.size());
                reports.push_back(text);
                contexts.push_back(context);
            }
    }
    TemporaryFolder folder;
    Project project;
    std::vector<std::string> reports;
    std::vector<std::wstring> contexts;
};

// Without it the face of the numbers would be reported where Arial is not installed.
const std::string kFace = "[Soundings]\nLabel = Liberation Sans,1.8\n";

TEST(Project, TellsFileLineSectionAndKeyOfWhatIsWrong) {
    struct Row {
        const char *settings, *report;
    };
    for (const Row& row : {
             Row{"[Sheet]\n\nMargin = wide\n",
                 "project.ini:5: [Sheet] Margin: 'wide' is no number; 12 is taken"},
             Row{"[Sheet]\nMargin = -1\n",
                 "project.ini:4: [Sheet] Margin: '-1' is not from 0 to 1000; 12 is taken"},
             Row{"[Sheet]\nMargin = nan\n", "project.ini:4: [Sheet] Margin: 'nan' is no number; 12 is taken"},
             Row{"[Sheet]\nScale = 1e999\n",
                 "project.ini:4: [Sheet] Scale: '1e999' is no number; 0 is taken"},
             Row{"[Sheet]\nMargni = 3\n", "project.ini:4: [Sheet] Margni: there is no such key in this "
                                          "section; did you mean 'Margin'?"},
             Row{"[Shete]\nA = 3\n",
                 "project.ini:3: [Shete]: there is no such section in a project; did you mean 'Sheet'?"},
             Row{"[Sheet]\nQuiteElse = 3\n",
                 "project.ini:4: [Sheet] QuiteElse: there is no such key in this section; remove it"},
             Row{"[Sheet]\nPaper = A7\n", "project.ini:4: [Sheet] Paper: 'A7' is no paper; write A0 to A5, "
                                          "with landscape or portrait behind it"},
             Row{"[Sheet]\nPaper = A3\nPaperWidth = 300\n",
                 "project.ini:5: [Sheet] PaperWidth: it does not count beside Paper; remove one of the two"},
             Row{"[Sheet]\nCentreX = 300\n", "project.ini:4: [Sheet] CentreX: it counts only with the other "
                                             "one of CentreX and CentreY; write both"},
             Row{"[Map Grid]\nGridStyle = POINTS,CROSSES\n",
                 "project.ini:4: [Map Grid] GridStyle: 'POINTS,CROSSES' cannot be used; 'POINTS' is taken"},
             Row{"[Map Grid]\nXInterval = ten\n",
                 "project.ini:4: [Map Grid] XInterval: 'ten' is no number; 50 is taken"},
             Row{"[Contours]\nSmoothingWindow = 9\n",
                 "project.ini:4: [Contours] SmoothingWindow: '9' is not from 0 to 8; 0 is taken"},
             Row{"[Graticule]\nLatLonDecimals = 1.5\n",
                 "project.ini:4: [Graticule] LatLonDecimals: '1.5' is no whole number; 2 is taken"},
             Row{"[Map Grid]\nTickSize = -1\n",
                 "project.ini:4: [Map Grid] TickSize: '-1' is not at least 0; 2.5 is taken"},
             Row{"[Contours]\nLabelOrientation = Upwards\n",
                 "project.ini:4: [Contours] LabelOrientation: 'Upwards' cannot be used; 'OptimumTextAngle' "
                 "is taken"},
             Row{"[Surface]\nColorTable = none.col\n",
                 "project.ini:4: [Surface] ColorTable: none.col: no such file; check the path"},
             Row{"[Contours]\nLevels = .\n",
                 "project.ini:4: [Contours] Levels: .: is a folder; name a file in it"},
             Row{"[Title Block]\nLayout = none.txt\nWidth=9\nHeight=9\nText.Font=Liberation Sans\n",
                 "project.ini:4: [Title Block] Layout: none.txt: no such file; check the path"},
             Row{"[Legend]\nText.Font=Liberation Sans\n",
                 "project.ini:3: [Legend]: the panel has no size; write its Width and Height in millimetres"},
             Row{"[Contour Labels]\nFont = No Such Face\n",
                 "project.ini:4: [Contour Labels] Font: 'No Such Face' is not installed, so "},
         }) {
        SCOPED_TRACE(row.settings);
        const OpenedProject opened(kFace + row.settings);
        ASSERT_EQ(1u, opened.reports.size()) << ::testing::PrintToString(opened.reports);
        EXPECT_THAT(opened.reports[0], ::testing::StartsWith(row.report));
    }
}

TEST(Project, ReportsInTheContextOfTheSection) {
    const OpenedProject opened(kFace + "[Map Grid]\nXInterval = ten\n[Nothing]\n");
    EXPECT_THAT(opened.contexts, ElementsAre(L"Map Grid", L"Nothing"));
}

TEST(Project, TakesEachSpellingOfAValueThatARecordTakes) {
    const OpenedProject opened(kFace + "[map grid]\nxinterval = 5e1\nGridStyle =  Y_TICKS , X_TICKS\n"
                                       "[Graticule Line]\nLineStyle = dashed\nLineColor = 7\nEnable = 1\n"
                                       "[Contour Labels]\nFont = Liberation Sans\nRotation = 450\n"
                                       "[Contours]\nLabelSpacing = 12\n[Keywords]\nanything = at all\n");
    EXPECT_THAT(opened.reports, IsEmpty());
    EXPECT_EQ(50, opened.project.grid.XInterval());
}

TEST(Project, AKeyThatIsMissingLeavesWhatIsThereWithoutIt) {
    const Project none = OpenedProject("").project;
    EXPECT_EQ(none.grid.GridStyle(), OpenedProject("[Map Grid]\nXInterval = 10\n").project.grid.GridStyle());
    const Project project = OpenedProject("[Legend]\nText.TrueColor = 255\nText.Size = 4\nHeading.Size = 5\n"
                                          "[Graticule Labels]\nTrueColor = 77\nFont = DejaVu Sans\n"
                                          "[Scale Bar]\nText.Color = 5\nHeading.Color =\n")
                                .project;
    EXPECT_EQ(255u, project.legend.heading.Color());
    EXPECT_EQ(5, project.legend.heading.Size());
    EXPECT_EQ(4, project.legend.subheading.Size());
    EXPECT_EQ(77u, project.degreeText.Color());
    EXPECT_EQ(L"DejaVu Sans", project.degreeText.Font());
    EXPECT_EQ(0xFF0000u, project.scaleBar.heading.Color());
}

TEST(Project, NamesTheLineInTheFilesThatItNames) {
    const OpenedProject opened(
        kFace + "[Surface]\nColorTable = a.col\n[Contours]\nLevels = a.cdf\n",
        {{"a.col", "[ColorTable]\nEntry(0)=0,1,2,3\nEntry(1)=deep,1,2,3\n"},
         {"a.cdf", "[Contour(0)]\nLevel=2\nColor=1\n\n[Contour(1)]\nLevel=much\nColor=1\n"}});
    ASSERT_EQ(3u, opened.reports.size()) << ::testing::PrintToString(opened.reports);
    EXPECT_THAT(opened.reports[0], AllOf(::testing::StartsWith("a.cdf:5: "), HasSubstr("much")));
    EXPECT_THAT(opened.reports[2], AllOf(::testing::StartsWith("a.col:3: "), HasSubstr("deep")));
    EXPECT_EQ(1, opened.project.colors.NumEntries());
}

TEST(Project, LevelsAscendAndAreThereOnce) {
    const OpenedProject opened(
        kFace + "[Contours]\nLevels = a.cdf\n",
        {{"a.cdf", "[Contour(0)]\nLevel=5\nColor=1\n[Contour(1)]\nLevel=2\nColor=1\n[Contour(2)]\nLevel=5\n"
                   "Color=1\n"}});
    EXPECT_FALSE(opened.reports.empty());
    ASSERT_EQ(2, opened.project.levels.NumContours());
    EXPECT_EQ(2, opened.project.levels[0].level);
    EXPECT_EQ(5, opened.project.levels[1].level);
}

TEST(Project, PaperIsThatOfIso216) {
    struct Row {
        const char* paper;
        double width, height;
    };
    for (const Row& row :
         {Row{"A0", 841, 1189}, Row{"a1 landscape", 841, 594}, Row{"A2 portrait", 420, 594},
          Row{"A3, Landscape", 420, 297}, Row{"A4", 210, 297}, Row{"A5 landscape", 210, 148}}) {
        SCOPED_TRACE(row.paper);
        const OpenedProject opened(kFace + "[Sheet]\nPaper = " + row.paper + "\n");
        EXPECT_THAT(opened.reports, IsEmpty());
        EXPECT_EQ(row.width, opened.project.paperWidth);
        EXPECT_EQ(row.height, opened.project.paperHeight);
    }
}

TEST(Project, TextsAreUtf8OrOneByteACharacter) {
    EXPECT_EQ(L"Fj\u00F8rd", OpenedProject(kFace + "[Sheet]\nTitle = Fj\xC3\xB8rd\n").project.title);
    EXPECT_EQ(L"Fj\u00F8rd", OpenedProject(kFace + "[Sheet]\nTitle = Fj\xF8rd\n").project.title);
    const OpenedProject opened(kFace + "[Keywords]\nn\xC3\xA5me = Fj\xC3\xB8rd\n");
    ASSERT_TRUE(opened.project.keywords.GetKeywordConst(L"n\u00E5me"));
    EXPECT_EQ(L"Fj\u00F8rd", opened.project.keywords.GetKeywordConst(L"n\u00E5me")->value);
}

TEST(Project, AFolderWithoutSettingsIsNone) {
    const TemporaryFolder folder;
    EXPECT_THROW(OpenProject(UserText(folder.Path().string())), CommandError);
    WriteBytes(folder.Path() / "project.ini", "[Sheet]\n[]\n");
    try {
        (void)OpenProject(UserText(folder.Path().string()));
        FAIL();
    } catch (const CommandError& error) {
        EXPECT_THAT(error.what(), HasSubstr("project.ini:2: a section has no name"));
    }
}

TEST(Project, HostileSettingsEndInReports) {
    for (const std::string& settings :
         {std::string(), std::string("\0\x1A\0=\0", 5), std::string("=\n=v\nk==v\n;\n;;\nk=;\n"),
          std::string("[Soundings]\nLabel = ") + std::string(100000, ',') + "\n",
          "[" + std::string(100000, 'a') + "]\n" + std::string(100000, 'b') + " = 1\n",
          std::string("[Legend]\nFrame = ,,,\nWidth = inf\nPosX = 1e308\n[Sheet]\nPaper = \xFF\xFE\n")}) {
        SCOPED_TRACE(settings.substr(0, 60));
        EXPECT_LE(OpenedProject(settings).reports.size(), 30u);
    }
    std::string many;
    for (int i = 0; i < 5000; ++i) many += "[S" + std::to_string(i) + "]\nk=1\n";
    const OpenedProject opened(kFace + many);
    EXPECT_EQ(101u, opened.reports.size());
    EXPECT_THAT(opened.reports,
                ::testing::Contains("project.ini: 4900 more sections and keys are not known"));
}

TEST(Project, FilesAreTheSettingsAndThoseThatTheyName) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "project.ini",
               "[Soundings]\nFile = a.csv\n[Surface]\nColorTable = /b/c.col\n[Contours]\nLevels =\n");
    std::vector<std::string> names;
    for (const UserText& file : FilesOf(UserText(folder.Path().string()))) names.push_back(file.Utf8());
    EXPECT_THAT(names, ElementsAre(EndsWith("/project.ini"), EndsWith("/a.csv"), "/b/c.col"));
}

TEST(Project, ShippedProjectsAreWithoutFaults) {
    for (const char* const folder : {TEST_DATA_FOLDER "/chartutil/data/tiny-chart"}) {
        PlotErrorReporter::Get().Clear();
        (void)OpenProject(UserText(folder));
        for (const std::wstring& context : PlotErrorReporter::Get().GetContexts())
            for (const ErrorString& error : PlotErrorReporter::Get()[context])
                ADD_FAILURE() << ToUtf8(error.Text());
    }
}

} // namespace
