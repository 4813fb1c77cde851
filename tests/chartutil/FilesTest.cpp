// SPDX-License-Identifier: MIT
#include "apps/chartutil/files/Files.h"

#include "apps/chartutil/terminal/Errors.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>

TEST(ThrowNotReadable, SaysWhatItIsAndWhatToDo) {
    struct Row {
        std::string path;
        std::errc reason;
        std::string text;
    };
    using enum std::errc;
    for (const Row& row :
         {Row{"a", no_such_file_or_directory, "a: no such file; check the path"},
          Row{"a/b", not_a_directory, "a/b: no such file; check the path"},
          Row{"", invalid_argument, ": no such file; check the path"},
          Row{"a", invalid_argument, "a: is no regular file"},
          Row{"a", is_a_directory, "a: is a folder; name a file in it"},
          Row{"a", permission_denied,
              "a: you may not read it; check its permissions and those of its folder"},
          Row{"a", device_or_resource_busy,
              "a: another program keeps it for itself; try again when that is done"},
          Row{"a", filename_too_long, "a: the name is too long; check the path"},
          Row{"a", too_many_symbolic_link_levels, "a: is a link that leads to itself; check the path"},
          Row{"a", io_error, "a: the disk does not give it back; check the disk"},
          Row{"a", too_many_files_open, "a: cannot be read: Too many open files"}}) {
        try {
            ThrowNotReadable(UserText(row.path), std::make_error_code(row.reason));
        } catch (const CommandError& error) {
            EXPECT_EQ(ExitCode::IO_ERROR, error.Code());
            EXPECT_EQ(row.text, error.what());
        }
    }
}
