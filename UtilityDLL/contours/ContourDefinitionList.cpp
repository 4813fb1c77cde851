#include "UtilityDLL/contours/ContourDefinitionList.h"

#include "UtilityDLL/colors/DXFColor.h"
#include "VelmBase/NumberText.h"
#include "VelmBase/SettingsText.h"
#include "VelmBase/WideString.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <new>
#include <span>
#include <string>
#include <string_view>

const wchar_t* const ContourDefinitionList::LINESTYLES[3] = {L"CONTINUOUS", L"DASHED", L"DOTTED"};

namespace {

using ContourDefInfo = ContourDefinitionList::ContourDefInfo;

// The keys of a contour's section, in file order. "Color" is the index into the DXF palette, for readers that
// know no other colours.
enum Key : std::int32_t { LEVEL, COLOR, TRUE_COLOR, LINE_TYPE, LINE_WIDTH, ANNOTATE, NUM_KEYS };
constexpr std::wstring_view kKeys[] = {L"Level",    L"Color",     L"TrueColor",
                                       L"LineType", L"LineWidth", L"Annotate"};
static_assert(std::size(kKeys) == NUM_KEYS);
constexpr std::size_t kKeyWidth = kKeys[TRUE_COLOR].size(); // the longest

std::wstring SectionName(std::size_t position) { return L"Contour(" + std::to_wstring(position) + L")"; }

// The number of levels from `first` by repeated addition of `step`; -1 for too many or when they stand still.
int CountLevels(double first, double maximum, double step) {
    // By two quotients: the difference of far numbers may be infinite.
    if (maximum / step - first / step > ContourDefinitionList::MAX_GENERATED) return -1;
    int count = 0;
    double level = first;
    while (level <= maximum) {
        if (++count > ContourDefinitionList::MAX_GENERATED || level + step <= level) return -1;
        level += step;
    }
    return count;
}

// Takes the contours of a settings file as they come. Files of 100,000 levels are read a few times faster
// than by way of sections and keys that are then asked for by name.
class ContourReader : public SETTINGS::Handler {
public:
    // `lineStyles` are the names of the line types.
    explicit ContourReader(std::span<const wchar_t* const> lineStyles) : m_lineStyles(lineStyles) {}

    bool OnSection(SETTINGS::Bytes name) override {
        FinishSection();
        const std::wstring text = SETTINGS::Widened(name);
        unsigned int number = 0;
        constexpr std::wstring_view kPrefix = L"Contour(";
        if (text.size() > kPrefix.size())
            NumberText::Extract(std::wstring_view(text).substr(kPrefix.size()), number);
        m_isContour = icompareW(text, SectionName(number));
        if (m_isContour) {
            m_contours.push_back({number, false, {}});
        } else {
            m_otherNames.emplace_back(text);
            for (wchar_t& c : m_otherNames.back()) c = ToUpperW(c);
        }
        return true;
    }

    void OnKey(SETTINGS::Bytes name, SETTINGS::Bytes value, SETTINGS::Bytes /*comment*/) override {
        if (!m_isContour) return;
        m_contours.back().hasKeys = true;
        Widen(name, m_name);
        const auto key = std::find_if(std::begin(kKeys), std::end(kKeys),
                                      [&](std::wstring_view known) { return icompareW(known, m_name); });
        if (key == std::end(kKeys)) return;
        Text& text = m_texts[static_cast<std::size_t>(key - std::begin(kKeys))];
        if (text.isThere) return; // of keys with one name the first counts
        text.isThere = true;
        Widen(value, text.value);
    }

    // After the whole file was read: the contours from number 0 up to the first gap. False when a section's
    // name is there twice.
    bool Finish(std::vector<ContourDefInfo>& contours) {
        FinishSection();
        const auto byNumber = [](const Contour& a, const Contour& b) { return a.number < b.number; };
        const auto sameNumber = [](const Contour& a, const Contour& b) { return a.number == b.number; };
        std::sort(m_contours.begin(), m_contours.end(), byNumber);
        std::sort(m_otherNames.begin(), m_otherNames.end());
        if (std::adjacent_find(m_contours.begin(), m_contours.end(), sameNumber) != m_contours.end() ||
            std::adjacent_find(m_otherNames.begin(), m_otherNames.end()) != m_otherNames.end())
            return false;
        std::size_t count = 0;
        while (count < m_contours.size() && m_contours[count].number == count && m_contours[count].hasKeys)
            ++count;
        contours.reserve(contours.size() + count); // all or, should memory run out, none
        for (std::size_t i = 0; i < count; ++i) contours.push_back(m_contours[i].info);
        return true;
    }

private:
    struct Contour {
        unsigned int number;
        bool hasKeys;
        ContourDefInfo info;
    };
    struct Text {
        bool isThere = false;
        std::wstring value;
    };

    // Into a text that keeps its memory.
    static void Widen(SETTINGS::Bytes bytes, std::wstring& text) {
        text.resize(bytes.size());
        std::transform(bytes.begin(), bytes.end(), text.begin(),
                       [](char c) { return static_cast<wchar_t>(static_cast<unsigned char>(c)); });
    }

    void FinishSection() {
        if (m_isContour) Interpret(m_contours.back().info);
        m_isContour = false;
        for (Text& text : m_texts) {
            text.isThere = false;
            text.value.clear();
        }
    }

