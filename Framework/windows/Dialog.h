// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/windows/Control.h"
#include "Framework/windows/DialogItem.h"
#include "Framework/windows/WindowTypes.h"

#include <memory>

class CDialog;
class NativeDialog;

/// One run through a dialog's controls, in one of two directions.
class FRAMEWORK_API CDataExchange {
public:
    /// A run from the controls of `dialog` into its data (`save`), or the other way.
    CDataExchange(CDialog& dialog, bool save) : m_pDlgWnd(&dialog), m_bSaveAndValidate(save) {}

    /// Says at the edit field what is wrong with its text and gives it the keyboard; of another control,
    /// nothing is said. Only the first of a run counts; values of others are left alone from then on.
    void Fail(UINT id, const CString& message);

    /// Whether a control had what is no value.
    bool HasFailed() const { return m_hasFailed; }

    CDialog* const m_pDlgWnd;      ///< whose controls they are
    const bool m_bSaveAndValidate; ///< from the controls into the data

private:
    bool m_hasFailed = false;
};

/// A modal dialog: the user can use no other window of the program until it is closed.
///
/// Enter presses the push button that has the keyboard, and else the default one. Escape and the window's own
/// button for closing press the one of IDCANCEL. Tab goes through the controls in the order of the items.
///
/// It belongs to one thread, as CWnd. On Linux it needs the module utilitydll/FrameworkWindows.so and a
/// display, or the platform "offscreen". Where there is no QApplication, one is made for the time of the
/// dialog.
class FRAMEWORK_API CDialog : public CWnd {
public:
    /// `content` is a COLUMN. Without a parent it stands for itself; a parent has to be there when it is
    /// shown.
    CDialog(CString caption, DialogItem content, CWnd* parent = nullptr);
    ~CDialog() override;

    /// Shows the dialog until it is closed. Returns what EndDialog() was given, IDOK or IDCANCEL; IDCANCEL as
    /// well when others closed or destroyed it; -1 when it could not be shown, and `whyNot` then says what is
    /// missing and what to do. Dialogs may open dialogs, and may be shown again.
    ///
    /// A handler may delete the dialog; nothing of it is used from then on. An exception that leaves
    /// OnInitDialog() comes out of here, with the dialog closed; those of handlers end there.
    int DoModal(ErrorString* whyNot = nullptr);

    /// Closes it, when the handler that called has returned, and what is open over it. In OnInitDialog() it
    /// is not shown at all. Nothing happens while it is not shown.
    void EndDialog(int result);

    /// The control of that number while the dialog is shown: the class's own after DDX_Control, and otherwise
    /// one that belongs to the dialog. Null for one that there is not, and after the class's own one has
    /// gone.
    CControl* GetDlgItem(UINT id) const;

    /// Has DoDataExchange() read the controls into the class's data (`save`), or put the data into the
    /// controls. False when a control has what is no value; the user was told, and the control has the
    /// keyboard. While the dialog is not shown there is nothing to exchange.
    bool UpdateData(bool save = true);

    const AFX_MSGMAP* GetMessageMap() const override { return GetThisMessageMap(); }
    static const AFX_MSGMAP* GetThisMessageMap(); ///< for maps of derived classes

    /// Shows a message over the dialog, or for itself while that is not shown, until the user closes it:
    /// MB_OK or MB_YESNO, whose default is Yes, with MB_ICONQUESTION, MB_ICONERROR or no icon. The text is
    /// plain, with line breaks and tabs. Returns IDOK, IDYES or IDNO; IDNO also when a question is closed
    /// otherwise, and when nothing can be shown.
    int MessageBoxW(const CString& text, const CString& caption, UINT type);

    /// As DDX_Control(), which calls it.
    void Attach(UINT id, CControl& control);

protected:
    /// Called before the dialog is shown, when its controls are there. The base calls UpdateData(false). A
    /// control that is given the keyboard has it when the dialog is shown; the first one otherwise.
    virtual void OnInitDialog();

    /// The base reads the controls and closes the dialog; it stays when one of them has what is no value.
    virtual void OnOK();

    /// The base closes the dialog; nothing is read.
    virtual void OnCancel();

    /// DDX_... for each control. The base has none.
    virtual void DoDataExchange(CDataExchange* exchange);

private:
    void OnTold(UINT code) override;

    ErrorString Make(NativeWindowOwner& owner, std::unique_ptr<NativeWindow>& window);
    NativeDialog* Dialog() const; // null without a window
    std::unique_ptr<NativeWindow> TakeFrom(UINT id);
    void Give(UINT id, CControl& control, std::unique_ptr<NativeWindow> native);

    struct Shown;
    struct Closing;
    const CString m_caption;
    const DialogItem m_content;
    CWnd* const m_parent;
    std::shared_ptr<Shown> m_shown; // null while it is not
};

/// Has `control` stand for the dialog's control of that number while the dialog is shown, and for no other
/// one. Of another kind than that, it can do what CWnd does. It may go before the dialog.
FRAMEWORK_API void DDX_Control(CDataExchange* exchange, UINT id, CControl& control);

/// The value of an edit field with any text, of a check box, and the selected position of a drop-down list.
/// `value` is left alone when there is no such control, and once one of the run has failed.
/// @{
FRAMEWORK_API void DDX_Text(CDataExchange* exchange, UINT id, CString& value);
FRAMEWORK_API void DDX_Check(CDataExchange* exchange, UINT id, bool& value);
FRAMEWORK_API void DDX_CBIndex(CDataExchange* exchange, UINT id, int& value);
/// @}
