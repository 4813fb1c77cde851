// SPDX-License-Identifier: MIT
// The file type that the package brings to the desktop, as Qt reads it. The name *.cdf is that of other
// files as well.

#include "tests/support/EventLoop.h"
#include "tests/support/TestFiles.h"

#include <QLocale>
#include <QMimeDatabase>

namespace {

constexpr char kContours[] = "application/x-utilitydll-contour-definition";

// How the system's types have the other one, which may not be installed.
constexpr char kSystemsOwn[] =
    "<?xml version='1.0'?><mime-info xmlns='http://www.freedesktop.org/standards/shared-mime-info'>"
    "<mime-type type='application/x-netcdf'><comment>grid</comment><glob pattern='*.cdf'/></mime-type>"
    "<mime-type type='text/plain'><comment>text</comment><glob pattern='*.txt'/></mime-type></mime-info>";

class FileTypeTest : public ::testing::Test {
protected:
    // Qt reads the types once.
    static void SetUpTestSuite() {
        types = std::make_unique<TemporaryFolder>();
        const std::filesystem::path packages = types->Path() / "mime/packages";
        std::filesystem::create_directories(packages);
        std::filesystem::copy_file(PROJECT_DATA_FOLDER "/../apps/chartutil/desktop/utilitydll.xml",
                                   packages / "utilitydll.xml");
        WriteBytes(packages / "freedesktop.org.xml", kSystemsOwn);
        qputenv("XDG_DATA_HOME", types->Path().c_str());
    }
    static void TearDownTestSuite() { types.reset(); }

    std::string TypeOf(const char* name, std::string_view bytes) const {
        WriteBytes(m_folder.Path() / name, bytes);
        return QMimeDatabase()
            .mimeTypeForFile(QString::fromStdString((m_folder.Path() / name).string()))
            .name()
            .toStdString();
    }

    static inline std::unique_ptr<TemporaryFolder> types;
    EventLoop m_loop;
    TemporaryFolder m_folder;
};

} // namespace

TEST_F(FileTypeTest, ContentDecidesWhoseFileItIs) {
    const std::string chart = ReadBytes(FromUtf8(PROJECT_DATA_FOLDER "/pensacola/levels.cdf"));
    struct Row {
        const char* name;
        std::string bytes;
        const char* type;
    };
    for (const Row& row : {Row{"chart.cdf", chart, kContours}, Row{"chart.CDF", chart, kContours},
                           Row{"without extension", chart, kContours},
                           Row{"remark.cdf", "; by hand\r\n\r\n" + chart, kContours},
                           Row{"grid.cdf", {"CDF\x01\0\0\0\0", 8}, "application/x-netcdf"},
                           Row{"grid64.cdf", {"CDF\x05\0\0\0\0", 8}, "application/x-netcdf"},
                           Row{"settings.ini", "[Contours]\r\nStep=1\r\n", "text/plain"}}) {
        const std::string type = TypeOf(row.name, row.bytes);
        if (std::string_view(row.type) == "text/plain")
            EXPECT_NE(kContours, type) << row.name;
        else
            EXPECT_EQ(row.type, type) << row.name;
    }
}

TEST_F(FileTypeTest, IsTextAndHasANameInEachLanguage) {
    const QMimeType type = QMimeDatabase().mimeTypeForName(kContours);
    EXPECT_TRUE(type.inherits("text/plain"));
    EXPECT_EQ("application-x-utilitydll-contour-definition", type.iconName().toStdString());
    QLocale::setDefault(QLocale(QLocale::German));
    EXPECT_EQ("Tiefenlinien", type.comment().toStdString());
    QLocale::setDefault(QLocale(QLocale::English));
    EXPECT_EQ("contour definitions", type.comment().toStdString());
}
