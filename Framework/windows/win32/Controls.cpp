// SPDX-License-Identifier: MIT
#include "Framework/windows/win32/private/Controls.h"

#include "Framework/windows/DpiCor.h"
#include "Framework/windows/win32/private/Hint.h"
#include "Framework/windows/win32/private/TodaysLook.h"

#include <algorithm>
#include <utility>

namespace {

// Of pixels of 96 to the inch.
constexpr int kSwatchSize = 16;
constexpr int kSwatchMargin = 4;
constexpr int kBoxWidth = 160;
constexpr int kDroppedHeight = 300;

// Has the link tell its owner one thing that its control tells its parent, who is told after that.
void TellCommand(WindowLink& link, UINT code) {
    link.SetOnTold([&link, code](UINT message, WPARAM wParam, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_COMMAND && HIWORD(wParam) == code) link.Tell(code);
        return std::nullopt;
    });
}

void FillSwatch(HDC dc, RECT place, COLORREF color) {
    const HBRUSH brush = CreateSolidBrush(color & 0xFFFFFF);
    FillRect(dc, &place, brush);
    ::DeleteObject(brush);
    FrameRect(dc, &place, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
}

std::shared_ptr<struct _IMAGELIST> MakeSwatch(COLORREF color) {
    const int size = DpiCor(kSwatchSize);
    const HDC screen = GetDC(nullptr);
    const HDC dc = CreateCompatibleDC(screen);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, size, size);
    ReleaseDC(nullptr, screen);
    const HGDIOBJ before = SelectObject(dc, bitmap);
    FillSwatch(dc, {0, 0, size, size}, color);
    SelectObject(dc, before);
    DeleteDC(dc);
    std::shared_ptr<struct _IMAGELIST> images(ImageList_Create(size, size, ILC_COLOR24, 1, 0),
                                              [](HIMAGELIST list) { ImageList_Destroy(list); });
    ImageList_Add(images.get(), bitmap, nullptr);
    ::DeleteObject(bitmap);
    return images;
}

constexpr UINT_PTR kParking = 0x55444C33;

LRESULT CALLBACK PassOn(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR) {
    if (message == WM_NCDESTROY) RemoveWindowSubclass(window, &PassOn, kParking);
    // NOLINTNEXTLINE(performance-no-int-to-ptr): so the system tells who it is
    const HWND teller = message == WM_COMMAND ? reinterpret_cast<HWND>(lParam) : nullptr;
    const HWND parent = teller ? GetAncestor(teller, GA_PARENT) : window;
    return parent == window ? DefSubclassProc(window, message, wParam, lParam)
                            : SendMessageW(parent, message, wParam, lParam);
}

// A drop-down list goes on telling the window that it was made in what the user does, whichever it is in by
// now. It is made in one that passes that on, and lasts as long as the list.
HWND MakeParking() {
    const HWND parking =
        CreateWindowExW(0, WC_STATICW, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, ThisLibrary(), nullptr);
    if (parking) SetWindowSubclass(parking, &PassOn, kParking, 0);
    return parking;
}

// Enter presses the push button that has the keyboard. The system leaves that to the dialog, which knows of
// buttons that Tab went to only.
std::optional<LRESULT> PressByEnter(HWND button, UINT message, WPARAM wParam, LPARAM lParam) {
    if (!IsWindowEnabled(button)) return std::nullopt;
    const auto* const asked = message == WM_GETDLGCODE ? reinterpret_cast<const MSG*>(lParam) : nullptr;
    if (asked && asked->message == WM_KEYDOWN && asked->wParam == VK_RETURN)
        return DefSubclassProc(button, message, wParam, lParam) | DLGC_WANTMESSAGE;
    if (message != WM_KEYDOWN || wParam != VK_RETURN) return std::nullopt;
    SendMessageW(button, BM_CLICK, 0, 0);
    return 0;
}

} // namespace

std::wstring TextOfWindow(HWND window) {
    if (!window) return {};
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)), L' ');
    text.resize(
        static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()) + 1)));
    return text;
}

void EnablePart(HWND window, bool enable) {
    if (!window) return;
    const HWND root = GetAncestor(window, GA_ROOT);
    if (!enable && GetFocus() == window && root != window && WindowLink::Of(root))
        SendMessageW(root, WM_NEXTDLGCTL, 0, FALSE);
    EnableWindow(window, enable);
}

