// SPDX-License-Identifier: MIT
// Controls in a host's own windows, and as the QApplication and its widgets come and go.

#include "Framework/windows/Button.h"
#include "Framework/windows/ComboBox.h"
#include "tests/support/EventLoop.h"

#include <QApplication>
#include <QTest>
#include <QWidget>
#include <gtest/gtest.h>
#include <memory>

namespace {

QWidget* WidgetOf(const CWnd& window) { return static_cast<QWidget*>(window.NativeHandle()); }

struct Host : CWnd {
    int clicks = 0;
    bool deletesChild = false;
    std::unique_ptr<CButton> child = std::make_unique<CButton>();

    const AFX_MSGMAP* GetMessageMap() const override {
        static const AFX_MSGMAP_ENTRY entries[] = {{WM_COMMAND, BN_CLICKED, 5, Handler(&Host::Clicked)}, {}};
        static const AFX_MSGMAP map = {&CWnd::GetThisMessageMap, entries};
        return &map;
    }

private:
    void Clicked() {
        ++clicks;
        if (deletesChild) child.reset();
    }
};

void Click(const CWnd& window) {
    WidgetOf(window)->show();
    QTest::mouseClick(WidgetOf(window), Qt::LeftButton);
}

} // namespace

TEST(Control_HostApplication, ControlsOutliveApplications) {
    CButton button;
    CComboBox box;
    EXPECT_FALSE(button.Create(L"Button"));
    EXPECT_FALSE(box.Create());
    for (int i = 0; i < 3; ++i) {
        {
            const EventLoop loop;
            EXPECT_TRUE(button.Create(L"Button"));
            EXPECT_TRUE(box.Create());
            box.AddString(L"one");
            EXPECT_EQ(1, box.GetCount());
        }
        EXPECT_EQ(nullptr, button.NativeHandle());
        EXPECT_EQ(0, box.GetCount());
        button.SetWindowTextW(L"nowhere");
        button.Invalidate();
    }
}

TEST(Control_HostApplication, TellsItsParentWhereverAHostPlacedIt) {
    const EventLoop loop;
    QWidget place;
    auto host = std::make_unique<Host>();
    ASSERT_TRUE(host->CWnd::Create());
    const auto button = std::move(host->child);
    ASSERT_TRUE(button->Create(L"Press", host.get(), 5));
    WidgetOf(*button)->setParent(&place);
    place.show();
    Click(*button);
    EXPECT_EQ(1, host->clicks);
    host.reset(); // its window does not hold the button any more
    ASSERT_NE(nullptr, button->NativeHandle());
    Click(*button);
    EXPECT_EQ(nullptr, button->GetParent());
}

TEST(Control_HostApplication, AHostMayDeleteItsWidget) {
    const EventLoop loop;
    CComboBox box;
    ASSERT_TRUE(box.Create());
    box.AddString(L"one");
    delete WidgetOf(box);
    EXPECT_EQ(nullptr, box.NativeHandle());
    EXPECT_EQ(-1, box.AddString(L"two"));
    EXPECT_EQ(-1, box.GetCurSel());
    ASSERT_TRUE(box.Create());
    EXPECT_EQ(0, box.GetCount());
}

TEST(Control_HostApplication, AParentMayDeleteItWhenItIsTold) {
    EventLoop loop;
    Host host;
    ASSERT_TRUE(host.CWnd::Create());
    ASSERT_TRUE(host.child->Create(L"Press", &host, 5));
    host.deletesChild = true;
    const QPointer<QWidget> widget = WidgetOf(*host.child);
    WidgetOf(host)->show();
    Click(*host.child);
    EXPECT_EQ(1, host.clicks);
    EXPECT_EQ(nullptr, host.child);
    loop.RunWhatWaits();
    EXPECT_EQ(nullptr, widget);
}
