// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/windows/private/NativeControls.h"
#include "Framework/windows/win32/private/MessageFont.h"
#include "Framework/windows/win32/private/Win32Window.h"

#include <memory>
#include <string>

/// Makes a control of the system in today's look, in that font. Null when the system refuses.
HWND MakeControl(const wchar_t* className, const std::wstring& text, DWORD style, HWND parent, UINT id,
                 const SharedFont& font);

class Win32Button final : public Win32Window<NativeButton> {
public:
    Win32Button(HWND button, NativeWindowOwner* owner, bool isPart);

    bool IsChecked() const override { return Send(BM_GETCHECK) == BST_CHECKED; }
    void SetChecked(bool isChecked) override { Send(BM_SETCHECK, isChecked ? BST_CHECKED : BST_UNCHECKED); }
    void SetSwatch(COLORREF color) override;

private:
    struct Picture;
    const std::shared_ptr<Picture> m_picture; // also when the control outlives this
};

/// What the arrows at an edit field were asked for last; it lasts as long as they or the field.
struct SpinSteps {
    std::weak_ptr<WindowLink> field;
    std::weak_ptr<WindowLink> arrows;
    int delta = 0;
    int wheel = 0; // turned, and not yet a step

    void Step(int steps);
};

class Win32Edit final : public Win32Window<NativeEdit> {
public:
    /// `steps` is null for a field without arrows.
    Win32Edit(HWND edit, std::shared_ptr<SpinSteps> steps);

    void SetText(const std::wstring& text) override;
    void Enable(bool enable) override;
    void FocusAndSelect() override;
    void ShowHint(const std::wstring& text) override;

private:
    const std::shared_ptr<SpinSteps> m_steps;
};

class Win32Spin final : public Win32Window<NativeSpin> {
public:
    Win32Spin(HWND arrows, std::shared_ptr<SpinSteps> steps);
    void Enable(bool enable) override;
    int Delta() const override { return Get() ? m_steps->delta : 0; }

private:
    const std::shared_ptr<SpinSteps> m_steps;
};

class Win32ComboBox final : public Win32Window<NativeComboBox> {
public:
    Win32ComboBox(HWND box, NativeWindowOwner* owner, bool isSorted, bool isPart);

    int Add(const std::wstring& text) override;
    int Count() const override { return static_cast<int>(Send(CB_GETCOUNT)); }
    std::wstring TextAt(int position) const override;
    int Selected() const override { return Get() ? static_cast<int>(Send(CB_GETCURSEL)) : CB_ERR; }
    void Select(int position) override;

private:
    const bool m_isSorted;
};

/// A push button that its owner draws, and a drop-down list, outside of dialogs. Without a parent they wait
/// where nobody sees them until a host gives them one. Null when the system refuses.
std::unique_ptr<NativeWindow> MakeDrawn(NativeWindowOwner& owner, const std::wstring& caption, HWND parent);
std::unique_ptr<NativeWindow> MakeBox(NativeWindowOwner& owner, bool isSorted, HWND parent);
