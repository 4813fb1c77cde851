// SPDX-License-Identifier: MIT
#include "Framework/windows/FileDialog.h"

#include "Framework/windows/Button.h"
#include "tests/Framework/TestDialog.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/EventLoop.h"
#include "tests/support/TestFiles.h"

#include <memory>

namespace {

class FileDialogTest : public DialogTest {
protected:
    CFileDialog Saving(DWORD flags = OFN_OVERWRITEPROMPT, const CString& name = {}) {
        CFileDialog dialog(false, L"cdf", name, flags, L"Contours (*.cdf)|*.cdf||");
        dialog.SetInitialFolder(WidePath(m_folder.Path()));
        return dialog;
    }

    CFileDialog Opening() {
        CFileDialog dialog(true, {}, {}, OFN_HIDEREADONLY | OFN_FILEMUSTEXIST, L"Tables (*.col)|*.col||");
        dialog.SetInitialFolder(WidePath(m_folder.Path()));
        return dialog;
    }

    // Enters that name and accepts.
    void Enter(const std::wstring& name) {
        m_driver.Then([=](OpenDialog& open) {
            open.EnterFile(name);
            open.Accept();
        });
    }

    void ExpectPath(const std::wstring& path, CFileDialog& dialog) {
        EXPECT_EQ(IDOK, dialog.DoModal());
        EXPECT_EQ(NativePath(path), NativePath(dialog.GetPathName().String()));
    }

    TemporaryFolder m_folder;
};

} // namespace

TEST_F(FileDialogTest, BeginsInItsFolderAndAddsTheExtension) {
    struct Row {
        const wchar_t *entered, *file;
    };
    for (const Row& row : {Row{L"chart", L"chart.cdf"}, Row{L"chart.cdf", L"chart.cdf"},
                           Row{L"chart.txt", L"chart.txt"}, Row{L"\u03A9 a", L"\u03A9 a.cdf"}}) {
        CFileDialog dialog = Saving();
        Enter(row.entered);
        ExpectPath(m_folder.File(row.file), dialog);
    }
    EXPECT_EQ(0U, m_folder.NumFiles()); // nothing is made
}

TEST_F(FileDialogTest, ProposesAName) {
    CFileDialog dialog = Saving(OFN_OVERWRITEPROMPT, L"proposed.cdf");
    m_driver.Then([](OpenDialog& open) { open.Accept(); });
    ExpectPath(m_folder.File(L"proposed.cdf"), dialog);
    m_driver.Then([](OpenDialog& open) { open.Accept(); }); // once more, with what was chosen
    ExpectPath(m_folder.File(L"proposed.cdf"), dialog);
}

TEST_F(FileDialogTest, AsksBeforeAFileIsOverwritten) {
    WriteBytes(m_folder.File(L"there.cdf"), "content");
    CFileDialog dialog = Saving();
    m_driver
        .Then([](OpenDialog& open) {
            open.EnterFile(L"there"); // whose extension is added first
            open.Accept();            // No: the dialog stays
            open.Accept();
        })
        .Then([](OpenDialog& question) { question.Click(L"No"); })
        .Then([](OpenDialog& question) { question.Click(L"Yes"); });
    ExpectPath(m_folder.File(L"there.cdf"), dialog);
    EXPECT_EQ("content", ReadBytes(m_folder.File(L"there.cdf"))); // which is the program's matter
}

TEST_F(FileDialogTest, DoesNotAskUnlessItIsToldTo) {
    WriteBytes(m_folder.File(L"there.cdf"), "content");
    CFileDialog dialog = Saving(0);
    Enter(L"there.cdf");
    ExpectPath(m_folder.File(L"there.cdf"), dialog);
}

TEST_F(FileDialogTest, OpensWhatThereIs) {
    WriteBytes(m_folder.File(L"a.col"), "");
    CFileDialog dialog = Opening();
    Enter(L"a.col");
    ExpectPath(m_folder.File(L"a.col"), dialog);
}

TEST_F(FileDialogTest, CancelKeepsWhatWasProposed) {
    CFileDialog dialog = Saving(0, L"proposed.cdf");
    m_driver.Then([](OpenDialog& open) {
        open.EnterFile(L"other");
        open.Key("Escape");
    });
    EXPECT_EQ(IDCANCEL, dialog.DoModal());
    EXPECT_EQ(L"proposed.cdf", dialog.GetPathName().String());
}

TEST_F(FileDialogTest, AFolderThatThereIsNotIsNoFault) {
    CFileDialog dialog = Saving();
    dialog.SetInitialFolder(m_folder.File(L"none"));
    Enter(m_folder.File(L"chart"));
    ExpectPath(m_folder.File(L"chart.cdf"), dialog);
}

TEST_F(FileDialogTest, FiltersMayBeAnything) {
    for (const wchar_t* const filter : {L"", L"|", L"||", L"Name", L"Name|", L"Name|*.a", L"|*.a||",
                                        L"A|*.a;*.b|B|*.*||", L"(|(||", L"*|*|*|*"}) {
        CFileDialog dialog(false, {}, {}, 0, filter);
        dialog.SetInitialFolder(WidePath(m_folder.Path()));
        Enter(L"name.a");
        ExpectPath(m_folder.File(L"name.a"), dialog);
    }
}

TEST_F(FileDialogTest, ItsParentMayGoWhileItIsOpen) {
    auto parent = std::make_unique<CButton>();
    ASSERT_TRUE(parent->Create(L"Parent"));
    CFileDialog dialog(false, {}, {}, 0, {}, parent.get());
    m_driver.Then([&](OpenDialog&) { parent.reset(); });
    EXPECT_EQ(IDCANCEL, dialog.DoModal());
}
