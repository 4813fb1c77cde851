// SPDX-License-Identifier: MIT
// What a screen reader says of the dialogs: each control that the keyboard reaches has a role, and a name or
// a label, in the order of Tab.

#include "UtilityDLL/contours/ContourEditor.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/EventLoop.h"

#include <QAccessible>
#include <QApplication>
#include <QWidget>
#include <gmock/gmock.h>

namespace {

struct Said {
    QAccessible::Role role;
    std::string name;
    bool operator==(const Said& other) const = default;
    friend void PrintTo(const Said& said, std::ostream* stream) {
        *stream << qAccessibleRoleString(said.role) << " \"" << said.name << '"';
    }
};

// The name of its label, where it has one, and its own otherwise.
std::string NameOf(const QAccessibleInterface& control) {
    for (const auto& [label, relation] : control.relations(QAccessible::Label)) {
        const bool isField = label->role() == QAccessible::StaticText; // a group is one for its buttons, too
        if (isField) return label->text(QAccessible::Name).toStdString();
    }
    return control.text(QAccessible::Name).toStdString();
}

// The controls of the open dialog that Tab goes through, disabled ones included.
std::vector<Said> Controls() {
    std::vector<Said> controls;
    QWidget* const dialog = QApplication::activeModalWidget();
    for (QWidget* widget = dialog->nextInFocusChain(); widget != dialog;
         widget = widget->nextInFocusChain()) {
        const bool isPart = widget->focusProxy() || qobject_cast<QWidget*>(widget->parent())->focusProxy();
        if (!(widget->focusPolicy() & Qt::TabFocus) || !widget->isVisible() || isPart) continue;
        const QAccessibleInterface& control = *QAccessible::queryAccessibleInterface(widget);
        EXPECT_EQ(widget->isEnabled(), !control.state().disabled);
        EXPECT_TRUE(!widget->isEnabled() || control.state().focusable);
        controls.push_back({control.role(), NameOf(control)});
    }
    return controls;
}

class ContourEditorAccessibilityTest : public ::testing::Test {
protected:
    void ExpectControls(CDialog& dialog, const char* caption, const std::vector<Said>& expected) {
        m_driver.Then([&](OpenDialog& open) {
            const QAccessibleInterface& window =
                *QAccessible::queryAccessibleInterface(QApplication::activeModalWidget());
            EXPECT_EQ(QAccessible::Dialog, window.role());
            EXPECT_EQ(caption, window.text(QAccessible::Name).toStdString());
            EXPECT_EQ(expected, Controls());
            open.Key("Escape");
        });
        EXPECT_EQ(IDCANCEL, dialog.DoModal());
    }

    EventLoop m_loop;
    DialogDriver m_driver;
};

} // namespace

TEST_F(ContourEditorAccessibilityTest, EditorSaysWhatItsControlsAre) {
    CContourEditor editor(CString{});
    ExpectControls(editor, "Contours",
                   {{QAccessible::Tree, "Contours"},
                    {QAccessible::PushButton, "Add"},
                    {QAccessible::PushButton, "Remove"},
                    {QAccessible::PushButton, "Edit"},
                    {QAccessible::PushButton, "Range"},
                    {QAccessible::PushButton, "Color Table"},
                    {QAccessible::PushButton, "OK"},
                    {QAccessible::PushButton, "Cancel"}});
}

TEST_F(ContourEditorAccessibilityTest, PropertiesSayWhatTheirFieldsAre) {
    CEditContourDlg properties({});
    ExpectControls(properties, "Contour Properties",
                   {{QAccessible::EditableText, "Level:"},
                    {QAccessible::PushButton, "Color:"},
                    {QAccessible::ComboBox, "Line style:"},
                    {QAccessible::SpinBox, "Line width:"},
                    {QAccessible::CheckBox, "Show labels:"},
                    {QAccessible::PushButton, "OK"},
                    {QAccessible::PushButton, "Cancel"}});
}

TEST_F(ContourEditorAccessibilityTest, RangeSaysWhatItsFieldsAre) {
    CContourGenerationDlg range;
    ExpectControls(range, "Generate Contours",
                   {{QAccessible::EditableText, "Lowest level:"},
                    {QAccessible::EditableText, "Highest level:"},
                    {QAccessible::EditableText, "Interval:"},
                    {QAccessible::PushButton, "OK"},
                    {QAccessible::PushButton, "Cancel"}});
}

TEST_F(ContourEditorAccessibilityTest, HintIsSaidWithItsField) {
    CEditContourDlg properties({});
    m_driver.Then([](OpenDialog& open) {
        const auto description = [] {
            return QAccessible::queryAccessibleInterface(QApplication::focusWidget())
                ->text(QAccessible::Description)
                .toStdString();
        };
        EXPECT_EQ("", description());
        open.SetText(L"Level", L"2,5");
        open.Key("Enter");
        EXPECT_THAT(description(), ::testing::HasSubstr("behind a point"));
        open.SetText(L"Level", L"2.5");
        EXPECT_EQ("", description());
        open.Key("Escape");
    });
    EXPECT_EQ(IDCANCEL, properties.DoModal());
}
