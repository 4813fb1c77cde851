// SPDX-License-Identifier: MIT
#pragma once

/// The module's start-up and its end, which the system calls through the backend. `instance` is the module's
/// handle (ModuleAt). False when a step failed; those after it are then left out.
bool AttachModule(void* instance);
void DetachModule();
