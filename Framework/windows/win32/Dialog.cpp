// SPDX-License-Identifier: MIT
#include "Framework/windows/win32/private/Dialog.h"

#include "Framework/windows/DpiCor.h"
#include "Framework/windows/win32/private/Controls.h"
#include "Framework/windows/win32/private/Hint.h"
#include "Framework/windows/win32/private/Layout.h"
#include "Framework/windows/win32/private/ListView.h"
#include "Framework/windows/win32/private/Modal.h"
#include "Framework/windows/win32/private/TodaysLook.h"

#include <algorithm>
#include <cwctype>
#include <map>
#include <optional>

namespace {

// The control that is to have the keyboard when the dialog is shown.
constexpr wchar_t kFirstFocus[] = L"UtilityDLL.Focus";

using Controls = std::map<unsigned, std::unique_ptr<NativeWindow>>;

// What a run of a dialog needs to its end, though a handler may delete the dialog in the middle of it.
struct Course {
    std::shared_ptr<WindowLink> link;
    bool hasEnded = false;
    int result = IDCANCEL; // also when others close it

    bool IsOver() const { return hasEnded || !link->Handle() || link->IsLeft(); }
};

// The letter behind a label's "&", in lower case; 0 without one.
wchar_t MnemonicOf(HWND label) {
    const std::wstring text = TextOfWindow(label);
    for (std::size_t i = 0; i + 1 < text.size(); ++i)
        if (text[i] == L'&' && text[++i] != L'&') return static_cast<wchar_t>(std::towlower(text[i]));
    return 0;
}

// The letter of a label presses the button behind it, to which the system gives the keyboard only.
bool PressByLabel(HWND dialog, const MSG& message) {
    if (message.message != WM_SYSCHAR || GetAncestor(message.hwnd, GA_ROOT) != dialog) return false;
    const auto letter = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(message.wParam)));
    for (HWND label = nullptr; (label = FindWindowExW(dialog, label, WC_STATICW, nullptr)) != nullptr;) {
        const HWND button = GetWindow(label, GW_HWNDNEXT);
        if (!button || !IsWindowEnabled(button) || MnemonicOf(label) != letter) continue;
        if ((SendMessageW(button, WM_GETDLGCODE, 0, 0) & DLGC_BUTTON) == 0) return false;
        SendMessageW(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(button), TRUE);
        SendMessageW(button, BM_CLICK, 0, 0);
        return true;
    }
    return false;
}

// Makes what stands in a dialog.
class Builder {
public:
    Builder(HWND dialog, SharedFont font, Controls& controls)
        : m_dialog(dialog), m_font(std::move(font)), m_controls(controls) {}

    Layout::Made Make(const DialogItem& item) const {
        const Layout::Made made = MakeItem(item);
        if (item.isDisabled)
            for (const HWND window : {made.control, made.arrows})
                if (window) EnableWindow(window, FALSE);
        return made;
    }

private:
    Layout::Made MakeItem(const DialogItem& item) const {
        switch (item.kind) {
        case DialogItem::COLUMN:
        case DialogItem::ROW:
        case DialogItem::FORM:
        case DialogItem::SPACE:
            return {};
        case DialogItem::GROUP:
            return {Window(WC_BUTTONW, item, BS_GROUPBOX), nullptr};
        case DialogItem::LABEL:
            return {Window(WC_STATICW, item, SS_LEFT), nullptr};
        case DialogItem::EDIT:
        case DialogItem::SPIN_EDIT:
            return MakeField(item);
        case DialogItem::DROP_DOWN_LIST: {
            const HWND box = Window(WC_COMBOBOXW, item, WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST);
            m_controls[item.id] = std::make_unique<Win32ComboBox>(box, nullptr, false, true);
            return {box, nullptr};
        }
        case DialogItem::LIST_VIEW: {
            const HWND list = Window(WC_LISTVIEWW, item,
                                     WS_TABSTOP | LVS_REPORT | LVS_OWNERDATA | LVS_SHAREIMAGELISTS |
                                         LVS_SHOWSELALWAYS | LVS_NOSORTHEADER);
            m_controls[item.id] = std::make_unique<Win32ListView>(list);
            return {list, nullptr};
        }
        default: {
            const DWORD kind = item.kind == DialogItem::CHECK_BOX        ? BS_AUTOCHECKBOX
                               : item.kind == DialogItem::DEFAULT_BUTTON ? BS_DEFPUSHBUTTON
                                                                         : BS_PUSHBUTTON;
            const HWND button = Window(WC_BUTTONW, item, WS_TABSTOP | kind);
            if (item.kind == DialogItem::DEFAULT_BUTTON) SendMessageW(m_dialog, DM_SETDEFID, item.id, 0);
            auto native = std::make_unique<Win32Button>(button, nullptr, true);
            if (item.kind == DialogItem::COLOR_WELL) native->SetSwatch(0);
            m_controls[item.id] = std::move(native);
            return {button, nullptr};
        }
        }
    }

