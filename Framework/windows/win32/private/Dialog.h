// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/windows/private/NativeControls.h"

#include <memory>
#include <string>

/// See NativeToolkit::MakeDialog().
ErrorString MakeWin32Dialog(NativeWindowOwner& owner, const std::wstring& caption, const DialogItem& content,
                            NativeWindow* parent, std::unique_ptr<NativeDialog>& dialog);

/// "Windows cannot be made", with the system's reason.
ErrorString SystemRefuses();
