// SPDX-License-Identifier: MIT
#include "tests/support/DialogDriver.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <stdexcept>
#include <string_view>
#include <windows.h>
// after it
#include <commctrl.h>
#include <commdlg.h>
#include <dlgs.h>

namespace {

constexpr std::array kColorFields = {706, 707, 708}; // of the system's dialog, which has no names for them

// A script and the dialog that it is for. It runs as a fiber in the thread of the dialog: while it waits, the
// dialog's own message loop handles what was sent, as it does for a user.
struct Run {
    HWND dialog;
    DialogDriver::Script script;
    void* fiber = nullptr;
    void* caller = nullptr; // whoever let it go on
    enum { RUNNING, WAITING, DONE } state = RUNNING;
    bool isGone = false; // its dialog

    bool IsOpen() const { return !isGone && IsWindowVisible(dialog); }

    // Until the dialog has handled what it was sent, and is what the user has before him.
    void Wait() {
        if (!IsOpen()) return;
        state = WAITING;
        SwitchToFiber(caller);
        state = RUNNING;
    }
};

template <typename Result = LRESULT>
Result Ask(HWND window, UINT message, WPARAM wParam = 0, const void* lParam = nullptr) {
    return (Result)SendMessageW(window, message, wParam, reinterpret_cast<LPARAM>(lParam)); // or a handle
}

bool IsOfClass(HWND window, std::wstring_view name) {
    std::array<wchar_t, 64> text;
    const int length = GetClassNameW(window, text.data(), static_cast<int>(text.size()));
    return CompareStringOrdinal(text.data(), length, name.data(), static_cast<int>(name.size()), TRUE) ==
           CSTR_EQUAL;
}

std::wstring TextOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

LONG StyleOf(HWND window, LONG mask) { return GetWindowLongW(window, GWL_STYLE) & mask; }
bool IsShown(HWND window) { return StyleOf(window, WS_VISIBLE) != 0; }

bool IsGroup(HWND window) {
    return IsOfClass(window, L"Button") && StyleOf(window, BS_TYPEMASK) == BS_GROUPBOX;
}

bool IsPushButton(HWND window) {
    if (!IsOfClass(window, L"Button")) return false;
    const LONG type = StyleOf(window, BS_TYPEMASK);
    return type == BS_PUSHBUTTON || type == BS_DEFPUSHBUTTON || type == BS_OWNERDRAW;
}

bool IsIcon(HWND window) { return IsOfClass(window, L"Static") && StyleOf(window, SS_TYPEMASK) == SS_ICON; }
bool IsLabel(HWND window) { return IsOfClass(window, L"Static") && !IsIcon(window); }

bool HasNameOfItsOwn(HWND window) {
    return (IsOfClass(window, L"Button") && !IsGroup(window)) || IsOfClass(window, WC_LISTVIEWW);
}

bool IsControl(HWND window) {
    return HasNameOfItsOwn(window) || IsOfClass(window, L"Edit") || IsOfClass(window, L"ComboBox");
}

// Without its mnemonic and a colon at its end.
std::wstring Plain(const std::wstring& text) {
    std::wstring plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == L'&' && ++i == text.size()) break;
        plain += text[i];
    }
    if (plain.ends_with(L':')) plain.pop_back();
    return plain;
}

INPUT KeyInput(WORD key, bool isUp) {
    INPUT input = {};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    const bool isExtended = key >= VK_PRIOR && key <= VK_DELETE; // not those of the keypad
    input.ki.dwFlags = (isUp ? DWORD{KEYEVENTF_KEYUP} : 0) | (isExtended ? DWORD{KEYEVENTF_EXTENDEDKEY} : 0);
    return input;
}

INPUT MouseInput(DWORD flags) {
    INPUT input = {};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flags;
    return input;
}

