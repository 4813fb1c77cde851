// SPDX-License-Identifier: MIT
#include "UtilityDLL/settings/HashedString.h"

#include "VelmBase/CRCChecksum.h"

#include <gtest/gtest.h>

TEST(HashedString, HashIgnoresLetterCase) {
    const unsigned int hash = HashedString<wchar_t>(L"Depth").Hash();
    EXPECT_EQ(hash, HashedString<wchar_t>(L"DEPTH").Hash());
    EXPECT_EQ(hash, HashedString<wchar_t>(L"depth").Hash());
}

TEST(HashedString, HashIsTheChecksumOverUpperCasedCharacters) {
    CRCChecksum checksum;
    for (const wchar_t c : std::wstring(L"GR\u00DC\u00FF\u00B5-\u03A9")) checksum += static_cast<int>(c);
    EXPECT_EQ(checksum.Value(), HashedString<wchar_t>(L"gr\u00FC\u00FF\u00B5-\u03A9").Hash());
}

TEST(HashedString, HashCountsCharactersBeyondTheBasicPlaneAsTheirUtf16Units) {
    CRCChecksum checksum;
    checksum += 0xD83D;
    checksum += 0xDEA2;
    EXPECT_EQ(checksum.Value(), HashedString<wchar_t>(L"\U0001F6A2").Hash());
}

TEST(HashedString, LongNamesHashAsTheirCharacters) {
    for (std::size_t length : {63u, 64u, 65u, 200u, 1000u}) {
        CRCChecksum checksum;
        for (std::size_t i = 0; i < length; ++i) checksum += static_cast<int>(L'X');
        EXPECT_EQ(checksum.Value(), HashedString<wchar_t>(std::wstring(length, L'x')).Hash()) << length;
    }
}

TEST(HashedString, NullPointerIsTheEmptyName) {
    const HashedString<wchar_t> name(static_cast<const wchar_t*>(nullptr));
    EXPECT_EQ(L"", name.String());
    EXPECT_EQ(CRCChecksum().Value(), name.Hash());
}

TEST(HashedString, CopiesKeepTextAndHash) {
    const HashedString<wchar_t> name(L"Layer");
    HashedString<wchar_t> copy;
    copy = name;
    EXPECT_EQ(L"Layer", static_cast<const std::wstring&>(copy));
    EXPECT_EQ(name.Hash(), copy.Hash());
}