    void Interpret(ContourDefInfo& info) const {
        int index = 0;
        NumberText::Extract(m_texts[COLOR].value, index);
        auto color = static_cast<unsigned long>(DXFColor(index));
        NumberText::Extract(m_texts[TRUE_COLOR].value, color);
        info.trueColor = static_cast<std::uint32_t>(color);
        for (std::size_t type = 0; type < m_lineStyles.size(); ++type)
            if (icompareW(m_texts[LINE_TYPE].value, m_lineStyles[type]))
                info.lineType = static_cast<int>(type);
        NumberText::Extract(m_texts[ANNOTATE].value, info.annotate);
        NumberText::Extract(m_texts[LEVEL].value, info.level);
        NumberText::Extract(m_texts[LINE_WIDTH].value, info.lineWidth);
    }

    std::span<const wchar_t* const> m_lineStyles;
    bool m_isContour = false; // whether the section under way is one
    std::wstring m_name;
    std::array<Text, NUM_KEYS> m_texts;
    std::vector<Contour> m_contours;
    std::vector<std::wstring> m_otherNames; // in capitals
};

} // namespace

std::size_t ContourDefinitionList::FirstNotBelow(double level) const {
    std::size_t low = 0;
    std::size_t high = m_contours.size();
    while (low < high) {
        const std::size_t middle = low + (high - low) / 2;
        if (m_contours[middle].level < level)
            low = middle + 1;
        else
            high = middle;
    }
    return low;
}

int ContourDefinitionList::Find(double level) const {
    const std::size_t position = FirstNotBelow(level);
    if (position < m_contours.size() && m_contours[position].level == level)
        return static_cast<int>(position);
    if (position > 0 && m_contours[position - 1].level == level) return static_cast<int>(position - 1);
    return -1;
}

int ContourDefinitionList::Add(const ContourDefInfo& info) try {
    if (std::isnan(info.level)) return -1; // it has no place in an order
    const std::size_t position = FirstNotBelow(info.level);
    if (position < m_contours.size() && m_contours[position].level == info.level) return -1;
    m_contours.insert(m_contours.begin() + static_cast<std::ptrdiff_t>(position), ContourDefInfo(info));
    return Find(info.level);
} catch (const std::bad_alloc&) {
    return -1;
}

int ContourDefinitionList::Set(int position, const ContourDefInfo& info) {
    if (position < 0 || position >= NumContours()) return -1;
    ContourDefInfo& record = m_contours[static_cast<std::size_t>(position)];
    if (record.level == info.level) {
        record = info;
        return position;
    }
    const ContourDefInfo copy = info; // it may be one of the list
    Remove(position);
    return Add(copy);
}

bool ContourDefinitionList::Remove(int position) {
    if (position < 0 || position >= NumContours()) return false;
    m_contours.erase(m_contours.begin() + position);
    return true;
}

bool ContourDefinitionList::Generate(double minimum, double maximum, double step) try {
    m_contours.clear();
    if (!(minimum < maximum) || !(step > 0)) return false; // NaN too
    double first = minimum - std::fmod(minimum, step);
    if (minimum > first) first += step;
    if (std::isnan(first)) return false; // an infinite minimum has no multiples above it
    const int count = CountLevels(first, maximum, step);
    if (count < 0) return false;
    m_contours.reserve(static_cast<std::size_t>(count));
    double level = first;
    for (int i = 0; i < count; ++i, level += step) m_contours.emplace_back().level = level;
    return true;
} catch (const std::bad_alloc&) {
    return false;
}

bool ContourDefinitionList::Generate(const ColorTable& table, bool invert) try {
    m_contours.clear();
    m_contours.reserve(static_cast<std::size_t>(table.NumEntries()));
    for (int i = 0; i < table.NumEntries(); ++i) {
        ContourDefInfo& info = m_contours.emplace_back();
        info.level = table.EntryValue(i);
        const auto color = static_cast<std::uint32_t>(table.EntryColor(i));
        info.trueColor = invert ? 255u - color : color; // wraps around for anything but a pure red
    }
    return !m_contours.empty();
} catch (const std::bad_alloc&) {
    return false;
}

bool ContourDefinitionList::Save(const wchar_t* path) const try {
    if (!path || m_contours.empty()) return false;
    constexpr std::size_t kLines = 4; // of each contour; eight short ones take the room of four
    SETTINGS::Writer file(m_contours.size() * kLines);
    const auto write = [&](Key key, std::wstring_view value) {
        file.Key(kKeys[key], value, {}, kKeyWidth, 0);
    };
    const auto integer = [](unsigned long long value) { return NumberText::FromInteger(value); };
    for (std::size_t i = 0; i < m_contours.size(); ++i) {
        const ContourDefInfo& info = m_contours[i];
        const auto type = static_cast<std::size_t>(info.lineType);
        file.BeginSection(SectionName(i), {});
        write(LEVEL, NumberText::FromFixed(info.level));
        write(COLOR, integer(static_cast<unsigned>(DXFColor(RGBColor(info.trueColor)).Index())));
        write(TRUE_COLOR, integer(info.trueColor));
        write(LINE_TYPE, LINESTYLES[type < std::size(LINESTYLES) ? type : 0]);
        write(LINE_WIDTH, NumberText::FromFixed(static_cast<double>(info.lineWidth)));
        write(ANNOTATE, integer(info.annotate));
        file.EndSection();
    }
    return file.Save(path);
} catch (const std::bad_alloc&) {
    return false;
}

bool ContourDefinitionList::Load(const wchar_t* path) try {
    if (!path || !*path) return false;
    ContourReader reader(LINESTYLES);
    if (SETTINGS::Read(path, reader).status != SETTINGS::ReadStatus::COMPLETE) return false;
    return reader.Finish(m_contours) && !m_contours.empty();
} catch (const std::bad_alloc&) {
    return false;
}
