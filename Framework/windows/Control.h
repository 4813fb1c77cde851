// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/windows/Wnd.h"

class NativeToolkit;

/// A part of a dialog, or one that a host places into its own window.
///
/// What the user does to it is told to itself first, by the entries of WM_REFLECTED_COMMAND in its message
/// map, and, unless one of these is for it, to its parent by those of WM_COMMAND. What the program does to it
/// is told as well where a class says so.
///
/// Its window goes with that of its parent. Without a window it has nothing, and nothing is done to it.
class FRAMEWORK_API CControl : public CWnd {
public:
    UINT GetDlgCtrlID() const { return m_id; }       ///< its number among the parent's
    CWnd* GetParent() const { return Of(m_parent); } ///< null without one, and when it is gone

protected:
    /// Has the backend make the control, unless it is there already: it then stays as it is, with its parent.
    using MakeControl =
        std::function<ErrorString(NativeToolkit& toolkit, NativeWindowOwner& owner, NativeWindow* parent,
                                  std::unique_ptr<NativeWindow>& control)>;

    /// Makes the control by `make`, with that parent and number. The errors are those of CWnd::Create().
    ErrorString CreateOn(CWnd* parent, UINT id, const MakeControl& make);

private:
    friend class CDialog;
    void OnTold(UINT code) override;

    std::shared_ptr<MessageTarget> m_parent;
    UINT m_id = 0;
};
