// SPDX-License-Identifier: MIT
#include "VersionControl/VersionControl.h"

#include "VelmBase/LibraryVersion.h"

#include <gmock/gmock.h>

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::Each;
using ::testing::Field;

namespace {

constexpr unsigned int kSuite = 0x05000014;
constexpr char kStamp[] = "Jul 15 2021 13:15:33";

TEST(CheckDllVersion, SaysYesToTheVersionOfAllThatIsLoadedAndToNoOther) {
    EXPECT_TRUE(CheckDllVersion(kSuite, "UtilityDLL/UtilityDLL", kStamp));
    for (const unsigned int other : {0u, 0x05000013u, 0x05000015u, 0x15000014u, 0xFFFFFFFFu})
        EXPECT_FALSE(CheckDllVersion(other, "UtilityDLL/UtilityDLL", kStamp)) << other;
}

TEST(CheckDllVersion, WhoAsksDecidesNothing) {
    EXPECT_TRUE(CheckDllVersion(kSuite, nullptr, nullptr));
    EXPECT_TRUE(CheckDllVersion(kSuite, "", "at noon"));
}

TEST(CheckDllVersion, SaysNoAsLongAsALibraryOfAnotherVersionIsLoaded) {
    {
        const LibraryVersion same("Same", kSuite);
        EXPECT_TRUE(CheckDllVersion(kSuite, "a", kStamp));
        const LibraryVersion odd("Odd", 0x05000015);
        EXPECT_FALSE(CheckDllVersion(kSuite, "a", kStamp));
        EXPECT_FALSE(CheckDllVersion(0x05000015, "a", kStamp)); // the others are not of that version
    }
    EXPECT_TRUE(CheckDllVersion(kSuite, "a", kStamp));
}

TEST(CheckLibraries, NamesWhatDoesNotMatch) {
    EXPECT_THAT(CheckLibraries(kSuite), AllOf(Contains(Field(&CheckedLibrary::name, "VersionControlR")),
                                              Each(AllOf(Field(&CheckedLibrary::version, kSuite),
                                                         Field(&CheckedLibrary::matches, true)))));
    const LibraryVersion odd("Odd", 0x05000015);
    EXPECT_THAT(CheckLibraries(kSuite), Contains(AllOf(Field(&CheckedLibrary::name, "Odd"),
                                                       Field(&CheckedLibrary::version, 0x05000015),
                                                       Field(&CheckedLibrary::matches, false)))
                                            .Times(1));
    EXPECT_THAT(CheckLibraries(kSuite), Contains(Field(&CheckedLibrary::matches, false)).Times(1));
}

} // namespace
