// SPDX-License-Identifier: MIT
#include "VelmBase/LibraryVersion.h"

#include "UtilityDLL/module/UtilityDLL.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>

namespace {

std::vector<std::string> Names() {
    std::vector<std::string> names;
    for (const LibraryVersion::Loaded& library : LibraryVersion::List()) names.push_back(library.name);
    return names;
}

TEST(LibraryVersion, ALibraryIsListedAsLongAsItIsLoaded) {
    const std::vector<std::string> before = Names();
    auto first = std::make_unique<LibraryVersion>("first", 1u);
    auto second = std::make_unique<LibraryVersion>("second", 2u);
    const LibraryVersion third("third", 3u);
    const auto with = [&](std::vector<std::string> more) {
        more.insert(more.begin(), before.begin(), before.end());
        return more;
    };
    EXPECT_EQ(with({"first", "second", "third"}), Names());
    EXPECT_EQ(2u, LibraryVersion::List()[before.size() + 1].version);
    second.reset();
    EXPECT_EQ(with({"first", "third"}), Names());
    first.reset();
    EXPECT_EQ(with({"third"}), Names());
}

TEST(LibraryVersion, EachLibraryOfTheSuiteTellsThatItIsLoadedAfterThoseThatItStandsOn) {
    EXPECT_TRUE(UtilityDLLStartUp()); // which needs all of them
    const std::vector<std::string> names = Names();
    const auto place = [&](const char* name) { return std::find(names.begin(), names.end(), name); };
    for (const char* const name :
         {"VelmBaseR", "VelmConfigureR", "VersionControlR", "Framework", "UtilityDLL"})
        EXPECT_NE(names.end(), place(name)) << name;
    EXPECT_LT(place("VelmBaseR"), place("VelmConfigureR"));
    EXPECT_LT(place("VersionControlR"), place("UtilityDLL"));
    EXPECT_LT(place("Framework"), place("UtilityDLL"));
}

TEST(LibraryVersion, IsWrittenWithAPartForEachByte) {
    EXPECT_EQ("5.0.0.20", VersionText(0x05000014));
    EXPECT_EQ("0.0.0.0", VersionText(0));
    EXPECT_EQ("255.254.253.252", VersionText(0xFFFEFDFC));
}

} // namespace
