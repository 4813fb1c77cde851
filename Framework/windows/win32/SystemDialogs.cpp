// SPDX-License-Identifier: MIT
#include "Framework/windows/win32/private/SystemDialogs.h"

#include "Framework/windows/win32/private/Modal.h"
#include "Framework/windows/win32/private/TodaysLook.h"

#include <algorithm>
#include <array>
#include <mutex>
#include <objbase.h>

namespace {

// The file dialog shows folders by the system's components, which it does not prepare itself.
class Components {
public:
    Components() : m_result(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE)) {}
    ~Components() {
        if (SUCCEEDED(m_result)) CoUninitialize();
    }
    Components(const Components&) = delete;
    Components& operator=(const Components&) = delete;

private:
    const HRESULT m_result;
};

std::wstring SystemPath(std::wstring path) {
    std::ranges::replace(path, L'/', L'\\');
    return path;
}

// As the system has them: name, pattern, name, pattern, each with its end, and one more end.
std::wstring FilterText(const FileRequest& request) {
    std::wstring text;
    for (const auto& [name, pattern] : request.filters) {
        text.append(name).push_back(L'\0');
        text.append(pattern).push_back(L'\0');
    }
    text.push_back(L'\0');
    return text;
}

} // namespace

bool AskForFileOver(HWND over, FileRequest& request) {
    constexpr std::size_t kLongestPath = 32768;
    std::wstring path = SystemPath(request.path);
    if (path.size() >= kLongestPath) path.clear();
    path.resize(kLongestPath);
    const std::wstring filter = FilterText(request);
    const std::wstring folder = SystemPath(request.folder);
    OPENFILENAMEW dialog = {};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = over;
    dialog.lpstrFilter = request.filters.empty() ? nullptr : filter.c_str();
    dialog.nFilterIndex = 1;
    dialog.lpstrFile = path.data();
    dialog.nMaxFile = static_cast<DWORD>(path.size());
    dialog.lpstrInitialDir = folder.empty() ? nullptr : folder.c_str();
    dialog.lpstrDefExt = request.extension.empty() ? nullptr : request.extension.c_str();
    dialog.Flags = OFN_EXPLORER | OFN_NOCHANGEDIR | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY | OFN_ENABLESIZING;
    dialog.Flags |= request.isToOpen ? OFN_FILEMUSTEXIST : request.flags & OFN_OVERWRITEPROMPT;

    const Components components;
    const TodaysLook look;
    const OthersDisabled others(over); // which the dialog disables itself
    const auto ask = [&] { return (request.isToOpen ? GetOpenFileNameW : GetSaveFileNameW)(&dialog) != 0; };
    bool isChosen = ask();
    if (!isChosen && CommDlgExtendedError() == FNERR_INVALIDFILENAME) { // nothing was shown
        path[0] = L'\0';
        isChosen = ask();
    }
    if (isChosen) request.path = path.c_str(); // to its end
    return isChosen;
}

bool AskForColorOver(HWND over, COLORREF& color, bool isFullyOpen) {
    // The user's own colours, which last as long as the program.
    static std::mutex guard;
    static std::array<COLORREF, 16> kept = [] {
        std::array<COLORREF, 16> white = {};
        white.fill(0xFFFFFF);
        return white;
    }();
    std::array<COLORREF, 16> colors = {};
    {
        const std::lock_guard lock(guard);
        colors = kept;
    }
    CHOOSECOLORW dialog = {};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = over;
    dialog.rgbResult = color & 0xFFFFFF;
    dialog.lpCustColors = colors.data();
    dialog.Flags = CC_RGBINIT | CC_ANYCOLOR | (isFullyOpen ? CC_FULLOPEN : 0);
    const TodaysLook look;
    const OthersDisabled others(over);
    const bool isChosen = ChooseColorW(&dialog) != 0;
    const std::lock_guard lock(guard);
    kept = colors;
    if (isChosen) color = dialog.rgbResult;
    return isChosen;
}

int ShowMessageOver(HWND over, const std::wstring& text, const std::wstring& caption, UINT type) {
    const TodaysLook look;
    const OthersDisabled others(over);
    const int answer = ::MessageBoxW(over, text.c_str(), caption.c_str(), type);
    const bool isQuestion = (type & MB_YESNO) != 0;
    if (answer == 0) return IDNO; // it could not be shown
    return !isQuestion ? IDOK : answer == IDYES ? IDYES : IDNO;
}
