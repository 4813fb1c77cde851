// SPDX-License-Identifier: MIT
#include "UtilityDLL/settings/CRCFile.h"

#include "tests/support/TestFiles.h"
#include "tests/support/posix/SizeLimit.h"

#include <gtest/gtest.h>

TEST(CRCFile_Fault, AFullDiskShowsWhenFlushedAndLeavesAFileThatFailsItsCheck) {
    const TemporaryFolder folder;
    const std::string data(5000, 'x');
    for (const rlim_t limit : {rlim_t{100}, rlim_t{4999}, rlim_t{5000}, rlim_t{5003}}) {
        const std::wstring path = folder.File(std::to_wstring(limit));
        {
            const SizeLimit full(limit);
            CRCFile file;
            ASSERT_TRUE(file.Open(path, L"wb"));
            const bool written = file.Write(data.data(), 1, data.size()) == data.size();
            EXPECT_EQ(limit >= data.size(), written && file.Flush()) << limit;
        }
        CRCFile reader;
        EXPECT_FALSE(reader.Open(path, L"rb")) << limit;
    }
}

TEST(CRCFile_Fault, WhatWasNotWrittenIsNotSealed) {
    const std::string data(200'000, 'x');
    enum Way { AT_ONCE, IN_PIECES, BEHIND_A_HOLE, SEEK_IN_BETWEEN, READ_IN_BETWEEN };
    for (const Way way : {AT_ONCE, IN_PIECES, BEHIND_A_HOLE, SEEK_IN_BETWEEN, READ_IN_BETWEEN}) {
        SCOPED_TRACE(way);
        const TemporaryFolder folder;
        const std::wstring path = folder.File(L"a.bin");
        CRCFile file;
        ASSERT_TRUE(file.Open(path, L"wb"));
        {
            const SizeLimit full(100'000);
            char byte = 0;
            switch (way) {
            case AT_ONCE:
                file.Write(data.data(), 1, data.size());
                break;
            case IN_PIECES:
                for (int i = 0; i < 200; ++i) file.Write(data.data(), 1, 1000);
                break;
            case BEHIND_A_HOLE:
                file.Seek(150'000, SEEK_SET);
                file.Write(data.data(), 1, 1000);
                break;
            case SEEK_IN_BETWEEN:
                file.Write(data.data(), 1, 100'100);
                file.Rewind();
                break;
            case READ_IN_BETWEEN:
                file.Write(data.data(), 1, 100'100);
                file.Read(&byte, 1, 1);
                break;
            }
            EXPECT_FALSE(file.Flush());
        }
        // There is room again, and what comes now can be written.
        EXPECT_FALSE(file.Flush()) << "what is lost stays lost";
        file.Seek(0, SEEK_END);
        EXPECT_EQ(4u, file.Write("more", 1, 4));
        EXPECT_FALSE(file.Flush());
        file.Close();
        CRCFile reader;
        EXPECT_FALSE(reader.Open(path, L"rb"));
    }
}
