#include "UtilityDLL/text/private/MeasuringFont.h"

#include "UtilityDLL/text/private/MeasuringDevice.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <utility>
#include <vector>

struct MeasuringFont::Style {
    int height;
    bool isBold, isItalic, isUnderlined;
    std::wstring_view face;

    bool operator==(const Style&) const = default;
};

struct MeasuringFont::Made {
    explicit Made(const Style& wanted) : face(wanted.face), style(wanted) {
        style.face = face;
        font.CreateFontW(style.height, 0, 0, 0, style.isBold ? FW_BOLD : FW_NORMAL, style.isItalic,
                         style.isUnderlined, false, 0, OUT_TT_ONLY_PRECIS, CLIP_LH_ANGLES, PROOF_QUALITY, 0,
                         face.c_str());
        isSelected = ::SelectObject(device.m_hDC, font.m_hObject) != nullptr;
    }

    const std::wstring face;
    Style style;
    CFont font; // outlives the context that it is selected in
    MeasuringDevice device;
    bool isSelected = false; // else it would be the system's font that measures
};

namespace {

constexpr std::size_t kKept = 32;

// A host's static objects may measure in their destructors, when those of the main thread are gone already.
thread_local bool isThreadEnding = false;

} // namespace

// The fonts of a thread, the one that was used last in front.
class MeasuringFont::Kept {
public:
    static Kept* OfThread() {
        if (isThreadEnding) return nullptr;
        static thread_local Kept kept;
        return &kept;
    }
    Kept() { m_fonts.reserve(kKept + 1); }
    ~Kept() { isThreadEnding = true; }
    Kept(const Kept&) = delete;
    Kept& operator=(const Kept&) = delete;

    const Font& Get(const Style& style) {
        if (!m_fonts.empty() && m_fonts.front()->style == style) return m_fonts.front();
        auto found = std::find_if(m_fonts.begin(), m_fonts.end(),
                                  [&](const Font& font) { return font->style == style; });
        if (found == m_fonts.end()) {
            if (m_fonts.size() == kKept) m_fonts.pop_back();
            found = m_fonts.insert(m_fonts.end(), std::make_shared<const Made>(style));
        }
        std::rotate(m_fonts.begin(), found, found + 1);
        return m_fonts.front();
    }

    void Forget(const Font& font) { std::erase(m_fonts, font); }

private:
    std::vector<Font> m_fonts;
};

MeasuringFont::MeasuringFont(int height, bool isBold, bool isItalic, bool isUnderlined,
                             const std::wstring& face) {
    const Style style{height, isBold, isItalic, isUnderlined, face};
    Kept* const kept = Kept::OfThread();
    m_made = kept ? kept->Get(style) : std::make_shared<const Made>(style);
}

UINT MeasuringFont::GetOutlineTextMetricsW(UINT size, OUTLINETEXTMETRICW* metrics) const {
    const UINT written =
        m_made->isSelected ? ::GetOutlineTextMetricsW(m_made->device.m_hDC, size, metrics) : 0;
    if (written == 0) Forget();
    return written;
}

CSize MeasuringFont::GetTextExtent(std::wstring_view text) const {
    SIZE extent = {};
    const auto length = static_cast<int>(std::min<std::size_t>(text.size(), INT_MAX));
    if (!m_made->isSelected || !::GetTextExtentPoint32W(m_made->device.m_hDC, text.data(), length, &extent)) {
        Forget();
        return {};
    }
    return {static_cast<int>(extent.cx), static_cast<int>(extent.cy)};
}

// The context may be one that the display does not serve any more: the next try gets a new one.
void MeasuringFont::Forget() const {
    if (Kept* const kept = Kept::OfThread()) kept->Forget(m_made);
}
