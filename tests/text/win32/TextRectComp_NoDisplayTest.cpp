// SPDX-License-Identifier: MIT
// A system that makes no context of the display, as some services have it: the library's calls for one come
// here.

#include "UtilityDLL/text/TextHeightFactComp.h"
#include "UtilityDLL/text/TextRectComp.h"
#include "tests/support/win32/Import.h"

#include <functional>
#include <gtest/gtest.h>
#include <thread>
#include <windows.h>

namespace {

int refused = 0;

HDC WINAPI CreateNoDC(LPCWSTR, LPCWSTR, LPCWSTR, const DEVMODEW*) {
    ++refused;
    return nullptr;
}

class NoDisplay {
public:
    NoDisplay() : m_usual(ReplaceImport("CreateDCW", reinterpret_cast<ULONG_PTR>(&CreateNoDC))) {
        EXPECT_NE(0u, m_usual);
    }
    ~NoDisplay() { ReplaceImport("CreateDCW", m_usual); }
    NoDisplay(const NoDisplay&) = delete;
    NoDisplay& operator=(const NoDisplay&) = delete;

private:
    ULONG_PTR m_usual;
};

TextInfo Style() {
    TextInfo info;
    info.SetFont(L"Liberation Sans");
    info.SetSize(2.5f);
    return info;
}

// A thread that has measured may keep its context: each test has one that has not.
void InNewThread(const std::function<void()>& measure) { std::thread(measure).join(); }

} // namespace

TEST(TextRectComp_NoDisplay, RectanglesHaveNoSizeUntilThereIsOne) {
    InNewThread([] {
        TextRectComp measure;
        {
            const NoDisplay none;
            const TextRectComp::Rectangle rectangle = measure(Style(), L"abc");
            EXPECT_EQ(0.0, rectangle.Width());
            EXPECT_EQ(0.0, rectangle.Height());
            EXPECT_GT(refused, 0);
        }
        EXPECT_GT(measure(Style(), L"abc").Width(), 0.0);
    });
}

TEST(TextRectComp_NoDisplay, FactorsAreZeroAndTriedAgain) {
    InNewThread([] {
        TextHeightFactComp factors;
        {
            const NoDisplay none;
            EXPECT_EQ(0.0f, factors(Style()));
            EXPECT_EQ(0, factors.GetMetrics(Style()).otmTextMetrics.tmHeight);
        }
        EXPECT_GT(factors(Style()), 1.0f);
        EXPECT_GT(factors.GetMetrics(Style()).otmTextMetrics.tmHeight, 0);
        const NoDisplay none;
        EXPECT_GT(factors(Style()), 1.0f); // it is kept
    });
}
