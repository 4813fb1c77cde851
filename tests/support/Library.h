// SPDX-License-Identifier: MIT
#pragma once

/// A shared library by its path in the system's narrow text; null when it cannot be loaded.
void* LoadSharedLibrary(const char* path);

/// Its exported function of that (mangled) name; null when it has none.
void* FunctionOf(void* library, const char* name);

/// Gives back what LoadSharedLibrary() gave.
void UnloadSharedLibrary(void* library);

/// Whether the process has it, whoever loaded it.
bool IsLoaded(const char* path);