    Layout::Made MakeField(const DialogItem& item) const {
        const HWND edit = Window(WC_EDITW, item, WS_TABSTOP | ES_AUTOHSCROLL);
        if (item.kind == DialogItem::EDIT) {
            m_controls[item.id] = std::make_unique<Win32Edit>(edit, nullptr);
            return {edit, nullptr};
        }
        const auto steps = std::make_shared<SpinSteps>();
        m_controls[item.id] = std::make_unique<Win32Edit>(edit, steps);
        const HWND arrows = MakeControl(UPDOWN_CLASSW, {}, 0, m_dialog, item.id + 1, m_font);
        m_controls[item.id + 1] = std::make_unique<Win32Spin>(arrows, steps);
        return {edit, arrows};
    }

    HWND Window(const wchar_t* className, const DialogItem& item, DWORD style) const {
        return MakeControl(className, item.text, style, m_dialog, item.id, m_font);
    }

    const HWND m_dialog;
    const SharedFont m_font;
    Controls& m_controls;
};

// The outer size of a window with that inside.
SIZE Outer(HWND dialog, SIZE inside) {
    RECT frame = {0, 0, inside.cx, inside.cy};
    AdjustWindowRectEx(&frame, static_cast<DWORD>(GetWindowLongW(dialog, GWL_STYLE)), FALSE,
                       static_cast<DWORD>(GetWindowLongW(dialog, GWL_EXSTYLE)));
    return {frame.right - frame.left, frame.bottom - frame.top};
}

