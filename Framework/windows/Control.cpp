#include "Framework/windows/Control.h"

#include "Framework/windows/private/NativeControls.h"

ErrorString CControl::CreateOn(CWnd* parent, UINT id, const MakeControl& make) {
    ErrorString made = CreateBy([&](NativeWindowOwner& owner, std::unique_ptr<NativeWindow>& control) {
        NativeToolkit* toolkit = nullptr;
        ErrorString opened = OpenToolkit(toolkit);
        return opened ? make(*toolkit, owner, parent ? parent->Window() : nullptr, control) : opened;
    });
    if (!made) return made;
    m_parent = parent;
    m_id = id;
    return made;
}

void CControl::OnTold(UINT code) {
    CWnd* const parent =
        m_parent; // the control's own handler may delete it, and then says that it did something
    const UINT id = m_id;
    if (OnCmdMsg(WM_REFLECTED_COMMAND, code, 0) || !parent) return;
    parent->OnCmdMsg(WM_COMMAND, code, id);
}
