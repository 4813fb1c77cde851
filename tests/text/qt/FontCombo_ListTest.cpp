// SPDX-License-Identifier: MIT
// The list of faces as the user has it.

#include "UtilityDLL/text/FontCombo.h"
#include "tests/support/EventLoop.h"

#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QFontDatabase>
#include <QFormLayout>
#include <QTest>
#include <algorithm>
#include <gtest/gtest.h>
#include <set>
#include <vector>

namespace {

struct Shown {
    EventLoop loop;
    QWidget host;
    FontCombo combo;

    Shown() {
        EXPECT_TRUE(combo.Create(CBS_SORT));
        combo.FillCombo();
        (new QFormLayout(&host))->addRow("&Face:", &Widget());
        host.show();
        host.activateWindow(); // without a window manager nobody else does
        EXPECT_TRUE(QTest::qWaitForWindowActive(&host));
    }

    QWidget& Widget() { return *static_cast<QWidget*>(combo.NativeHandle()); }
};

} // namespace

TEST(FontCombo_List, HasTheScalableFacesThatTheToolkitFinds) {
    Shown shown;
    std::set<QString> faces;
    for (int i = 0; i < shown.combo.GetCount(); ++i)
        faces.insert(QString::fromStdWString(shown.combo.GetLBText(i).String()));
    int count = 0;
    for (const QString& family : QFontDatabase::families()) {
        const bool isAlias = family == "Serif" || family == "Sans Serif" || family == "Monospace";
        if (isAlias || !QFontDatabase::isSmoothlyScalable(family)) continue;
        ++count;
        // With its foundry where two have faces of that name.
        EXPECT_EQ(1U, faces.count(family.section(" [", 0, 0))) << family.toStdString();
    }
    EXPECT_LT(0, count);
}

TEST(FontCombo_List, LettersArrowsAndMnemonicWork) {
    Shown shown;
    QTest::keyClick(&shown.host, Qt::Key_F, Qt::AltModifier);
    EXPECT_TRUE(shown.Widget().hasFocus());
    QTest::keyClicks(&shown.Widget(), "liber");
    EXPECT_EQ(L"Liberation Mono", shown.combo.GetLBText(shown.combo.GetCurSel()).String());
    QTest::keyClick(&shown.Widget(), Qt::Key_Down);
    EXPECT_EQ(L"Liberation Sans", shown.combo.GetLBText(shown.combo.GetCurSel()).String());
    QTest::keyClick(&shown.Widget(), Qt::Key_Home);
    EXPECT_EQ(0, shown.combo.GetCurSel());
    QTest::keyClick(&shown.Widget(), Qt::Key_End);
    EXPECT_EQ(shown.combo.GetCount() - 1, shown.combo.GetCurSel());
}

TEST(FontCombo_List, HostHearsOfChoicesByItsClassAndByQt) {
    struct HostsCombo : FontCombo {
        std::vector<int> chosen;
        void OnChosen() { chosen.push_back(GetCurSel()); }
        const AFX_MSGMAP* GetMessageMap() const override {
            static const AFX_MSGMAP_ENTRY entries[] = {
                {WM_REFLECTED_COMMAND, CBN_SELCHANGE, 0, Handler(&HostsCombo::OnChosen)}, {}};
            static const AFX_MSGMAP map = {&FontCombo::GetThisMessageMap, entries};
            return &map;
        }
    };
    EventLoop loop;
    HostsCombo combo;
    ASSERT_TRUE(combo.Create());
    combo.FillCombo();
    auto* const native = qobject_cast<QComboBox*>(static_cast<QWidget*>(combo.NativeHandle()));
    ASSERT_TRUE(native);
    std::vector<int> changes;
    QObject::connect(native, &QComboBox::currentIndexChanged, [&](int index) { changes.push_back(index); });
    QTest::keyClick(native, Qt::Key_Down);
    QTest::keyClick(native, Qt::Key_Down);
    EXPECT_EQ((std::vector{0, 1}), combo.chosen);
    EXPECT_EQ((std::vector{0, 1}), changes);
    combo.SetCurSel(0); // not by the user
    EXPECT_EQ((std::vector{0, 1}), combo.chosen);
    EXPECT_EQ((std::vector{0, 1, 0}), changes);
}

TEST(FontCombo_List, ScreenReadersGetAListWithTheNameOfItsLabel) {
    Shown shown;
    QAccessibleInterface* const list = QAccessible::queryAccessibleInterface(&shown.Widget());
    ASSERT_TRUE(list);
    EXPECT_EQ(QAccessible::ComboBox, list->role());
    EXPECT_EQ("Face:", list->text(QAccessible::Name));
    shown.combo.SetCurSel(0);
    EXPECT_EQ(QString::fromStdWString(shown.combo.GetLBText(0).String()), list->text(QAccessible::Value));
}

TEST(FontCombo_List, ClosedListIsAsWideAsTheLongestFace) {
    Shown shown;
    const QFontMetrics metrics(shown.Widget().font());
    int widest = 0;
    for (int i = 0; i < shown.combo.GetCount(); ++i)
        widest = std::max(
            widest, metrics.horizontalAdvance(QString::fromStdWString(shown.combo.GetLBText(i).String())));
    EXPECT_LE(widest, shown.Widget().sizeHint().width());
}
