// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/windows/Dialog.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/EventLoop.h"

#include <functional>
#include <gtest/gtest.h>
#include <utility>

/// The numbers of a TestDialog's controls.
enum TestControl : UINT { FIELD = 100, OTHER_FIELD, PRESS, CHECK, CHOICE, LIST, COLOR, WIDTH, WIDTH_ARROWS };

/// A dialog whose handlers are a test's.
class TestDialog : public CDialog {
public:
    /// With what stands above the buttons OK and Cancel.
    explicit TestDialog(std::vector<DialogItem> items = {}, CWnd* parent = nullptr)
        : CDialog(L"Test", Content(std::move(items)), parent) {}

    std::function<void()> onInit, onPress, onListChange, onDoubleClick, onFieldChange, onChoice, onStep;
    std::function<bool()> onOK;                     // false keeps the dialog open
    std::function<bool()> onCancel;                 // the same
    std::function<void(CDataExchange&)> onExchange; // DDX_...

    using CDialog::OnOK;

    const AFX_MSGMAP* GetMessageMap() const override { return GetThisMessageMap(); }
    static const AFX_MSGMAP* GetThisMessageMap() {
        static const AFX_MSGMAP_ENTRY entries[] = {
            {WM_COMMAND, BN_CLICKED, PRESS, Handler(&TestDialog::Press)},
            {WM_COMMAND, LVN_ITEMCHANGED, LIST, Handler(&TestDialog::ListChange)},
            {WM_COMMAND, NM_DBLCLK, LIST, Handler(&TestDialog::DoubleClick)},
            {WM_COMMAND, EN_CHANGE, FIELD, Handler(&TestDialog::FieldChange)},
            {WM_COMMAND, CBN_SELCHANGE, CHOICE, Handler(&TestDialog::Choice)},
            {WM_COMMAND, UDN_DELTAPOS, WIDTH_ARROWS, Handler(&TestDialog::Step)},
            {}};
        static const AFX_MSGMAP map = {&CDialog::GetThisMessageMap, entries};
        return &map;
    }

protected:
    void OnInitDialog() override {
        CDialog::OnInitDialog();
        Call(onInit);
    }
    void OnOK() override {
        if (!onOK || onOK()) CDialog::OnOK();
    }
    void OnCancel() override {
        if (!onCancel || onCancel()) CDialog::OnCancel();
    }
    void DoDataExchange(CDataExchange* exchange) override {
        if (onExchange) onExchange(*exchange);
    }

private:
    static DialogItem Content(std::vector<DialogItem> items) {
        items.push_back({DialogItem::ROW,
                         0,
                         {},
                         {{DialogItem::SPACE},
                          {DialogItem::DEFAULT_BUTTON, IDOK, L"OK"},
                          {DialogItem::PUSH_BUTTON, IDCANCEL, L"Cancel"}}});
        return {DialogItem::COLUMN, 0, {}, std::move(items)};
    }

    static void Call(const std::function<void()>& handler) {
        const auto call = handler; // it may delete this dialog
        if (call) call();
    }
    void Press() { Call(onPress); }
    void ListChange() { Call(onListChange); }
    void DoubleClick() { Call(onDoubleClick); }
    void FieldChange() { Call(onFieldChange); }
    void Choice() { Call(onChoice); }
    void Step() { Call(onStep); }
};

/// A label with what it names.
inline DialogItem Form(std::vector<DialogItem> pairs) { return {DialogItem::FORM, 0, {}, std::move(pairs)}; }
inline DialogItem Label(std::wstring text) { return {DialogItem::LABEL, 0, std::move(text)}; }
inline DialogItem Button(UINT id, std::wstring text) {
    return {DialogItem::PUSH_BUTTON, id, std::move(text)};
}

/// What every test of dialogs has: a host with an event loop, and somebody who uses the dialogs.
class DialogTest : public ::testing::Test {
protected:
    EventLoop m_loop;
    DialogDriver m_driver;
};
