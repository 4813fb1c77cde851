// SPDX-License-Identifier: MIT
// dialog-host [--picture FILE.bmp]: a window of the system that has controls of the library among its own,
// and opens its editor of contours; --picture: draws itself into the file instead of on the screen
#include <UtilityDLL/colors/ColorButton.h>
#include <UtilityDLL/contours/ContourEditor.h>
#include <UtilityDLL/text/FontCombo.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <windows.h>

enum Number : WORD { CLOSE = IDCANCEL, FACE = 100, TEXT, PAPER, CONTOURS }; // Escape presses IDCANCEL

class Window {
public:
    Window() = default;
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;
    ~Window() {
        if (m_handle) DestroyWindow(m_handle);
        for (const HGDIOBJ object : {HGDIOBJ(m_font), HGDIOBJ(m_sampleFont), HGDIOBJ(m_paperBrush)})
            DeleteObject(object);
    }

    // Says what is missing, before anything else is called.
    ErrorString Create(HINSTANCE program) {
        if (!MakeWindow(program)) return ErrorString(L"No window can be made, error ") << GetLastError();
        if (ErrorString made = m_face.Create(CBS_SORT); !made) return made;
        if (ErrorString made = m_text.Create(L""); !made) return made;
        if (ErrorString made = m_paper.Create(L""); !made) return made;
        m_face.FillCombo();
        m_text.SetColor(0x00783C14);
        m_paper.SetColor(0x00D2F0FA);

        // The handles are windows like any other; these objects keep them. Tab goes through them as they are
        // placed.
        Place(Make(L"STATIC", L"&Face:"), {12, 15, 60, 20});
        Place(Adopt(m_face, FACE), {80, 12, 248, 220}); // with its open list
        Place(Make(L"STATIC", L"&Text:"), {12, 50, 60, 20});
        Place(Adopt(m_text, TEXT), {80, 44, 248, 28});
        Place(Make(L"STATIC", L"&Paper:"), {12, 84, 60, 20});
        Place(Adopt(m_paper, PAPER), {80, 78, 248, 28});
        Place(m_sample = Make(L"STATIC", L"12.5   Sand, Shells", SS_CENTER | SS_CENTERIMAGE),
              {12, 118, 316, 120});
        Place(Make(L"BUTTON", L"&Contours...", WS_TABSTOP, CONTOURS), {12, 250, 120, 28});
        Place(Make(L"BUTTON", L"Close", WS_TABSTOP, CLOSE), {208, 250, 120, 28});
        SendMessageW(Handle(m_face), CB_SELECTSTRING, WPARAM(-1), LPARAM(L"Liberation Sans"));
        Show();
        return {};
    }

