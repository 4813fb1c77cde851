// SPDX-License-Identifier: MIT
#include "UtilityDLL/text/private/MeasuringFont.h"

#include "UtilityDLL/text/private/MeasuringDevice.h"
#include "VelmBase/UntilUnloaded.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <map>
#include <mutex>
#include <span>
#include <thread>
#include <utility>

struct MeasuringFont::Style {
    int height;
    bool isBold, isItalic, isUnderlined;
    std::wstring_view face;

    bool operator==(const Style&) const = default;

    std::size_t Hash() const {
        std::uint32_t sum = static_cast<std::uint32_t>(height);
        for (const std::size_t part :
             {std::size_t{isBold}, std::size_t{isItalic}, std::size_t{isUnderlined}, face.size(),
              face.empty() ? std::size_t{0} : static_cast<std::size_t>(face.back())})
            sum = sum * 31 + static_cast<std::uint32_t>(part);
        return sum * 2654435769u >> 16; // sums of round heights differ in their upper bits
    }
};

// The context of a thread, and which of its fonts is selected into it.
struct MeasuringFont::Device : MeasuringDevice {
    const Made* selected = nullptr;
};

struct MeasuringFont::Made {
    Made(const Style& wanted, std::shared_ptr<Device> context)
        : face(wanted.face), style(wanted), device(std::move(context)) {
        style.face = face;
        font.CreateFontW(style.height, 0, 0, 0, style.isBold ? FW_BOLD : FW_NORMAL, style.isItalic,
                         style.isUnderlined, false, 0, OUT_TT_ONLY_PRECIS, CLIP_LH_ANGLES, PROOF_QUALITY, 0,
                         face.c_str());
    }
    ~Made() {
        if (device->selected == this) {
            device->selected = nullptr;
            ::SelectObject(device->m_hDC, GetStockObject(SYSTEM_FONT));
        }
    }
    Made(const Made&) = delete;
    Made& operator=(const Made&) = delete;

    // The context with this font; null when one of them is not there, for it is not this font that measures
    // then.
    HDC Selected() const {
        if (device->selected == this) return device->m_hDC;
        if (!::SelectObject(device->m_hDC, font.m_hObject)) return nullptr;
        device->selected = this;
        return device->m_hDC;
    }

    const std::wstring face;
    Style style;
    CFont font;
    const std::shared_ptr<Device> device;
};

namespace {

// A style has one of the sets, by its hash; where that is full, it displaces the font that was used least
// recently. Looking at all fonts would cost a new style more than making its font.
constexpr std::size_t kSets = 32;
constexpr std::size_t kFontsInSet = 4;

// A host's static objects may measure in their destructors, when those of the main thread are gone already.
thread_local bool isThreadEnding = false;

} // namespace

class MeasuringFont::Kept {
public:
    static Kept* OfThread() {
        if (!keptOfThread && !isThreadEnding) {
            static thread_local const AtEndOfThread end;
            OfThreads& all = OfThreads::Get();
            const std::lock_guard lock(all.mutex);
            std::unique_ptr<Kept>& kept = all.kept[std::this_thread::get_id()];
            if (!kept) kept = std::make_unique<Kept>();
            keptOfThread = kept.get();
        }
        return keptOfThread;
    }
    Kept() = default;
    Kept(const Kept&) = delete;
    Kept& operator=(const Kept&) = delete;

    const Font& Get(const Style& style) {
        const std::span set = SetOf(style);
        auto found = std::ranges::find_if(
            set, [&](const Entry& entry) { return entry.font && entry.font->style == style; });
        if (found == set.end()) {
            found = std::ranges::min_element(set, {}, &Entry::lastUse);
            if (!m_device) m_device = std::make_shared<Device>();
            found->font = std::make_shared<const Made>(style, m_device);
        }
        found->lastUse = ++m_uses;
        return found->font;
    }

    // The next one of that style is made anew, and where its context serves no more, all are on another.
    void Forget(const Font& failed) {
        if (failed->device->GetDeviceCaps(HORZRES) != 0) {
            for (Entry& entry : SetOf(failed->style))
                if (entry.font == failed) entry = {};
        } else if (failed->device == m_device) {
            m_entries = {};
            m_device.reset();
        }
    }

private:
    // Where GCC emulates what is local to threads (Windows), a thread gives its memory back before it
    // destroys what was there. So that is nothing but this, which reads none of it.
    struct AtEndOfThread {
        ~AtEndOfThread() {
            isThreadEnding = true;
            keptOfThread = nullptr;
            OfThreads& all = OfThreads::Get();
            std::unique_lock lock(all.mutex);
            const auto ended = all.kept.extract(std::this_thread::get_id());
            lock.unlock(); // and then its fonts are deleted
        }
    };

    struct OfThreads {
        // Threads may end later than static objects. The library lasts as long as a thread that has one of
        // these.
        static OfThreads& Get() {
            static UntilUnloaded<OfThreads> instance;
            return *instance;
        }
        std::mutex mutex;
        std::map<std::thread::id, std::unique_ptr<Kept>> kept;
    };

    static thread_local Kept* keptOfThread;

    struct Entry {
        Font font;
        std::uint64_t lastUse = 0;
    };

    std::span<Entry, kFontsInSet> SetOf(const Style& style) { return m_entries[style.Hash() % kSets]; }

    std::shared_ptr<Device> m_device;
    std::array<std::array<Entry, kFontsInSet>, kSets> m_entries;
    std::uint64_t m_uses = 0;
};

thread_local MeasuringFont::Kept* MeasuringFont::Kept::keptOfThread = nullptr;

MeasuringFont::MeasuringFont(int height, bool isBold, bool isItalic, bool isUnderlined,
                             const std::wstring& face) {
    const Style style{height, isBold, isItalic, isUnderlined, face};
    Kept* const kept = Kept::OfThread();
    m_made = kept ? kept->Get(style) : std::make_shared<const Made>(style, std::make_shared<Device>());
}

UINT MeasuringFont::GetOutlineTextMetricsW(UINT size, OUTLINETEXTMETRICW* metrics) const {
    const HDC dc = m_made->Selected();
    const UINT written = dc ? ::GetOutlineTextMetricsW(dc, size, metrics) : 0;
    if (written == 0) Forget();
    return written;
}

CSize MeasuringFont::GetTextExtent(std::wstring_view text) const {
    SIZE extent = {};
    const auto length = static_cast<int>(std::min<std::size_t>(text.size(), INT_MAX));
    const HDC dc = m_made->Selected();
    if (!dc || !::GetTextExtentPoint32W(dc, text.data(), length, &extent)) {
        Forget();
        return {};
    }
    return {static_cast<int>(extent.cx), static_cast<int>(extent.cy)};
}

void MeasuringFont::Forget() const {
    if (Kept* const kept = Kept::OfThread()) kept->Forget(m_made);
}
