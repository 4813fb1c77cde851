// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/device/freetype/module/private/FaceFile.h"
#include "Framework/device/freetype/module/private/FontLibrary.h"
#include "Framework/device/freetype/module/private/Shaper.h"
#include "Framework/device/freetype/private/FontModule.h"

#include <array>
#include <atomic>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

class OutlineFace;

/// Where a face finds others for the characters that it lacks. Any thread may call.
class HelpingFaces {
public:
    HelpingFaces() = default;
    virtual ~HelpingFaces() = default;
    HelpingFaces(const HelpingFaces&) = delete;
    HelpingFaces& operator=(const HelpingFaces&) = delete;

    /// Null when none has the character. No value when the file of the one that has it could not be read, as
    /// it may be the next time.
    virtual std::optional<std::shared_ptr<const OutlineFace>> FaceWith(char32_t character) const = 0;
};

/// A face of a font file that is kept in memory, with the advances that were asked for once. These are in
/// pages of 256 characters, filled when the first of them is asked for; so what is known is read without a
/// lock, and takes at most as much as the characters of Unicode do: 4.3 MB a face, of Latin text some KB.
class OutlineFace final : public Face {
public:
    /// Null for what is no font or has no outlines. Without `helpers`, what the face lacks has the width of
    /// its glyph for missing characters.
    static std::shared_ptr<OutlineFace> Open(std::string bytes, const FaceFile& file,
                                             std::unique_ptr<const HelpingFaces> helpers = nullptr);
    ~OutlineFace() override;

    const OUTLINETEXTMETRICW& Metrics() const override { return m_metrics; }
    TextAdvance Advance(std::wstring_view text) const override;

    /// The memory that the font file takes, in bytes.
    std::size_t Size() const { return m_bytes.size(); }

private:
    using Page = std::array<std::atomic<float>, 256>;

    OutlineFace(std::string bytes, const FaceFile& file, std::unique_ptr<const HelpingFaces> helpers);

    float Known(char32_t character) const;
    Page& PageOf(char32_t character) const;
    Page& FilledPage(char32_t character) const;
    float OwnAdvance(char32_t character) const;
    float HelpedAdvance(char32_t character) const;
    std::shared_ptr<const OutlineFace> HelperFor(char32_t character) const;
    void AddShaped(std::u32string_view text, std::size_t begin, std::size_t length, const OutlineFace& face,
                   int helpers, TextAdvance& sum) const;
    std::vector<ShapedCharacter> Shape(std::u32string_view text, std::size_t begin, std::size_t length) const;

    std::string m_bytes;
    FreeTypeFace m_face;
    Shaper m_shaper;
    bool m_isSymbol = false;
    float m_missing = 0; // the advance of what the face lacks
    OUTLINETEXTMETRICW m_metrics = {};
    std::unique_ptr<const HelpingFaces> m_helpers;
    mutable std::array<std::atomic<Page*>, 0x110000 / 256> m_pages = {};
    mutable std::mutex m_guard; // of m_face and m_shaper, and for making pages
};