WORD KeyOf(const std::string& name) {
    static const std::map<std::string, WORD> keys = {
        {"Alt", VK_MENU},       {"Ctrl", VK_CONTROL}, {"Shift", VK_SHIFT}, {"Enter", VK_RETURN},
        {"Escape", VK_ESCAPE},  {"Tab", VK_TAB},      {"Space", VK_SPACE}, {"Up", VK_UP},
        {"Down", VK_DOWN},      {"Left", VK_LEFT},    {"Right", VK_RIGHT}, {"Home", VK_HOME},
        {"End", VK_END},        {"PgUp", VK_PRIOR},   {"PgDown", VK_NEXT}, {"Delete", VK_DELETE},
        {"Backspace", VK_BACK}, {"F4", VK_F4}};
    if (const auto found = keys.find(name); found != keys.end()) return found->second;
    if (name.size() != 1) throw std::logic_error("no key " + name);
    return static_cast<WORD>(name.front());
}

class Win32Dialog final : public OpenDialog {
public:
    explicit Win32Dialog(Run& run) : m_run(run), m_dialog(run.dialog) {}

    std::wstring Title() const override { return TextOf(m_dialog); }

    std::wstring Message() const override {
        const std::vector<HWND> parts = Children();
        if (!IsMessageBox()) return {};
        const auto text = std::ranges::find_if(parts, IsLabel);
        return text == parts.end() ? std::wstring() : TextOf(*text);
    }

    void Key(const std::string& key) override {
        std::vector<WORD> keys;
        std::size_t begin = 0;
        for (std::size_t plus; (plus = key.find('+', begin)) != std::string::npos; begin = plus + 1)
            keys.push_back(KeyOf(key.substr(begin, plus - begin)));
        keys.push_back(KeyOf(key.substr(begin)));
        std::vector<INPUT> inputs;
        for (const WORD down : keys) inputs.push_back(KeyInput(down, false));
        for (std::size_t i = keys.size(); i-- > 0;) inputs.push_back(KeyInput(keys[i], true));
        Send(inputs);
    }

    void Type(const std::wstring& text) override {
        std::vector<INPUT> inputs;
        for (const wchar_t unit : text)
            for (const DWORD up : {DWORD{0}, DWORD{KEYEVENTF_KEYUP}}) {
                inputs.push_back(KeyInput(0, false));
                inputs.back().ki.wScan = unit;
                inputs.back().ki.dwFlags = KEYEVENTF_UNICODE | up;
            }
        Send(inputs);
    }

    void Click(const std::wstring& control) override {
        const HWND window = Find(control);
        if (!window) return;
        RECT place = {};
        GetClientRect(window, &place);
        ClickAt(window, Middle(place));
    }

    void Focus(const std::wstring& control) override {
        if (const HWND window = Find(control))
            SendMessageW(m_dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(window), TRUE);
        m_run.Wait();
    }

    bool HasFocus(const std::wstring& control) const override {
        const HWND window = Find(control);
        return window && GetFocus() == window;
    }

    bool IsEnabled(const std::wstring& control) const override {
        const HWND window = Find(control);
        return window && IsWindowEnabled(window);
    }

    bool IsChecked(const std::wstring& control) const override {
        const HWND window = Find(control);
        return window && Ask(window, BM_GETCHECK) == BST_CHECKED;
    }

    std::wstring Text(const std::wstring& control) const override { return TextOf(Find(control)); }

    void SetText(const std::wstring& control, const std::wstring& text) override {
        const HWND edit = Find(control);
        ASSERT_TRUE(IsOfClass(edit, L"Edit")) << "no field: " << ::testing::PrintToString(control);
        Focus(control);
        SendMessageW(edit, EM_SETSEL, 0, -1);
        if (text.empty())
            Key("Delete");
        else
            Type(text);
    }

    void Choose(const std::wstring& control, int position) override {
        ASSERT_TRUE(IsOfClass(Find(control), L"ComboBox"))
            << "no choice: " << ::testing::PrintToString(control);
        Focus(control);
        Key("Home");
        for (int i = 0; i < position; ++i) Key("Down");
    }

