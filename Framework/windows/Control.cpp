// SPDX-License-Identifier: MIT
#include "Framework/windows/Control.h"

#include "Framework/windows/private/NativeControls.h"

ErrorString CControl::CreateOn(CWnd* parent, UINT id, const MakeControl& make) {
    ErrorString made = CreateBy([&](NativeWindowOwner& owner, std::unique_ptr<NativeWindow>& control) {
        NativeToolkit* toolkit = nullptr;
        ErrorString opened = OpenToolkit(toolkit);
        return opened ? make(*toolkit, owner, parent ? parent->Window() : nullptr, control) : opened;
    });
    if (!made) return made;
    m_parent = parent ? parent->Target() : nullptr;
    m_id = id;
    return made;
}

void CControl::OnTold(UINT code) {
    // The control's own handler may delete it.
    const std::shared_ptr<MessageTarget> target = m_parent;
    const UINT id = m_id;
    if (OnCmdMsg(WM_REFLECTED_COMMAND, code, 0)) return;
    if (CWnd* const parent = Of(target)) parent->OnCmdMsg(WM_COMMAND, code, id);
}
