// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/device/freetype/module/private/Installed.h"
#include "Framework/device/freetype/module/private/OutlineFace.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

/// The faces that are in use, and those that were. Any thread may call.
///
/// What is kept is bounded: kMostFaces faces of kMostBytes of font files together, and kMostRequests names
/// that were asked for. Of the faces the one that was asked for longest ago is dropped first. It goes with
/// the last font of it, and as long as it lives, it is what is found again: no face is in memory twice. A
/// file above kMostBytes is not read: its faces count as having no outlines.
class FaceStore {
public:
    static constexpr std::size_t kMostFaces = 64;
    static constexpr std::size_t kMostBytes = std::size_t{64} << 20;
    static constexpr std::size_t kMostRequests = 1024;

    /// The one of the process, which is never destroyed.
    static FaceStore& Get();

    /// What is found for a family and style. Never null.
    std::shared_ptr<const Typeface> Find(std::wstring_view family, bool isBold, bool isItalic);

    /// Null for a file that is damaged, too large or without outlines. No value when it could not be read, as
    /// it may be the next time.
    std::optional<std::shared_ptr<const OutlineFace>> Open(const InstalledFont& font);

private:
    struct Kept {
        std::shared_ptr<OutlineFace> face; // null for a file that has no outlines
        std::uint64_t lastUse = 0;
    };
    struct Asked {
        std::wstring_view family;
        bool isBold;
        bool isItalic;
    };
    struct Request {
        std::wstring family;
        bool isBold;
        bool isItalic;
        operator Asked() const { return {family, isBold, isItalic}; }
    };
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(const Asked& asked) const;
    };
    struct Equal {
        using is_transparent = void;
        bool operator()(const Asked& a, const Asked& b) const;
    };
    struct Answer {
        std::shared_ptr<const Typeface> typeface; // null when the face was dropped
        std::weak_ptr<const Typeface> living;
        Kept* kept; // null without outlines, and when the face was dropped
    };
    struct Opened {
        std::shared_ptr<OutlineFace> face;
        Kept* kept; // null for one that was dropped
    };

    std::shared_ptr<const Typeface> Ask(const Asked& asked);
    std::optional<Opened> OpenFace(const InstalledFont& font);
    void Drop(const Kept& newest);
    static void Release(Answer& answer);

    std::map<FaceFile, Kept> m_faces;
    std::map<FaceFile, std::weak_ptr<OutlineFace>> m_dropped; // those that fonts still held
    std::unordered_map<Request, Answer, Hash, Equal> m_answers;
    std::size_t m_bytes = 0;
    std::uint64_t m_clock = 0;
    std::mutex m_guard;
};
