// SPDX-License-Identifier: MIT
#include "apps/chartutil/terminal/Errors.h"

#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>

namespace {

std::string NotWritten(const std::wstring& path, std::errc reason) {
    try {
        ThrowNotWritten(ToUtf8(path), std::make_error_code(reason));
    } catch (const CommandError& error) {
        EXPECT_EQ(ExitCode::IO_ERROR, error.Code());
        const std::string text = error.what();
        const std::string begin = ToUtf8(path) + ": ";
        EXPECT_EQ(begin, text.substr(0, begin.size()));
        return text.substr(begin.size());
    }
}

} // namespace

TEST(ThrowNotWritten, SaysWhatItIsAndWhatToDo) {
    const TemporaryFolder folder;
    WriteBytes(folder.File(L"old.ini"), "old");
    struct Row {
        std::errc reason;
        std::string ofNew, ofOld; // of a file that is not there, and of one that is
    };
    using enum std::errc;
    for (const Row& row :
         {Row{permission_denied, "its folder takes no new file of yours; check the permissions of the folder",
              "you may not write it, and is as it was; check its permissions and those of its folder"},
          Row{operation_not_permitted,
              "its folder takes no new file of yours; check the permissions of the folder",
              "you may not write it, and is as it was; check its permissions and those of its folder"},
          Row{read_only_file_system, "its disk is read-only; name a file on another one",
              "its disk is read-only; the file is as it was; name a file on another one"},
          Row{no_space_on_device, "the disk is full; make room, or name a file on another one",
              "the disk is full; the file is as it was; make room, or name a file on another one"},
          Row{device_or_resource_busy,
              "another program is saving it or has it open; try again when that is done",
              "another program is saving it or has it open; the file is as it was; try again when that is "
              "done"},
          Row{is_a_directory, "is a folder; name a file in it", "is a folder; name a file in it"},
          Row{invalid_argument, "is no regular file; name another one",
              "is no regular file; name another one"},
          Row{filename_too_long, "the name is too long; choose a shorter one", ""},
          Row{too_many_symbolic_link_levels,
              "is a link that leads to itself; remove it, or name another file", ""},
          Row{too_many_links, "",
              "has other names (hard links), which would keep the old content; the file is as it was; name "
              "another file"},
          Row{illegal_byte_sequence,
              "a character has no place in such a file, which takes those up to U+00FF; replace it",
              "a character has no place in such a file, which takes those up to U+00FF; the file is as it "
              "was; replace it"},
          Row{not_enough_memory, "there is not enough memory for it; close other programs", ""},
          Row{file_exists, ".new.ini.saving beside it, which is no file, is in the way; remove it",
              ".old.ini.saving beside it, which is no file, is in the way; remove it"},
          Row{no_such_file_or_directory, "",
              "cannot be written, and is as it was: No such file or directory"},
          Row{too_many_files_open, "cannot be written: Too many open files",
              "cannot be written, and is as it was: Too many open files"}}) {
        if (!row.ofNew.empty()) {
            EXPECT_EQ(row.ofNew, NotWritten(folder.File(L"new.ini"), row.reason));
        }
        if (!row.ofOld.empty()) {
            EXPECT_EQ(row.ofOld, NotWritten(folder.File(L"old.ini"), row.reason));
        }
    }
}

TEST(ThrowNotWritten, NamesTheFolderThatIsMissing) {
    const TemporaryFolder folder;
    for (const std::wstring& missing : {folder.File(L"missing"), folder.File(L"a/b")})
        EXPECT_EQ("there is no folder " + ToUtf8(missing) + "; make it, or check the path",
                  NotWritten(missing + L"/a.ini", std::errc::no_such_file_or_directory));
    EXPECT_EQ("is a link to where there is no folder; make that, or remove the link",
              NotWritten(folder.File(L"link.ini"), std::errc::no_such_file_or_directory));
}
