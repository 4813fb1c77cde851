// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/windows/DialogItem.h"
#include "Framework/windows/ImageList.h"
#include "Framework/windows/WindowTypes.h"
#include "Framework/windows/private/NativeWindow.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

// The border for controls and dialogs, see NativeWindow.h. What each function does stands at the class of the
// framework that hands over to it.

class NativeButton : public NativeWindow {
public:
    virtual bool IsChecked() const = 0;
    virtual void SetChecked(bool isChecked) = 0;
    virtual void SetSwatch(COLORREF color) = 0; ///< of a COLOR_WELL
};

class NativeEdit : public NativeWindow {
public:
    virtual void FocusAndSelect() = 0;
    virtual void ShowHint(const std::wstring& text) = 0;
};

/// The arrows at an edit field. Tells UDN_DELTAPOS.
class NativeSpin : public NativeWindow {
public:
    virtual int Delta() const = 0; ///< the steps of what it tells, above 0 for up
};

class NativeComboBox : public NativeWindow {
public:
    virtual int Add(const std::wstring& text) = 0;
    virtual int Count() const = 0;
    virtual std::wstring TextAt(int position) const = 0;
    virtual int Selected() const = 0;
    virtual void Select(int position) = 0;
};

class NativeListView : public NativeWindow {
public:
    virtual void InsertColumn(int column, const std::wstring& heading, int width) = 0;
    virtual void SetImages(const CImageList& images) = 0;
    virtual void InsertRow(int row, const std::wstring& text, int image) = 0;
    virtual void SetTextAt(int row, int column, const std::wstring& text) = 0;
    virtual std::wstring TextAt(int row, int column) const = 0;
    virtual int ImageAt(int row) const = 0;
    virtual int Count() const = 0;
    virtual void Remove(int first, int count) = 0;
    virtual void RemoveAll() = 0;
    virtual void SetRedraw(bool redraw) = 0;
    virtual std::vector<int> Selected() const = 0;
    virtual void SelectOnly(int row) = 0;
};

/// A dialog that is made and not shown yet. Escape and closing it are told to its owner as
/// OnCommand(IDCANCEL).
class NativeDialog : public NativeWindow {
public:
    /// The control of that number, of the class that its kind says (NativeSpin for the arrows of a
    /// SPIN_EDIT), which works for nobody yet. The dialog keeps the system's control; null for a number that
    /// there is not, and the second time.
    virtual std::unique_ptr<NativeWindow> Take(unsigned id) = 0;

    /// Shows it until End(); returns what that was given, and IDCANCEL when others closed it. What the owners
    /// of it and of its controls are told meanwhile may destroy this.
    virtual int Run() = 0;
    virtual void End(int result) = 0;
};

struct FileRequest {
    bool isToOpen = true;
    std::wstring extension; ///< without a dot
    std::wstring path;      ///< what is proposed
    DWORD flags = 0;
    std::vector<std::pair<std::wstring, std::wstring>> filters; ///< name, pattern
    std::wstring folder;
};

/// What a platform's backend makes of controls and dialogs. A parent may be null. On failure the text says
/// what is missing, and nothing is made.
class NativeToolkit {
public:
    /// A push button that asks its owner to draw it, by OnDrawItem().
    virtual ErrorString MakeDrawnButton(NativeWindowOwner& owner, const std::wstring& caption,
                                        NativeWindow* parent, std::unique_ptr<NativeWindow>& button) = 0;
    virtual ErrorString MakeComboBox(NativeWindowOwner& owner, bool isSorted, NativeWindow* parent,
                                     std::unique_ptr<NativeWindow>& box) = 0;

    /// Makes the QApplication that is missing; it goes when the dialog has gone and its Run() has returned.
    virtual ErrorString MakeDialog(NativeWindowOwner& owner, const std::wstring& caption,
                                   const DialogItem& content, NativeWindow* parent,
                                   std::unique_ptr<NativeDialog>& dialog) = 0;

    /// False when the user cancelled, or it cannot be shown.
    virtual bool AskForFile(FileRequest& request, NativeWindow* parent) = 0;
    virtual bool AskForColor(COLORREF& color, bool isFullyOpen, NativeWindow* parent) = 0;

    /// Returns IDOK, IDYES or IDNO, IDNO also where it cannot be shown or is closed otherwise.
    virtual int ShowMessage(const std::wstring& text, const std::wstring& caption, UINT type,
                            NativeWindow* parent) = 0;

protected:
    ~NativeToolkit() = default;
};

/// The backend's, which lasts as long as the process; on Linux its module is loaded for the first call.
ErrorString OpenToolkit(NativeToolkit*& toolkit);
