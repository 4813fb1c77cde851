// SPDX-License-Identifier: MIT
#include "tests/support/Resources.h"

#include <algorithm>
#include <iterator>

#include <windows.h>

#include <tlhelp32.h>

namespace {

std::size_t NumThreads() {
    const HANDLE all = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    THREADENTRY32 thread{};
    thread.dwSize = sizeof thread;
    std::size_t count = 0;
    for (BOOL more = Thread32First(all, &thread); more; more = Thread32Next(all, &thread))
        count += thread.th32OwnerProcessID == GetCurrentProcessId();
    CloseHandle(all);
    return count;
}

std::size_t InUseOf(HANDLE heap) {
    PROCESS_HEAP_ENTRY entry{};
    std::size_t bytes = 0;
    HeapLock(heap);
    while (HeapWalk(heap, &entry))
        if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) bytes += entry.cbData;
    HeapUnlock(heap);
    return bytes;
}

std::size_t HeapInUse() {
    HANDLE heaps[100]; // the system's and the C runtime's among them
    const DWORD count = std::min<DWORD>(GetProcessHeaps(std::size(heaps), heaps), std::size(heaps));
    std::size_t bytes = 0;
    for (DWORD i = 0; i < count; ++i) bytes += InUseOf(heaps[i]);
    return bytes;
}

// Wine does not count them, but gives each new one the lowest place that is free: the last of many comes
// behind all that are in use.
std::size_t NumHandles() {
    HANDLE handles[1000];
    std::size_t last = 0;
    for (HANDLE& handle : handles) {
        handle = CreateEventW(nullptr, FALSE, FALSE, nullptr);
        last = std::max(last, reinterpret_cast<std::size_t>(handle) / 4);
    }
    for (const HANDLE handle : handles) CloseHandle(handle);
    return last - std::size(handles);
}

} // namespace

Resources ResourcesInUse() { return {NumThreads(), NumHandles(), HeapInUse()}; }
