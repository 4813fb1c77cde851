// SPDX-License-Identifier: MIT
#include "Framework/windows/win32/private/Controls.h"
#include "Framework/windows/win32/private/Dialog.h"
#include "Framework/windows/win32/private/Modal.h"
#include "Framework/windows/win32/private/SystemDialogs.h"
#include "Framework/windows/win32/private/TodaysLook.h"

namespace {

HWND HandleOf(NativeWindow* window) { return window ? static_cast<HWND>(window->Handle()) : nullptr; }

class Toolkit final : public NativeToolkit {
public:
    Toolkit() {
        const TodaysLook look;
        const INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_STANDARD_CLASSES | ICC_LISTVIEW_CLASSES |
                                                                  ICC_UPDOWN_CLASS | ICC_BAR_CLASSES};
        InitCommonControlsEx(&classes);
    }

    ErrorString MakeDrawnButton(NativeWindowOwner& owner, const std::wstring& caption, NativeWindow* parent,
                                std::unique_ptr<NativeWindow>& button) override {
        button = MakeDrawn(owner, caption, HandleOf(parent));
        return button ? ErrorString() : SystemRefuses();
    }

    ErrorString MakeComboBox(NativeWindowOwner& owner, bool isSorted, NativeWindow* parent,
                             std::unique_ptr<NativeWindow>& box) override {
        box = MakeBox(owner, isSorted, HandleOf(parent));
        return box ? ErrorString() : SystemRefuses();
    }

    ErrorString MakeDialog(NativeWindowOwner& owner, const std::wstring& caption, const DialogItem& content,
                           NativeWindow* parent, std::unique_ptr<NativeDialog>& dialog) override {
        return MakeWin32Dialog(owner, caption, content, parent, dialog);
    }

    bool AskForFile(FileRequest& request, NativeWindow* parent) override {
        const CancelledWith cancelled(parent);
        return AskForFileOver(ShownOver(parent), request);
    }
    bool AskForColor(COLORREF& color, bool isFullyOpen, NativeWindow* parent) override {
        const CancelledWith cancelled(parent);
        return AskForColorOver(ShownOver(parent), color, isFullyOpen);
    }
    int ShowMessage(const std::wstring& text, const std::wstring& caption, UINT type,
                    NativeWindow* parent) override {
        return ShowMessageOver(ShownOver(parent), text, caption, type);
    }
};

} // namespace

ErrorString OpenToolkit(NativeToolkit*& toolkit) {
    static Toolkit made;
    toolkit = &made;
    return {};
}
