// SPDX-License-Identifier: MIT
#include "tests/support/Resources.h"

#include <filesystem>
#include <iterator>
#include <malloc.h>

namespace {

std::size_t NumEntries(const char* folder) {
    namespace fs = std::filesystem;
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

} // namespace

Resources ResourcesInUse() {
    return {NumEntries("/proc/self/task"), NumEntries("/proc/self/fd"), mallinfo2().uordblks};
}
