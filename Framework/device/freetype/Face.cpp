#include "Framework/device/freetype/Face.h"

#include "VelmBase/WideString.h"

#include <algorithm>
#include <fontconfig/fontconfig.h>
#include <freetype/freetype.h>
#include <freetype/tttables.h>
#include <map>
#include <mutex>
#include <tuple>

namespace {

FT_Library Library() {
    static const FT_Library library = [] {
        FT_Library made = nullptr;
        FT_Init_FreeType(&made);
        return made;
    }();
    return library;
}

class OutlineFace final : public Face {
public:
    OutlineFace(FT_Face face, std::string family) : m_face(face), m_family(std::move(family)) {
        m_metrics.unitsPerEm = face->units_per_EM;
        const auto* const os2 = static_cast<const TT_OS2*>(FT_Get_Sfnt_Table(face, FT_SFNT_OS2));
        m_metrics.winAscent = os2 ? os2->usWinAscent : face->ascender;
        m_metrics.winDescent = os2 ? os2->usWinDescent : -face->descender;
        m_metrics.typoAscent = os2 ? os2->sTypoAscender : face->ascender;
        m_metrics.typoDescent = os2 ? os2->sTypoDescender : face->descender;
        m_metrics.typoLineGap = os2 ? os2->sTypoLineGap : 0;
        const auto* const hhea = static_cast<const TT_HoriHeader*>(FT_Get_Sfnt_Table(face, FT_SFNT_HHEA));
        if (hhea)
            m_metrics.externalLeading =
                std::max(0, hhea->Line_Gap - (m_metrics.winAscent + m_metrics.winDescent -
                                              (hhea->Ascender - hhea->Descender)));
    }
    ~OutlineFace() override { FT_Done_Face(m_face); }

    const std::string& Family() const override { return m_family; }
    const FaceMetrics& Metrics() const override { return m_metrics; }

    double Advance(std::wstring_view text) override {
        double sum = 0;
        for (const wchar_t character : text) {
            const auto [known, isNew] = m_advances.try_emplace(static_cast<char32_t>(character), 0);
            if (isNew) {
                FT_Load_Glyph(m_face, FT_Get_Char_Index(m_face, known->first), FT_LOAD_NO_SCALE);
                known->second = static_cast<int>(m_face->glyph->metrics.horiAdvance);
            }
            sum += known->second;
        }
        return sum;
    }

private:
    FT_Face m_face;
    std::string m_family;
    FaceMetrics m_metrics;
    std::map<char32_t, int> m_advances;
};

std::shared_ptr<Face> Open(const std::wstring& family, bool isBold, bool isItalic) {
    FcPattern* const wanted = FcPatternCreate();
    FcPatternAddString(wanted, FC_FAMILY, reinterpret_cast<const FcChar8*>(ToUtf8(family).c_str()));
    FcPatternAddInteger(wanted, FC_WEIGHT, isBold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR);
    FcPatternAddInteger(wanted, FC_SLANT, isItalic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
    FcConfigSubstitute(nullptr, wanted, FcMatchPattern);
    FcDefaultSubstitute(wanted);
    FcResult result;
    FcPattern* const found = FcFontMatch(nullptr, wanted, &result);
    FcPatternDestroy(wanted);
    FcChar8* file = nullptr;
    FcChar8* name = nullptr;
    int index = 0;
    std::shared_ptr<Face> face;
    FT_Face opened = nullptr;
    if (found && FcPatternGetString(found, FC_FILE, 0, &file) == FcResultMatch &&
        FcPatternGetString(found, FC_FAMILY, 0, &name) == FcResultMatch) {
        FcPatternGetInteger(found, FC_INDEX, 0, &index);
        if (FT_New_Face(Library(), reinterpret_cast<const char*>(file), index, &opened) == 0)
            face = std::make_shared<OutlineFace>(opened, reinterpret_cast<const char*>(name));
    }
    if (found) FcPatternDestroy(found);
    return face;
}

} // namespace

std::shared_ptr<Face> FindFace(const std::wstring& family, bool isBold, bool isItalic) {
    static std::mutex guard;
    static std::map<std::tuple<std::wstring, bool, bool>, std::shared_ptr<Face>> faces;
    const std::lock_guard lock(guard);
    std::shared_ptr<Face>& face = faces[{family, isBold, isItalic}];
    if (!face) face = Open(family, isBold, isItalic);
    return face;
}
