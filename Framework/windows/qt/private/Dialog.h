// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/windows/private/NativeControls.h"

#include <memory>

/// See NativeToolkit::MakeDialog().
ErrorString MakeQtDialog(NativeWindowOwner& owner, const std::wstring& caption, const DialogItem& content,
                         NativeWindow* parent, std::unique_ptr<NativeDialog>& dialog);