    std::wstring Hint() const override {
        std::wstring text;
        for (const HWND window : Owned()) {
            if (!IsOfClass(window, TOOLTIPS_CLASSW)) continue;
            std::array<wchar_t, 256> start = {};
            TOOLINFOW tool = {};
            tool.cbSize = TTTOOLINFOW_V2_SIZE;
            tool.lpszText = start.data();
            if (!Ask(window, TTM_ENUMTOOLSW, 0, &tool)) continue; // the first one, which it is for
            text.resize(1'000);
            tool.lpszText = text.data();
            SendMessageW(window, TTM_GETTEXTW, text.size(), reinterpret_cast<LPARAM>(&tool));
            text.resize(text.find(L'\0'));
        }
        return text;
    }

    std::vector<std::wstring> Columns() const override {
        std::vector<std::wstring> columns;
        const int count = Ask<int>(Ask<HWND>(List(), LVM_GETHEADER), HDM_GETITEMCOUNT);
        for (int i = 0; i < count; ++i) {
            std::array<wchar_t, 256> text = {};
            LVCOLUMNW column = {};
            column.mask = LVCF_TEXT;
            column.pszText = text.data();
            column.cchTextMax = static_cast<int>(text.size());
            Ask(List(), LVM_GETCOLUMNW, static_cast<WPARAM>(i), &column);
            columns.emplace_back(text.data());
        }
        return columns;
    }

    std::vector<std::vector<std::wstring>> Rows() const override {
        const HWND list = List();
        const std::size_t count = Columns().size();
        std::vector<std::vector<std::wstring>> rows(Ask<std::size_t>(list, LVM_GETITEMCOUNT));
        for (std::size_t row = 0; row < rows.size(); ++row)
            for (std::size_t i = 0; i < count; ++i) {
                std::array<wchar_t, 256> text = {};
                LVITEMW item = {};
                item.iSubItem = static_cast<int>(i);
                item.pszText = text.data();
                item.cchTextMax = static_cast<int>(text.size());
                Ask(list, LVM_GETITEMTEXTW, row, &item);
                rows[row].emplace_back(text.data());
            }
        return rows;
    }

    std::vector<int> SelectedRows() const override {
        std::vector<int> rows;
        int row = -1;
        while ((row = static_cast<int>(
                    SendMessageW(List(), LVM_GETNEXTITEM, static_cast<WPARAM>(row), LVNI_SELECTED))) >= 0)
            rows.push_back(row);
        return rows;
    }

    void ClickRow(int row, const std::string& held) override {
        ClickAt(List(), Middle(Place(row)), 1, held.empty() ? 0 : KeyOf(held));
    }

    void DoubleClickRow(int row) override { ClickAt(List(), Middle(Place(row)), 2); }

    std::uint32_t SwatchOfRow(int row) const override {
        const POINT middle = MiddleOfSwatch(row);
        const Picture picture(List());
        return GetPixel(picture.dc, middle.x, middle.y);
    }

    std::pair<int, int> SwatchSizeOfRow(int row) const override {
        const POINT middle = MiddleOfSwatch(row);
        const Picture picture(List());
        const COLORREF color = GetPixel(picture.dc, middle.x, middle.y);
        const auto extent = [&](int dx, int dy) {
            int count = -1; // the middle is counted twice
            for (const int direction : {1, -1})
                for (POINT at = middle; GetPixel(picture.dc, at.x, at.y) == color;
                     at.x += direction * dx, at.y += direction * dy)
                    ++count;
            return count;
        };
        return {extent(1, 0), extent(0, 1)};
    }

    std::vector<std::wstring> Groups() const override { return TextsOf(IsGroup); }

    void Accept() override {
        PostMessageW(m_dialog, WM_COMMAND, IDOK, reinterpret_cast<LPARAM>(::GetDlgItem(m_dialog, IDOK)));
        m_run.Wait();
    }

    void EnterFile(const std::wstring& path) override {
        HWND field = ::GetDlgItem(m_dialog, edt1);
        if (!field) // a list of names with a field
            for (field = ::GetDlgItem(m_dialog, cmb13); field && !IsOfClass(field, L"Edit");)
                field = GetWindow(field, GW_CHILD);
        ASSERT_TRUE(field) << "no file dialog";
        Ask(field, WM_SETTEXT, 0, path.c_str());
        m_run.Wait();
    }

    void EnterColor(std::uint32_t color) override {
        for (const int field : kColorFields) {
            ASSERT_TRUE(::GetDlgItem(m_dialog, field)) << "no colour dialog";
            SetDlgItemInt(m_dialog, field, color & 0xFF, FALSE);
            color >>= 8;
        }
        m_run.Wait();
    }

    std::wstring Folder() const override {
        std::array<wchar_t, MAX_PATH> folder = {};
        Ask(m_dialog, CDM_GETFOLDERPATH, folder.size(), folder.data());
        return folder.data();
    }

    std::vector<std::wstring> Filters() const override {
        std::vector<std::wstring> filters;
        const HWND kinds = ::GetDlgItem(m_dialog, cmb1);
        const int count = kinds ? Ask<int>(kinds, CB_GETCOUNT) : 0;
        for (int i = 0; i < count; ++i) {
            const auto kind = static_cast<WPARAM>(i);
            std::wstring text(Ask<std::size_t>(kinds, CB_GETLBTEXTLEN, kind), L' ');
            Ask(kinds, CB_GETLBTEXT, kind, text.data());
            filters.push_back(std::move(text));
        }
        return filters;
    }

    bool IsQuestion() const override {
        const HICON question = LoadIconW(nullptr, MAKEINTRESOURCEW(32514)); // IDI_QUESTION
        const std::vector<HWND> parts = Children();
        const auto icon = std::ranges::find_if(parts, IsIcon);
        return IsMessageBox() && icon != parts.end() && Ask<HICON>(*icon, STM_GETICON) == question;
    }

    std::vector<std::wstring> Buttons() const override { return TextsOf(IsPushButton); }

    int ColumnWidth(int column) const override {
        return Ask<int>(List(), LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column));
    }