    // The host's own loop, in which the library's windows get their messages too. Keys that go from control
    // to control are the host's affair here, and the library's in its dialogs, which have a loop of their own
    // while they are open.
    int Run() {
        ShowWindow(m_handle, SW_SHOW);
        SetFocus(Handle(m_face));
        MSG message;
        while (GetMessageW(&message, nullptr, 0, 0) > 0) {
            if (IsDialogMessageW(m_handle, &message)) continue;
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
        return 0;
    }

    int Draw(const std::filesystem::path& path) {
        ShowWindow(m_handle, SW_SHOWNA);
        RedrawWindow(m_handle, nullptr, nullptr,
                     RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
        RECT area;
        GetClientRect(m_handle, &area);
        BITMAPINFOHEADER picture{};
        picture.biSize = sizeof picture;
        picture.biWidth = area.right;
        picture.biHeight = area.bottom;
        picture.biPlanes = 1;
        picture.biBitCount = 24;
        const DWORD size = DWORD((area.right * 3 + 3) / 4 * 4 * area.bottom); // lines end at a multiple of 4
        const HDC window = GetDC(m_handle), memory = CreateCompatibleDC(window);
        void* pixels = nullptr;
        const HBITMAP bitmap = CreateDIBSection(window, reinterpret_cast<const BITMAPINFO*>(&picture),
                                                DIB_RGB_COLORS, &pixels, nullptr, 0);
        const HGDIOBJ before = SelectObject(memory, bitmap);
        BitBlt(memory, 0, 0, area.right, area.bottom, window, 0, 0, SRCCOPY);
        GdiFlush();

        const DWORD start = sizeof(BITMAPFILEHEADER) + sizeof picture;
        BITMAPFILEHEADER header{};
        header.bfType = 0x4D42; // "BM"
        header.bfSize = start + size;
        header.bfOffBits = start;
        std::ofstream file(path, std::ios::binary);
        file.write(reinterpret_cast<const char*>(&header), sizeof header);
        file.write(reinterpret_cast<const char*>(&picture), sizeof picture);
        file.write(static_cast<const char*>(pixels), size);
        file.close();
        SelectObject(memory, before);
        DeleteObject(bitmap);
        DeleteDC(memory);
        ReleaseDC(m_handle, window);
        if (!file) return 1;
        std::printf("drawn with %d faces to choose from\n", m_face.GetCount());
        return 0;
    }

private:
    static HWND Handle(const CWnd& window) { return static_cast<HWND>(window.NativeHandle()); }
    int Pixels(int length) const { return MulDiv(length, int(m_dpi), USER_DEFAULT_SCREEN_DPI); }

    bool MakeWindow(HINSTANCE program) {
        NONCLIENTMETRICSW metrics{};
        metrics.cbSize = sizeof metrics;
        SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
        m_font = CreateFontIndirectW(&metrics.lfMessageFont);
        WNDCLASSW kind{};
        kind.lpfnWndProc = &Procedure;
        kind.hInstance = program;
        kind.hCursor = LoadCursor(nullptr, IDC_ARROW);
        kind.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
        kind.lpszClassName = L"DialogHost";
        constexpr DWORD style = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX;
        RECT area{0, 0, Pixels(340), Pixels(290)};
        AdjustWindowRect(&area, style, FALSE);
        RegisterClassW(&kind);
        m_handle = CreateWindowExW(WS_EX_CONTROLPARENT, kind.lpszClassName, L"Soundings", style,
                                   CW_USEDEFAULT, CW_USEDEFAULT, area.right - area.left,
                                   area.bottom - area.top, nullptr, nullptr, program, this);
        return m_handle != nullptr;
    }

    HWND Make(const wchar_t* kind, const wchar_t* text, DWORD style = 0, Number number = {}) {
        return CreateWindowExW(0, kind, text, WS_CHILD | style, 0, 0, 0, 0, m_handle,
                               reinterpret_cast<HMENU>(std::uintptr_t(number)), nullptr, nullptr);
    }

    // A control of the library becomes one of this window, which hears of it by that number.
    HWND Adopt(const CWnd& control, Number number) {
        const HWND handle = Handle(control);
        const LONG_PTR style = GetWindowLongPtrW(handle, GWL_STYLE);
        SetWindowLongPtrW(handle, GWL_STYLE, (style & ~LONG_PTR(WS_POPUP)) | WS_CHILD | WS_TABSTOP);
        SetWindowLongPtrW(handle, GWLP_ID, number);
        SetParent(handle, m_handle);
        return handle;
    }

    struct Area {
        int left, top, width, height; // in pixels of 96 to the inch
    };
    void Place(HWND control, const Area& area) {
        SendMessageW(control, WM_SETFONT, WPARAM(m_font), FALSE);
        SetWindowPos(control, HWND_BOTTOM, Pixels(area.left), Pixels(area.top), Pixels(area.width),
                     Pixels(area.height), SWP_SHOWWINDOW);
    }

    // The sample as the controls are, and on each button the colour that it has.
    void Show() {
        for (ColorButton* const button : {&m_text, &m_paper}) {
            const COLORREF color = COLORREF(button->GetColor());
            wchar_t name[8];
            std::swprintf(name, std::size(name), L"#%02x%02x%02x", GetRValue(color), GetGValue(color),
                          GetBValue(color));
            button->SetWindowTextW(name);
        }
        DeleteObject(std::exchange(m_paperBrush, CreateSolidBrush(COLORREF(m_paper.GetColor()))));
        LOGFONTW face{};
        face.lfHeight = -Pixels(21);
        face.lfCharSet = DEFAULT_CHARSET;
        m_face.GetLBText(m_face.GetCurSel()).String().copy(face.lfFaceName, LF_FACESIZE - 1);
        const HFONT font = CreateFontIndirectW(&face);
        SendMessageW(m_sample, WM_SETFONT, WPARAM(font), TRUE);
        DeleteObject(std::exchange(m_sampleFont, font));
    }

    static LRESULT CALLBACK Procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message == WM_NCCREATE)
            SetWindowLongPtrW(
                handle, GWLP_USERDATA,
                reinterpret_cast<LONG_PTR>(reinterpret_cast<const CREATESTRUCTW*>(lParam)->lpCreateParams));
        auto* const window = reinterpret_cast<Window*>(GetWindowLongPtrW(handle, GWLP_USERDATA));
        return window ? window->Answer(handle, message, wParam, lParam)
                      : DefWindowProcW(handle, message, wParam, lParam);
    }

    LRESULT Answer(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message == WM_COMMAND) {
            // What the user does to the library's controls is heard of as of any other.
            const WORD number = LOWORD(wParam), code = HIWORD(wParam);
            if (number == FACE && code == CBN_SELCHANGE) Show();
            if ((number == TEXT || number == PAPER) && code == BN_CLICKED) Show();
            if (number == CONTOURS) DLG::EditContourList(L""); // a new list, saved where the user says
            if (number == CLOSE) DestroyWindow(handle);
            return 0;
        }
        if (message == WM_CTLCOLORSTATIC && reinterpret_cast<HWND>(lParam) == m_sample) {
            SetTextColor(reinterpret_cast<HDC>(wParam), COLORREF(m_text.GetColor()));
            SetBkColor(reinterpret_cast<HDC>(wParam), COLORREF(m_paper.GetColor()));
            return reinterpret_cast<LRESULT>(m_paperBrush);
        }
        if (message == WM_DESTROY) {
            m_handle = nullptr;
            PostQuitMessage(0);
        }
        return DefWindowProcW(handle, message, wParam, lParam);
    }

    const UINT m_dpi = GetDpiForSystem();
    HWND m_handle = nullptr, m_sample = nullptr;
    HFONT m_font = nullptr, m_sampleFont = nullptr;
    HBRUSH m_paperBrush = nullptr;
    FontCombo m_face;
    ColorButton m_text, m_paper;
};

int WINAPI WinMain(HINSTANCE program, HINSTANCE, char*, int) {
    SetProcessDPIAware(); // lengths are pixels of the display; a manifest can say it as well
    int count = 0;
    wchar_t** const arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    const bool isPicture = count == 3 && std::wstring(arguments[1]) == L"--picture";
    const std::filesystem::path path = isPicture ? arguments[2] : L"";
    LocalFree(arguments);

    Window window;
    if (const ErrorString made = window.Create(program); !made) {
        if (isPicture)
            std::fprintf(stderr, "%ls\n", made.Text().c_str());
        else
            MessageBoxW(nullptr, made.Text().c_str(), L"Soundings", MB_ICONERROR);
        return 1;
    }
    return isPicture ? window.Draw(path) : window.Run();
}
