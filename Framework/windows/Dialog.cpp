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
    NativeDialog& dialog;
    std::map<UINT, std::unique_ptr<CControl>> own;
    std::map<UINT, CControl*> controls; // own ones, and those that members of the class stand for

    explicit Shown(NativeDialog& native) : dialog(native) {}
    ~Shown() {
        for (const auto& [id, control] : controls) control->DestroyWindow();
    }
    Shown(const Shown&) = delete;
    Shown& operator=(const Shown&) = delete;
};

CDialog::CDialog(CString caption, DialogItem content, CWnd* parent)
    : m_caption(std::move(caption)), m_content(std::move(content)), m_parent(parent) {}

CDialog::~CDialog() = default;

int CDialog::DoModal(ErrorString* whyNot) {
    NativeDialog* dialog = nullptr;
    ErrorString made = m_shown
                           ? ErrorString(L"The dialog is shown already")
                           : CreateBy([&](NativeWindowOwner& owner, std::unique_ptr<NativeWindow>& window) {
                                 return Make(owner, window, dialog);
                             });
    if (!made) {
        if (whyNot) *whyNot = std::move(made);
        return -1;
    }
    m_shown = std::make_unique<Shown>(*dialog);
    ForEachControl(m_content, [&](UINT id, std::unique_ptr<CControl> control) {
        Attach(id, *control);
        m_shown->own[id] = std::move(control);
    });
    OnInitDialog();
    const int result = dialog->Run();
    m_shown.reset();
    DestroyWindow();
    return result;
}

ErrorString CDialog::Make(NativeWindowOwner& owner, std::unique_ptr<NativeWindow>& window,
                          NativeDialog*& dialog) {
    NativeToolkit* toolkit = nullptr;
    if (ErrorString opened = OpenToolkit(toolkit); !opened) return opened;
    std::unique_ptr<NativeDialog> native;
    ErrorString made = toolkit->MakeDialog(owner, m_caption.String(), m_content,
                                           m_parent ? m_parent->Window() : nullptr, native);
    dialog = native.get();
    window = std::move(native);
    return made;
}

void CDialog::EndDialog(int result) {
    if (m_shown) m_shown->dialog.End(result);
}

void CDialog::Attach(UINT id, CControl& control) {
    if (!m_shown) return;
    const auto before = m_shown->controls.find(id);
    if (before != m_shown->controls.end() && before->second == &control) return;
    // The dialog's own hands over what it stood for.
    std::unique_ptr<NativeWindow> native =
        before == m_shown->controls.end() ? m_shown->dialog.Take(id) : before->second->Release();
    if (!native) return;
    control.DestroyWindow();
    (void)control.CreateBy([&](NativeWindowOwner& owner, std::unique_ptr<NativeWindow>& window) {
        native->SetOwner(owner);
        window = std::move(native);
        return ErrorString();
    });
    control.m_parent = this;
    control.m_id = id;
    m_shown->controls[id] = &control;
}

CControl* CDialog::GetDlgItem(UINT id) const {
    if (!m_shown) return nullptr;
    const auto found = m_shown->controls.find(id);
    return found == m_shown->controls.end() ? nullptr : found->second;
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