HWND MakeControl(const wchar_t* className, const std::wstring& text, DWORD style, HWND parent, UINT id,
                 const SharedFont& font) {
    const bool hasEdge =
        std::wstring_view(className) == WC_EDITW || std::wstring_view(className) == WC_LISTVIEWW;
    const TodaysLook look;
    const HWND control =
        CreateWindowExW(hasEdge ? WS_EX_CLIENTEDGE : 0, className, text.c_str(),
                        WS_CHILD | WS_VISIBLE | style, 0, 0, 0, 0, parent,
                        // NOLINTNEXTLINE(performance-no-int-to-ptr): so the system has it
                        reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)), ThisLibrary(), nullptr);
    if (control && font) SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font.get()), FALSE);
    return control;
}

struct Win32Button::Picture {
    std::shared_ptr<struct _IMAGELIST> images;
};

Win32Button::Win32Button(HWND button, NativeWindowOwner* owner, bool isPart)
    : Win32Window(button, owner, isPart), m_picture(std::make_shared<Picture>()) {
    Link().Keep(m_picture);
    TellCommand(Link(), BN_CLICKED);
    const LONG kind = GetWindowLongW(button, GWL_STYLE) & BS_TYPEMASK;
    if (kind != BS_PUSHBUTTON && kind != BS_DEFPUSHBUTTON) return;
    Link().SetOnMessage([button](UINT message, WPARAM wParam, LPARAM lParam) {
        return PressByEnter(button, message, wParam, lParam);
    });
}

void Win32Button::SetSwatch(COLORREF color) {
    if (!Get()) return;
    const auto before = std::exchange(m_picture->images, MakeSwatch(color));
    const int margin = DpiCor(kSwatchMargin);
    BUTTON_IMAGELIST image = {m_picture->images.get(), {margin, 0, margin, 0}, BUTTON_IMAGELIST_ALIGN_LEFT};
    Send(BCM_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(&image));
    Invalidate();
}

void SpinSteps::Step(int steps) {
    if (steps == 0) return;
    delta = steps;
    if (const std::shared_ptr<WindowLink> link = arrows.lock()) link->Tell(UDN_DELTAPOS);
}

Win32Edit::Win32Edit(HWND edit, std::shared_ptr<SpinSteps> steps)
    : Win32Window(edit, nullptr, true), m_steps(std::move(steps)) {
    WindowLink& link = Link();
    if (m_steps) m_steps->field = link.weak_from_this();
    link.SetOnTold([&link](UINT message, WPARAM wParam, LPARAM) -> std::optional<LRESULT> {
        if (message != WM_COMMAND) return std::nullopt;
        const WORD code = HIWORD(wParam);
        if (code == EN_CHANGE || code == EN_KILLFOCUS) HideHint(link.Handle());
        if (code == EN_CHANGE) link.Tell(EN_CHANGE);
        return std::nullopt;
    });
    link.SetOnMessage(
        [&link, arrows = m_steps](UINT message, WPARAM wParam, LPARAM) -> std::optional<LRESULT> {
            constexpr int kPage = 10;
            if (message == WM_DESTROY) HideHint(link.Handle());
            if (!arrows) return std::nullopt;
            if (message == WM_KEYDOWN && (wParam == VK_UP || wParam == VK_DOWN)) {
                arrows->Step(wParam == VK_UP ? 1 : -1);
                return 0;
            }
            if (message == WM_KEYDOWN && (wParam == VK_PRIOR || wParam == VK_NEXT)) {
                arrows->Step(wParam == VK_PRIOR ? kPage : -kPage);
                return 0;
            }
            if (message != WM_MOUSEWHEEL) return std::nullopt;
            arrows->wheel += GET_WHEEL_DELTA_WPARAM(wParam);
            arrows->Step(arrows->wheel / WHEEL_DELTA);
            arrows->wheel %= WHEEL_DELTA;
            return 0;
        });
}

void Win32Edit::SetText(const std::wstring& text) {
    if (text != Text()) Win32Window::SetText(text); // else it would tell a change that there is not
}

void Win32Edit::Enable(bool enable) {
    Win32Window::Enable(enable);
    if (const auto arrows = m_steps ? m_steps->arrows.lock() : nullptr) EnablePart(arrows->Handle(), enable);
}

void Win32Edit::FocusAndSelect() {
    Focus();
    Send(EM_SETSEL, 0, -1);
}

void Win32Edit::ShowHint(const std::wstring& text) {
    if (Get()) ShowHintAt(Get(), text);
}

Win32Spin::Win32Spin(HWND arrows, std::shared_ptr<SpinSteps> steps)
    : Win32Window(arrows, nullptr, true), m_steps(std::move(steps)) {
    // A range in which every step is one, both ways.
    SendMessageW(arrows, UDM_SETRANGE32, static_cast<WPARAM>(-1'000'000), 1'000'000);
    m_steps->arrows = Link().weak_from_this();
    Link().SetOnTold([held = m_steps](UINT message, WPARAM, LPARAM lParam) -> std::optional<LRESULT> {
        const auto* const told = reinterpret_cast<const NMUPDOWN*>(lParam);
        if (message != WM_NOTIFY || told->hdr.code != UDN_DELTAPOS) return std::nullopt;
        held->Step(told->iDelta);
        return TRUE; // its own position stays where it is
    });
}

