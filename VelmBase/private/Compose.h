// SPDX-License-Identifier: MIT
#pragma once

#include "VelmBase/File.h"

namespace FILES {

/// How often an update begins anew because others write the file without a lock.
inline constexpr int kMostBeginnings = 20;

/// Has the content written piece by piece. The reason of the first piece that could not be, or
/// errc::operation_canceled when the composer gave up by itself.
template <typename Write> std::error_code Compose(const ContentComposer& compose, Write write) {
    std::error_code error;
    const bool composed = compose([&](std::string_view piece) {
        if (!error) error = write(piece);
        return !error;
    });
    if (error || composed) return error;
    return std::make_error_code(std::errc::operation_canceled);
}

} // namespace FILES