    bool IsRowVisible(int row) const override {
        RECT shown = {}, heading = {};
        GetClientRect(List(), &shown);
        GetWindowRect(Ask<HWND>(List(), LVM_GETHEADER), &heading);
        shown.top += heading.bottom - heading.top;
        return PtInRect(&shown, Middle(PartOf(row, LVIR_BOUNDS)));
    }

private:
    // What is drawn of a window.
    struct Picture {
        explicit Picture(HWND shown) : window(shown), dc(GetDC(shown)) { UpdateWindow(shown); }
        ~Picture() { ReleaseDC(window, dc); }
        Picture(const Picture&) = delete;
        Picture& operator=(const Picture&) = delete;

        HWND window;
        HDC dc;
    };

    static POINT Middle(const RECT& rect) {
        return {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
    }

    void Send(std::vector<INPUT> inputs) {
        const auto count = static_cast<UINT>(inputs.size());
        EXPECT_EQ(count, SendInput(count, inputs.data(), sizeof(INPUT)));
        m_run.Wait();
    }

    void ClickAt(HWND window, POINT place, int times = 1, WORD held = 0) {
        // Where the click before was not: two would make a double click.
        static int clicks = 0;
        place.x += ++clicks % 2 ? 6 : -6;
        ClientToScreen(window, &place);
        EXPECT_EQ(m_dialog, GetAncestor(WindowFromPoint(place), GA_ROOT)) << "covered, or not on the screen";
        SetCursorPos(place.x, place.y);
        std::vector<INPUT> inputs;
        if (held) inputs.push_back(KeyInput(held, false));
        for (int i = 0; i < times; ++i)
            for (const DWORD button : {MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP})
                inputs.push_back(MouseInput(button));
        if (held) inputs.push_back(KeyInput(held, true));
        Send(inputs);
    }

    std::vector<HWND> Children() const { // in the order of Tab
        std::vector<HWND> children;
        for (HWND child = GetWindow(m_dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
            if (IsShown(child)) children.push_back(child);
        return children;
    }

    std::vector<std::wstring> TextsOf(bool (*is)(HWND)) const {
        std::vector<std::wstring> texts;
        for (const HWND child : Children())
            if (is(child)) texts.push_back(Plain(TextOf(child)));
        return texts;
    }

    bool IsMessageBox() const { // texts and buttons, and nothing else
        const auto belongs = [](HWND part) { return IsOfClass(part, L"Static") || IsPushButton(part); };
        return std::ranges::all_of(Children(), belongs);
    }

    std::vector<HWND> Owned() const {
        struct Search {
            HWND owner;
            std::vector<HWND> found;
        } search = {m_dialog, {}};
        const auto keep = [](HWND window, LPARAM parameter) -> BOOL {
            // NOLINTNEXTLINE(performance-no-int-to-ptr): what the caller handed over
            auto& into = *reinterpret_cast<Search*>(parameter);
            if (IsWindowVisible(window) && GetWindow(window, GW_OWNER) == into.owner)
                into.found.push_back(window);
            return TRUE;
        };
        EnumThreadWindows(GetCurrentThreadId(), keep, reinterpret_cast<LPARAM>(&search));
        return search.found;
    }

    // By the label before it, and else by what stands on it.
    HWND Find(const std::wstring& name) const {
        const std::vector<HWND> children = Children();
        for (std::size_t i = 1; i < children.size(); ++i)
            if (IsControl(children[i]) && IsLabel(children[i - 1]) && Plain(TextOf(children[i - 1])) == name)
                return children[i];
        for (const HWND child : children)
            if (HasNameOfItsOwn(child) && Plain(TextOf(child)) == name) return child;
        ADD_FAILURE() << "no control " << ::testing::PrintToString(name) << " in "
                      << ::testing::PrintToString(Title());
        return nullptr;
    }

    HWND List() const {
        const HWND list = FindWindowExW(m_dialog, nullptr, WC_LISTVIEWW, nullptr);
        if (!list) throw std::logic_error("the dialog has no list");
        return list;
    }

    RECT PartOf(int row, int part) const {
        RECT rect = {};
        rect.left = part;
        Ask(List(), LVM_GETITEMRECT, static_cast<WPARAM>(row), &rect);
        return rect;
    }

    RECT Place(int row) const {
        SendMessageW(List(), LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
        return PartOf(row, LVIR_LABEL);
    }

    POINT MiddleOfSwatch(int row) const {
        Place(row);
        return Middle(PartOf(row, LVIR_ICON));
    }

    Run& m_run;
    const HWND m_dialog;
};

} // namespace

struct DialogDriver::Native {
    std::deque<Script> scripts;

    // Ticks come through every message loop, and only when it has nothing else to do.
    Native() : m_timer(SetTimer(nullptr, 0, USER_TIMER_MINIMUM, &OnTick)) {
        s_native = this;
        m_hook = SetWindowsHookExW(WH_CBT, &OnHook, nullptr, GetCurrentThreadId());
        if (!IsThreadAFiber()) ConvertThreadToFiber(nullptr);
    }

    ~Native() {
        KillTimer(nullptr, m_timer);
        UnhookWindowsHookEx(m_hook);
        for (const auto& run : m_runs) run->isGone = true; // of those that others closed, without a word
        EndClosed();
        s_native = nullptr;
    }

    Native(const Native&) = delete;
    Native& operator=(const Native&) = delete;

private:
    static void CALLBACK OnTick(HWND, UINT, UINT_PTR, DWORD) {
        if (s_native) s_native->Look();
    }

    static LRESULT CALLBACK OnHook(int code, WPARAM wParam, LPARAM lParam) {
        // NOLINTNEXTLINE(performance-no-int-to-ptr): a handle
        if (code == HCBT_DESTROYWND && s_native) s_native->Forget(reinterpret_cast<HWND>(wParam));
        return CallNextHookEx(nullptr, code, wParam, lParam);
    }

    void Look() {
        if (const HWND dialog = NewDialog()) {
            if (IsActive(dialog)) Begin(dialog);
            return;
        }
        EndClosed();
        if (m_runs.empty()) return CloseLeftOnes();
        const HWND dialog = m_runs.back()->dialog;
        if (IsWaiting() && IsWindowEnabled(dialog) && IsActive(dialog)) Resume();
    }

    HWND NewDialog() const {
        HWND found = nullptr;
        const auto look = [](HWND window, LPARAM parameter) -> BOOL {
            if (!IsWindowVisible(window) || !IsWindowEnabled(window) || !IsOfClass(window, L"#32770") ||
                s_native->m_known.contains(window))
                return TRUE;
            // NOLINTNEXTLINE(performance-no-int-to-ptr): what the caller handed over
            *reinterpret_cast<HWND*>(parameter) = window;
            return FALSE;
        };
        EnumThreadWindows(GetCurrentThreadId(), look, reinterpret_cast<LPARAM>(&found));
        return found;
    }

    static bool IsActive(HWND dialog) {
        if (GetActiveWindow() == dialog && GetForegroundWindow() == dialog) return true;
        SetForegroundWindow(dialog);
        return false;
    }

    void Begin(HWND dialog) {
        m_known.insert(dialog);
        if (scripts.empty()) {
            ADD_FAILURE() << "nobody waits for the dialog " << ::testing::PrintToString(TextOf(dialog));
            Close(dialog);
            return;
        }
        m_runs.push_back(std::make_unique<Run>(Run{dialog, std::move(scripts.front())}));
        scripts.pop_front();
        m_runs.back()->fiber = CreateFiber(0, &RunScript, m_runs.back().get());
        Resume();
    }

    static void CALLBACK RunScript(void* parameter) {
        Run& run = *static_cast<Run*>(parameter);
        Win32Dialog driven(run);
        try {
            run.script(driven);
        } catch (const std::exception& fault) {
            ADD_FAILURE() << fault.what();
        }
        run.state = Run::DONE;
        SwitchToFiber(run.caller);
    }

    // The latest script; those before it wait until it is done.
    void Resume() {
        Run& run = *m_runs.back();
        run.caller = GetCurrentFiber();
        SwitchToFiber(run.fiber);
        if (run.state != Run::DONE) return;
        DeleteFiber(run.fiber);
        if (run.IsOpen()) m_left.push_back(run.dialog);
        m_runs.pop_back();
    }

    bool IsWaiting() const { return !m_runs.empty() && m_runs.back()->state == Run::WAITING; }

    // Scripts whose dialogs are closed.
    void EndClosed() {
        while (IsWaiting() && !m_runs.back()->IsOpen()) Resume();
    }

    void Forget(HWND window) {
        m_known.erase(window);
        std::erase(m_left, window);
        for (const auto& run : m_runs)
            if (run->dialog == window) run->isGone = true;
        EndClosed();
    }

    // What the loops that ran since then have not closed.
    void CloseLeftOnes() {
        for (const HWND dialog : std::exchange(m_left, {})) {
            if (!IsWindowVisible(dialog)) continue;
            ADD_FAILURE() << "still open: " << ::testing::PrintToString(TextOf(dialog));
            Close(dialog);
        }
    }

    static void Close(HWND dialog) {
        EndDialog(dialog, 0); // of the system's, also where Cancel does nothing
        if (IsWindow(dialog)) PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    }

    static inline Native* s_native = nullptr;

    UINT_PTR m_timer;
    HHOOK m_hook = nullptr;
    std::vector<std::unique_ptr<Run>> m_runs; // those that are not done, each over the one before
    std::set<HWND> m_known;                   // dialogs that are open
    std::vector<HWND> m_left;                 // whose scripts have ended
};

DialogDriver::DialogDriver() : m_native(std::make_unique<Native>()) {}

DialogDriver::~DialogDriver() { EXPECT_EQ(0U, m_native->scripts.size()) << "dialogs that did not open"; }

DialogDriver& DialogDriver::Then(Script script) {
    m_native->scripts.push_back(std::move(script));
    return *this;
}
