// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

/// A dialog that is open, message boxes and the system's dialogs included, as a user has it: controls go by
/// what stands on them or before them, without mnemonics and colons ("Add", "Line width"); a list by its name
/// for screen readers. Asking for a control that is not there fails the test.
class OpenDialog {
public:
    virtual ~OpenDialog() = default;

    virtual std::wstring Title() const = 0;
    virtual std::wstring Message() const = 0; ///< of a message box; empty for others

    /// Presses and releases a key, with those that are held ("Alt+A", "Shift+Down", "Enter", "Escape",
    /// "Tab"), in the control that has the keyboard.
    virtual void Key(const std::string& key) = 0;
    virtual void
    Type(const std::wstring& text) = 0; ///< character by character, in the control with the keyboard

    virtual void Click(const std::wstring& control) = 0;
    virtual void Focus(const std::wstring& control) = 0;
    virtual bool HasFocus(const std::wstring& control) const = 0;
    virtual bool IsEnabled(const std::wstring& control) const = 0;
    virtual bool IsChecked(const std::wstring& control) const = 0;
    virtual std::wstring
    Text(const std::wstring& control) const = 0; ///< content of a field, choice of a list
    virtual void SetText(const std::wstring& control, const std::wstring& text) = 0; ///< as if it was typed
    virtual void Choose(const std::wstring& control, int position) = 0;
    virtual std::wstring Hint() const = 0; ///< what is said at a field; empty when nothing is

    // The dialog's list. Rows count from 0.
    virtual std::vector<std::wstring> Columns() const = 0;
    virtual std::vector<std::vector<std::wstring>> Rows() const = 0;
    virtual std::vector<int> SelectedRows() const = 0;
    virtual void ClickRow(int row, const std::string& held = {}) = 0; ///< "Ctrl", "Shift"
    virtual void DoubleClickRow(int row) = 0;
    virtual std::uint32_t SwatchOfRow(int row) const = 0; ///< the middle pixel's colour reference

    virtual void Accept() = 0;                            ///< the system's dialogs: takes what was entered
    virtual void EnterFile(const std::wstring& path) = 0; ///< a file dialog: its field
    virtual void EnterColor(std::uint32_t color) = 0;     ///< a colour dialog

    virtual std::wstring Folder() const = 0;               ///< a file dialog: what it shows
    virtual std::vector<std::wstring> Filters() const = 0; ///< a file dialog: the kinds of files
    virtual bool IsQuestion() const = 0;                   ///< a message box: whether its icon asks
    virtual std::vector<std::wstring> Buttons() const = 0; ///< what stands on them, in the order of Tab
    virtual int ColumnWidth(int column) const = 0;         ///< of the dialog's list, in pixels
    virtual bool IsRowVisible(int row) const = 0;          ///< without scrolling
    virtual std::vector<std::wstring> Groups() const = 0;  ///< the titles of its frames
    /// Width and height in pixels of the colour that is in the middle of the row's swatch.
    virtual std::pair<int, int> SwatchSizeOfRow(int row) const = 0;
};

/// Uses the dialogs that the program under test opens. What a script does may open others, which have the
/// next scripts; the script goes on when they are closed.
///
/// When a dialog opens for which there is no script, or one is still open when its script has ended, the test
/// fails and the dialog is closed.
class DialogDriver {
public:
    using Script = std::function<void(OpenDialog&)>;

    DialogDriver();
    ~DialogDriver(); ///< fails the test when scripts are left
    DialogDriver(const DialogDriver&) = delete;
    DialogDriver& operator=(const DialogDriver&) = delete;

    /// What is done in the next dialog that opens and has no script yet.
    DialogDriver& Then(Script script);

private:
    struct Native;
    std::unique_ptr<Native> m_native;
};
