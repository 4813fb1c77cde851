// SPDX-License-Identifier: MIT
#include "Framework/system/ExtensionModule.h"

#include "UtilityDLL/module/UtilityDLL.h"
#include "VelmBase/Module.h"

#include <gmock/gmock.h>

using ::testing::Contains;

namespace {

int handleA, handleB;

std::vector<void*> With(std::vector<void*> first, const std::vector<void*>& then) {
    first.insert(first.end(), then.begin(), then.end());
    return first;
}

TEST(ExtensionModule, IsInTheListUntilItIsTerminatedAndTheLatestComesFirst) {
    const std::vector<void*> before = CDynLinkLibrary::Modules();
    AFX_EXTENSION_MODULE a;
    AFX_EXTENSION_MODULE b;
    EXPECT_TRUE(AfxInitExtensionModule(a, &handleA));
    EXPECT_TRUE(a.bInitialized);
    EXPECT_EQ(&handleA, a.hModule);
    EXPECT_EQ(before, CDynLinkLibrary::Modules()); // the entry puts it there
    new CDynLinkLibrary(a);
    EXPECT_TRUE(AfxInitExtensionModule(b, &handleB));
    new CDynLinkLibrary(b);
    EXPECT_EQ(With({&handleB, &handleA}, before), CDynLinkLibrary::Modules());
    AfxTermExtensionModule(a);
    EXPECT_FALSE(a.bInitialized);
    EXPECT_EQ(nullptr, a.hModule);
    EXPECT_EQ(With({&handleB}, before), CDynLinkLibrary::Modules());
    AfxTermExtensionModule(a); // a second time is harmless
    AfxTermExtensionModule(b);
    EXPECT_EQ(before, CDynLinkLibrary::Modules());
}

TEST(ExtensionModule, ANullHandleIsRefused) {
    AFX_EXTENSION_MODULE record;
    EXPECT_FALSE(AfxInitExtensionModule(record, nullptr));
    EXPECT_FALSE(record.bInitialized);
}

TEST(ExtensionModule, ARecordThatIsFilledStaysAsItIs) {
    AFX_EXTENSION_MODULE record;
    EXPECT_TRUE(AfxInitExtensionModule(record, &handleA));
    EXPECT_TRUE(AfxInitExtensionModule(record, &handleB));
    EXPECT_EQ(&handleA, record.hModule);
}

TEST(ExtensionModule, UtilityDLLIsInTheList) {
    EXPECT_TRUE(UtilityDLLStartUp());
    EXPECT_THAT(CDynLinkLibrary::Modules(), Contains(ModuleAt(reinterpret_cast<void*>(&UtilityDLLStartUp))));
}

} // namespace