// In the middle of what it is shown over, or of the screen, and wholly on it.
void Center(HWND dialog, HWND over, SIZE outer) {
    MONITORINFO monitor = {};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromWindow(over ? over : dialog, MONITOR_DEFAULTTOPRIMARY), &monitor);
    const RECT& screen = monitor.rcWork;
    RECT around = screen;
    if (over && !IsIconic(over)) GetWindowRect(over, &around);
    const SIZE size = {std::min(outer.cx, screen.right - screen.left),
                       std::min(outer.cy, screen.bottom - screen.top)};
    const LONG x = (around.left + around.right - size.cx) / 2;
    const LONG y = (around.top + around.bottom - size.cy) / 2;
    SetWindowPos(dialog, nullptr, std::clamp(x, screen.left, screen.right - size.cx),
                 std::clamp(y, screen.top, screen.bottom - size.cy), size.cx, size.cy,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

SIZE InsideOf(HWND dialog) {
    RECT inside = {};
    GetClientRect(dialog, &inside);
    return {inside.right, inside.bottom};
}

class Win32Dialog final : public Win32Window<NativeDialog> {
public:
    Win32Dialog(HWND dialog, NativeWindowOwner& owner, HWND over)
        : Win32Window(dialog, &owner), m_over(over), m_course(std::make_shared<Course>()) {
        m_course->link = Link().shared_from_this();
    }

    void Fill(const DialogItem& content) {
        const SharedFont font = MakeMessageFont();
        Link().Keep(font);
        const Builder builder(Get(), font, m_controls);
        m_layout = std::make_shared<Layout>(content, font,
                                            [&](const DialogItem& item) { return builder.Make(item); });
        if (m_layout->HasList())
            SetWindowLongW(Get(), GWL_STYLE, GetWindowLongW(Get(), GWL_STYLE) | WS_THICKFRAME);
        Link().SetOnMessage([link = &Link(), layout = m_layout](UINT message, WPARAM wParam,
                                                                LPARAM lParam) -> std::optional<LRESULT> {
            const HWND dialog = link->Handle();
            switch (message) {
            case WM_SIZE:
                layout->Place(InsideOf(dialog));
                MoveHints(dialog);
                return 0;
            case WM_MOVE:
                MoveHints(dialog);
                return 0;
            case WM_GETMINMAXINFO: {
                const SIZE smallest = Outer(dialog, layout->Smallest());
                reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {smallest.cx, smallest.cy};
                return 0;
            }
            case WM_DESTROY: // maybe by a message that another thread sent, which does not end the waiting
                PostThreadMessageW(GetCurrentThreadId(), WM_NULL, 0, 0);
                return std::nullopt;
            case WM_CLOSE:
                link->Tell(IDCANCEL);
                return 0;
            case WM_COMMAND: { // of keys for which there is no button, or nobody who is told of it
                const auto button = WindowLink::Of(reinterpret_cast<HWND>(lParam));
                if (LOWORD(wParam) != IDCANCEL || (button && button->HasOwner())) return std::nullopt;
                link->Tell(IDCANCEL);
                return 0;
            }
            default:
                return std::nullopt;
            }
        });
    }

    std::unique_ptr<NativeWindow> Take(unsigned id) override {
        const auto found = m_controls.find(id);
        return found == m_controls.end() ? nullptr : std::move(found->second);
    }

    int Run() override {
        const std::shared_ptr<Course> course = m_course; // nothing of this is used once messages are handled
        if (course->IsOver()) return course->result;
        const HWND dialog = Get();
        m_layout->MeasureLists();
        Center(dialog, m_over, Outer(dialog, m_layout->Preferred()));
        m_layout->Place(InsideOf(dialog));
        OthersDisabled others;
        Show(dialog);
        HandleMessages(*course);
        others.Enable();
        if (const HWND open = course->link->Handle()) ShowWindow(open, SW_HIDE);
        course->link->DestroyIfLeft();
        return course->result;
    }

    void End(int result) override {
        m_course->hasEnded = true;
        m_course->result = result;
        if (Get()) PostMessageW(Get(), WM_NULL, 0, 0); // so that the loop looks
    }

private:
    static void Show(HWND dialog) {
        const auto first = static_cast<HWND>(RemovePropW(dialog, kFirstFocus));
        ShowWindow(dialog, SW_SHOW);
        const HWND focus =
            first && IsWindowEnabled(first) ? first : GetNextDlgTabItem(dialog, nullptr, FALSE);
        // What is in the field with the keyboard can be typed over at once, as one that Tab goes to.
        if (focus) SendMessageW(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(focus), TRUE);
    }

    static void HandleMessages(const Course& course) {
        while (!course.IsOver()) {
            MSG message = {};
            const BOOL more = GetMessageW(&message, nullptr, 0, 0);
            if (more <= 0) { // the program is to end, which its own loop has to know
                if (more == 0) PostQuitMessage(static_cast<int>(message.wParam));
                return;
            }
            const HWND dialog = course.link->Handle();
            if (dialog && (PressByLabel(dialog, message) || IsDialogMessageW(dialog, &message))) continue;
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }

    const HWND m_over;
    const std::shared_ptr<Course> m_course;
    std::shared_ptr<Layout> m_layout;
    Controls m_controls; // those that nobody has taken
};

// A dialog of the system without anything in it.
HWND MakeEmptyDialog(HWND over) {
    struct {
        DLGTEMPLATE head;
        WORD none[3]; // menu, class, caption
    } dialog = {};
    dialog.head.style = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME;
    dialog.head.dwExtendedStyle = WS_EX_CONTROLPARENT;
    const DLGPROC procedure = [](HWND, UINT, WPARAM, LPARAM) -> INT_PTR { return FALSE; };
    const TodaysLook look;
    return CreateDialogIndirectParamW(ThisLibrary(), &dialog.head, over, procedure, 0);
}

} // namespace

ErrorString SystemRefuses() {
    return ErrorString(L"Windows cannot be made: the system refuses, error ") << GetLastError();
}

void FocusWindow(HWND window) {
    const HWND root = GetAncestor(window, GA_ROOT);
    if (root != window && WindowLink::Of(root) && !IsWindowVisible(root))
        SetPropW(root, kFirstFocus, window);
    else
        SetFocus(window);
}

ErrorString MakeWin32Dialog(NativeWindowOwner& owner, const std::wstring& caption, const DialogItem& content,
                            NativeWindow* parent, std::unique_ptr<NativeDialog>& dialog) {
    const HWND over = ShownOver(parent);
    const HWND window = MakeEmptyDialog(over);
    if (!window) return SystemRefuses();
    auto made = std::make_unique<Win32Dialog>(window, owner, over);
    made->SetText(caption);
    made->Fill(content);
    dialog = std::move(made);
    return {};
}