void Win32Spin::Enable(bool enable) {
    Win32Window::Enable(enable);
    if (const auto field = m_steps->field.lock()) EnablePart(field->Handle(), enable);
}

Win32ComboBox::Win32ComboBox(HWND box, NativeWindowOwner* owner, bool isSorted, bool isPart)
    : Win32Window(box, owner, isPart), m_isSorted(isSorted) {
    TellCommand(Link(), CBN_SELCHANGE);
}

int Win32ComboBox::Add(const std::wstring& text) {
    if (!Get()) return -1;
    int position = Count();
    if (m_isSorted) { // behind all that do not come after it
        int first = 0;
        while (first < position) {
            const int middle = first + (position - first) / 2;
            if (CompareStringOrdinal(text.c_str(), -1, TextAt(middle).c_str(), -1, TRUE) == CSTR_LESS_THAN)
                position = middle;
            else
                first = middle + 1;
        }
    }
    const auto added =
        Send(CB_INSERTSTRING, static_cast<WPARAM>(position), reinterpret_cast<LPARAM>(text.c_str()));
    return added < 0 ? -1 : static_cast<int>(added);
}

std::wstring Win32ComboBox::TextAt(int position) const {
    if (position < 0 || position >= Count()) return {};
    const auto length = Send(CB_GETLBTEXTLEN, static_cast<WPARAM>(position));
    if (length < 0) return {};
    std::wstring text(static_cast<std::size_t>(length), L' ');
    Send(CB_GETLBTEXT, static_cast<WPARAM>(position), reinterpret_cast<LPARAM>(text.data()));
    return text;
}

void Win32ComboBox::Select(int position) {
    if (position >= -1 && position < Count()) Send(CB_SETCURSEL, static_cast<WPARAM>(position));
}

std::unique_ptr<NativeWindow> MakeDrawn(NativeWindowOwner& owner, const std::wstring& caption, HWND parent) {
    const SharedFont font = MakeMessageFont();
    const HWND button =
        MakeControl(WC_BUTTONW, caption, WS_TABSTOP | BS_OWNERDRAW, parent ? parent : HWND_MESSAGE, 0, font);
    if (!button) return nullptr;
    auto native = std::make_unique<Win32Button>(button, &owner, false);
    const std::shared_ptr<WindowLink> link = WindowLink::Of(button);
    link->Keep(font);
    WindowLink* const told = link.get();
    link->SetOnTold([told](UINT message, WPARAM wParam, LPARAM lParam) -> std::optional<LRESULT> {
        if (message == WM_COMMAND && HIWORD(wParam) == BN_CLICKED) told->Tell(BN_CLICKED);
        if (message != WM_DRAWITEM) return std::nullopt;
        told->ForOwner([=](NativeWindowOwner& drawing) {
            drawing.OnDrawItem(*reinterpret_cast<DRAWITEMSTRUCT*>(lParam));
        });
        return TRUE;
    });
    link->SetOnMessage([button](UINT message, WPARAM wParam, LPARAM lParam) -> std::optional<LRESULT> {
        // The system would not take the second click of two for one.
        if (message == WM_LBUTTONDBLCLK) return SendMessageW(button, WM_LBUTTONDOWN, wParam, lParam);
        return PressByEnter(button, message, wParam, lParam);
    });
    SetWindowPos(button, nullptr, 0, 0, DpiCor(75), DpiCor(23), SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    return native;
}

std::unique_ptr<NativeWindow> MakeBox(NativeWindowOwner& owner, bool isSorted, HWND parent) {
    const SharedFont font = MakeMessageFont();
    const DWORD style = WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST | (isSorted ? CBS_SORT : 0);
    const HWND parking = parent ? nullptr : MakeParking();
    const std::shared_ptr<void> kept(parking, [](HWND window) {
        if (window) DestroyWindow(window);
    });
    const HWND box = MakeControl(WC_COMBOBOXW, {}, style, parent ? parent : parking, 0, font);
    if (!box) return nullptr;
    auto native = std::make_unique<Win32ComboBox>(box, &owner, isSorted, false);
    WindowLink::Of(box)->Keep(font);
    WindowLink::Of(box)->Keep(kept);
    SetWindowPos(box, nullptr, 0, 0, DpiCor(kBoxWidth), DpiCor(kDroppedHeight),
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    return native;
}
