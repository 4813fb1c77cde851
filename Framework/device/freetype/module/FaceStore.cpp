// SPDX-License-Identifier: MIT
#include "Framework/device/freetype/module/private/FaceStore.h"

#include "VelmBase/File.h"
#include "VelmBase/WideString.h"

#include <algorithm>
#include <array>
#include <functional>
#include <utility>

namespace {

// No installed family has a longer name.
constexpr std::size_t kLongestName = 255;

// The whole file: a mapped one would end the process if somebody made it shorter. Nothing when it could not
// be read just now, no bytes when it is too large.
std::optional<std::string> Read(const std::string& path) {
    FILES::Reader file(FromUtf8(path));
    if (!file.IsOpen()) return std::nullopt;
    std::string bytes;
    if (file.Size() > FaceStore::kMostBytes) return bytes;
    bytes.resize(static_cast<std::size_t>(file.Size()));
    for (std::size_t filled = 0; filled < bytes.size();) {
        const std::size_t count = file.Read(bytes.data() + filled, bytes.size() - filled);
        if (count == 0) return std::nullopt;
        filled += count;
    }
    return bytes;
}

class InstalledHelpers final : public HelpingFaces {
public:
    explicit InstalledHelpers(InstalledFont font) : m_font(std::move(font)) {}

    std::optional<std::shared_ptr<const OutlineFace>> FaceWith(char32_t character) const override {
        const std::lock_guard lock(m_guard);
        Known& known = m_known[character % m_known.size()];
        if (known.character == character)
            if (auto face = known.face.lock()) return face;
        if (!m_fallbacks) m_fallbacks = std::make_unique<InstalledFallbacks>(m_font);
        InstalledFont font;
        if (!m_fallbacks->Find(character, font)) return nullptr;
        auto face = FaceStore::Get().Open(font);
        if (face && *face) known = {character, *face};
        return face;
    }

private:
    // Letters that are shaped have no width to remember, and come again and again.
    struct Known {
        char32_t character = 0;
        std::weak_ptr<const OutlineFace> face;
    };

    InstalledFont m_font;
    mutable std::unique_ptr<const InstalledFallbacks> m_fallbacks; // most texts need none
    mutable std::array<Known, 64> m_known;                         // room for an alphabet
    mutable std::mutex m_guard;
};

} // namespace

std::size_t FaceStore::Hash::operator()(const Asked& asked) const {
    return std::hash<std::wstring_view>()(asked.family) * 4 + (asked.isBold ? 2 : 0) +
           (asked.isItalic ? 1 : 0);
}

bool FaceStore::Equal::operator()(const Asked& a, const Asked& b) const {
    return a.family == b.family && a.isBold == b.isBold && a.isItalic == b.isItalic;
}

FaceStore& FaceStore::Get() {
    static auto& store = *new FaceStore; // static objects of a host may still measure at its end
    return store;
}

std::shared_ptr<const Typeface> FaceStore::Find(std::wstring_view family, bool isBold, bool isItalic) {
    const Asked asked = {family.substr(0, kLongestName), isBold, isItalic};
    const std::lock_guard lock(m_guard);
    if (const auto found = m_answers.find(asked); found != m_answers.end()) {
        const Answer& answer = found->second;
        if (answer.kept) answer.kept->lastUse = ++m_clock;
        if (auto typeface = answer.typeface ? answer.typeface : answer.living.lock()) return typeface;
        m_answers.erase(found);
    }
    return Ask(asked);
}

std::optional<std::shared_ptr<const OutlineFace>> FaceStore::Open(const InstalledFont& font) {
    const std::lock_guard lock(m_guard);
    const std::optional<Opened> opened = OpenFace(font);
    if (!opened) return std::nullopt;
    return opened->face;
}

// What could not be found or read just now is not kept as the answer.
std::shared_ptr<const Typeface> FaceStore::Ask(const Asked& asked) {
    const InstalledFont font = FindInstalled(asked.family, asked.isBold, asked.isItalic);
    auto typeface = std::make_shared<Typeface>();
    typeface->family = font.family;
    typeface->isEmboldened = asked.isBold && font.weight <= kHeaviestRegular;
    typeface->isSlanted = asked.isItalic && !font.isItalic;
    if (font.file.path.empty()) return typeface;
    Answer answer = {typeface, {}, nullptr};
    if (font.hasOutlines) {
        const std::optional<Opened> opened = OpenFace(font);
        if (!opened) return typeface;
        typeface->face = opened->face;
        answer.kept = opened->kept;
        if (!answer.kept) Release(answer);
    }
    if (m_answers.size() >= kMostRequests) m_answers.clear();
    m_answers.emplace(Request{std::wstring(asked.family), asked.isBold, asked.isItalic}, std::move(answer));
    return typeface;
}

std::optional<FaceStore::Opened> FaceStore::OpenFace(const InstalledFont& font) {
    if (const auto found = m_faces.find(font.file); found != m_faces.end()) {
        found->second.lastUse = ++m_clock;
        return Opened{found->second.face, &found->second};
    }
    if (const auto found = m_dropped.find(font.file); found != m_dropped.end())
        if (auto face = found->second.lock()) return Opened{std::move(face), nullptr};
    std::optional<std::string> bytes = Read(font.file.path);
    if (!bytes) return std::nullopt;
    auto face = OutlineFace::Open(*std::move(bytes), font.file, std::make_unique<InstalledHelpers>(font));
    Kept& kept = m_faces[font.file];
    kept = {face, ++m_clock};
    if (face) m_bytes += face->Size();
    Drop(kept);
    return Opened{std::move(face), &kept};
}

void FaceStore::Drop(const Kept& newest) {
    while (m_faces.size() > 1 && (m_faces.size() > kMostFaces || m_bytes > kMostBytes)) {
        const auto oldest =
            std::min_element(m_faces.begin(), m_faces.end(), [](const auto& a, const auto& b) {
                return a.second.lastUse < b.second.lastUse;
            });
        const Kept* const dropped = &oldest->second;
        if (dropped == &newest) return;
        for (auto& [request, answer] : m_answers)
            if (answer.kept == dropped) Release(answer);
        std::erase_if(m_dropped, [](const auto& each) { return each.second.expired(); });
        if (dropped->face) {
            m_bytes -= dropped->face->Size();
            if (dropped->face.use_count() > 1) m_dropped.insert_or_assign(oldest->first, dropped->face);
        }
        m_faces.erase(oldest);
    }
}

// What it stands for is there as long as a font has it.
void FaceStore::Release(Answer& answer) {
    answer.living = std::exchange(answer.typeface, nullptr);
    answer.kept = nullptr;
}
