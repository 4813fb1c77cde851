// SPDX-License-Identifier: MIT
#include "Framework/windows/Dialog.h"

#include "Framework/windows/Button.h"
#include "Framework/windows/ColorWell.h"
#include "Framework/windows/ComboBox.h"
#include "Framework/windows/Edit.h"
#include "Framework/windows/ListCtrl.h"
#include "Framework/windows/SpinButtonCtrl.h"
#include "Framework/windows/private/NativeControls.h"

#include <map>
#include <utility>
#include <vector>

namespace {

// Calls for each control with its number and what stands for it.
void ForEachControl(const DialogItem& item, const auto& call) {
    for (const DialogItem& part : item.items) ForEachControl(part, call);
    switch (item.kind) {
    case DialogItem::COLUMN:
    case DialogItem::ROW:
    case DialogItem::FORM:
    case DialogItem::GROUP:
    case DialogItem::SPACE:
    case DialogItem::LABEL:
        return;
    case DialogItem::SPIN_EDIT:
        call(item.id + 1, std::make_unique<CSpinButtonCtrl>());
        [[fallthrough]];
    case DialogItem::EDIT:
        return call(item.id, std::make_unique<CEdit>());
    case DialogItem::PUSH_BUTTON:
    case DialogItem::DEFAULT_BUTTON:
    case DialogItem::CHECK_BOX:
        return call(item.id, std::make_unique<CButton>());
    case DialogItem::DROP_DOWN_LIST:
        return call(item.id, std::make_unique<CComboBox>());
    case DialogItem::LIST_VIEW:
        return call(item.id, std::make_unique<CListCtrl>());
    case DialogItem::COLOR_WELL:
        return call(item.id, std::make_unique<CColorWell>());
    }
}

} // namespace

// While it is shown.
struct CDialog::Shown {
    std::map<UINT, std::unique_ptr<CControl>> own;
    std::map<UINT, std::shared_ptr<MessageTarget>>
        controls; // own ones, and the class's that stand for theirs
};

// Closes the dialog, whichever way a run ends, unless a handler has deleted it.
struct CDialog::Closing {
    CDialog& dialog;
    const std::weak_ptr<Shown> shown;

    ~Closing() {
        if (shown.expired()) return;
        for (const auto& [id, native] : shown.lock()->controls)
            if (CControl* const control = dialog.GetDlgItem(id)) control->DestroyWindow();
        dialog.m_shown.reset();
        dialog.DestroyWindow();
    }
};

CDialog::CDialog(CString caption, DialogItem content, CWnd* parent)
    : m_caption(std::move(caption)), m_content(std::move(content)), m_parent(parent) {}

CDialog::~CDialog() = default;

int CDialog::DoModal(ErrorString* whyNot) {
    ErrorString made = L"The dialog is shown already";
    if (!m_shown) {
        DestroyWindow(); // of Create(), which made no dialog
        made = CreateBy([this](NativeWindowOwner& owner, std::unique_ptr<NativeWindow>& window) {
            return Make(owner, window);
        });
    }
    if (!made) {
        if (whyNot) *whyNot = std::move(made);
        return -1;
    }
    m_shown = std::make_shared<Shown>();
    const Closing closing = {*this, m_shown};
    ForEachControl(m_content, [this](UINT id, std::unique_ptr<CControl> control) {
        Attach(id, *control);
        m_shown->own[id] = std::move(control);
    });
    OnInitDialog();
    NativeDialog* const dialog = closing.shown.expired() ? nullptr : Dialog();
    return dialog ? dialog->Run() : IDCANCEL;
}

ErrorString CDialog::Make(NativeWindowOwner& owner, std::unique_ptr<NativeWindow>& window) {
    NativeToolkit* toolkit = nullptr;
    if (ErrorString opened = OpenToolkit(toolkit); !opened) return opened;
    std::unique_ptr<NativeDialog> dialog;
    ErrorString made = toolkit->MakeDialog(owner, m_caption.String(), m_content,
                                           m_parent ? m_parent->Window() : nullptr, dialog);
    window = std::move(dialog);
    return made;
}

NativeDialog* CDialog::Dialog() const { return dynamic_cast<NativeDialog*>(Window()); }

void CDialog::EndDialog(int result) {
    if (NativeDialog* const dialog = Dialog()) dialog->End(result);
}

void CDialog::Attach(UINT id, CControl& control) {
    if (GetDlgItem(id) == &control) return;
    std::unique_ptr<NativeWindow> native = TakeFrom(id);
    if (!native) return;
    if (control.GetParent() == this && GetDlgItem(control.m_id) == &control) {
        // It stands for another one, for which the dialog's own does from now on.
        const auto own = m_shown->own.find(control.m_id);
        if (own != m_shown->own.end() && own->second.get() != &control)
            Give(own->first, *own->second, control.Release());
    }
    Give(id, control, std::move(native));
}

// What stands for that control of the dialog, from whoever has it.
std::unique_ptr<NativeWindow> CDialog::TakeFrom(UINT id) {
    if (CControl* const before = GetDlgItem(id)) return before->Release();
    NativeDialog* const dialog = Dialog();
    return dialog ? dialog->Take(id) : nullptr;
}

void CDialog::Give(UINT id, CControl& control, std::unique_ptr<NativeWindow> native) {
    control.DestroyWindow();
    (void)control.CreateBy([&](NativeWindowOwner& owner, std::unique_ptr<NativeWindow>& window) {
        native->SetOwner(owner);
        window = std::move(native);
        return ErrorString();
    });
    control.m_parent = Target();
    control.m_id = id;
    m_shown->controls[id] = control.Target();
}

CControl* CDialog::GetDlgItem(UINT id) const {
    if (!m_shown) return nullptr;
    const auto found = m_shown->controls.find(id);
    auto* const control =
        found == m_shown->controls.end() ? nullptr : static_cast<CControl*>(Of(found->second));
    return control && control->GetParent() == this && control->m_id == id ? control : nullptr;
}

int CDialog::MessageBoxW(const CString& text, const CString& caption, UINT type) {
    NativeToolkit* toolkit = nullptr;
    if (!OpenToolkit(toolkit)) return IDNO;
    return toolkit->ShowMessage(text.String(), caption.String(), type, Window());
}

bool CDialog::UpdateData(bool save) {
    CDataExchange exchange(*this, save);
    DoDataExchange(&exchange);
    return !exchange.HasFailed();
}

const AFX_MSGMAP* CDialog::GetThisMessageMap() {
    static const AFX_MSGMAP_ENTRY entries[] = {
        {WM_COMMAND, BN_CLICKED, IDOK, Handler(&CDialog::OnOK)},
        {WM_COMMAND, BN_CLICKED, IDCANCEL, Handler(&CDialog::OnCancel)},
        {}};
    static const AFX_MSGMAP map = {&CWnd::GetThisMessageMap, entries};
    return &map;
}

void CDialog::OnInitDialog() { UpdateData(false); }

void CDialog::OnOK() {
    if (UpdateData()) EndDialog(IDOK);
}

void CDialog::OnCancel() { EndDialog(IDCANCEL); }

void CDialog::DoDataExchange(CDataExchange*) {}

void CDialog::OnTold(UINT code) {
    if (code == IDCANCEL) OnCmdMsg(WM_COMMAND, BN_CLICKED, IDCANCEL);
}

void CDataExchange::Fail(UINT id, const CString& message) {
    if (m_hasFailed) return;
    m_hasFailed = true;
    auto* const edit = dynamic_cast<CEdit*>(m_pDlgWnd->GetDlgItem(id));
    if (!edit) return;
    edit->FocusAndSelect();
    edit->ShowBalloonTip(message);
}

void DDX_Control(CDataExchange* exchange, UINT id, CControl& control) {
    exchange->m_pDlgWnd->Attach(id, control);
}

void DDX_Text(CDataExchange* exchange, UINT id, CString& value) {
    CControl* const edit = exchange->m_pDlgWnd->GetDlgItem(id);
    if (!edit || exchange->HasFailed()) return;
    if (exchange->m_bSaveAndValidate)
        value = edit->GetWindowTextW();
    else
        edit->SetWindowTextW(value);
}

void DDX_Check(CDataExchange* exchange, UINT id, bool& value) {
    auto* const box = dynamic_cast<CButton*>(exchange->m_pDlgWnd->GetDlgItem(id));
    if (!box || exchange->HasFailed()) return;
    if (exchange->m_bSaveAndValidate)
        value = box->GetCheck();
    else
        box->SetCheck(value);
}

void DDX_CBIndex(CDataExchange* exchange, UINT id, int& value) {
    auto* const box = dynamic_cast<CComboBox*>(exchange->m_pDlgWnd->GetDlgItem(id));
    if (!box || exchange->HasFailed()) return;
    if (exchange->m_bSaveAndValidate)
        value = box->GetCurSel();
    else
        box->SetCurSel(value);
}
