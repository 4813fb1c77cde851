// SPDX-License-Identifier: MIT
#include "UtilityDLL/contours/ContourDefinitionList.h"

#include "UtilityDLL/colors/DXFColor.h"
#include "VelmBase/NumberText.h"
#include "VelmBase/SettingsText.h"
#include "VelmBase/WideString.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <limits>
#include <new>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

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
    ContourReader(std::span<const wchar_t* const> lineStyles, bool wantsRemarks)
        : m_lineStyles(lineStyles), m_wantsRemarks(wantsRemarks) {}

    bool OnSection(SETTINGS::Bytes name) override {
        FinishSection();
        std::wstring text = SETTINGS::Widened(name);
        unsigned int number = 0;
        if (text.size() > kPrefix.size())
            NumberText::Extract(std::wstring_view(text).substr(kPrefix.size()), number);
        m_isContour = icompareW(text, SectionName(number));
        if (m_isContour) {
            m_contours.push_back({number, false, {}});
        } else {
            m_otherNames.emplace_back(text);
            for (wchar_t& c : m_otherNames.back()) c = ToUpperW(c);
        }
        if (m_wantsRemarks) m_sections.push_back({std::move(text), m_isContour ? number : kNoContour});
        return true;
    }

    void OnKey(SETTINGS::Bytes name, SETTINGS::Bytes value, SETTINGS::Bytes /*comment*/) override {
        if (!m_isContour) return;
        m_contours.back().hasKeys = true;
        Widen(name, m_name);
        const auto key = std::find_if(std::begin(kKeys), std::end(kKeys),
                                      [&](std::wstring_view known) { return icompareW(known, m_name); });
        if (key == std::end(kKeys)) {
            if (!m_name.empty()) // as a comment's is
                Remark([&] { return L"has the key " + Quoted(m_name) + L", which is not read"; });
            return;
        }
        Text& text = m_texts[static_cast<std::size_t>(key - std::begin(kKeys))];
        if (text.isThere) { // of keys with one name the first counts
            Remark([&] { return L"has the key " + Quoted(m_name) + L" again; the first one counts"; });
            return;
        }
        text.isThere = true;
        Widen(value, text.value);
    }

    // After the whole file was read: the contours from number 0 up to the first gap. False when a section's
    // name is there twice.
    bool Finish(std::vector<ContourDefInfo>& contours, std::vector<std::wstring>* remarks) {
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
        if (remarks) TakeRemarks(static_cast<unsigned int>(count), *remarks);
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
    static constexpr unsigned int kNoContour = std::numeric_limits<unsigned int>::max();
    struct SectionOfFile {
        std::wstring name;
        unsigned int contour; // its number, or kNoContour
    };
    // What is odd in one contour, in three parts: it comes out by number and not as it stands in the file,
    // and only then is it known which level is the one before.
    enum Part : std::int32_t { UP_TO_LEVEL, ORDER_OF_LEVEL, BEHIND_LEVEL };
    struct RemarkOnContour {
        unsigned int contour;
        Part part;
        std::wstring text;
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
        m_part = UP_TO_LEVEL;
        for (Text& text : m_texts) {
            text.isThere = false;
            text.value.clear();
        }
    }

    void Interpret(ContourDefInfo& info) {
        TakeNumber(LEVEL, info.level);
        if (!m_texts[LEVEL].isThere)
            Remark([] { return L"has no \"Level\", which is read as 0"; });
        else if (m_wantsRemarks)
            m_withLevel.insert(m_contours.back().number);
        m_part = BEHIND_LEVEL;
        if (TakeNumber(LINE_WIDTH, info.lineWidth) && info.lineWidth < 0)
            Remark([] { return L"has a \"LineWidth\" below 0"; });
        TakeNumber(ANNOTATE, info.annotate);
        TakeColor(info);
        TakeLineType(info);
    }

    void TakeColor(ContourDefInfo& info) {
        int index = 0;
        const bool hasIndex = TakeNumber(COLOR, index);
        if (hasIndex && (index < 0 || index > 255))
            Remark([] { return L"has a \"Color\" outside 0 to 255, which is read as 0"; });
        auto color = static_cast<unsigned long>(DXFColor(index));
        const bool hasColor = TakeNumber(TRUE_COLOR, color);
        info.trueColor = static_cast<std::uint32_t>(color);
        if (!m_wantsRemarks) return;
        const int nearest = DXFColor(color).Index();
        if (hasIndex && hasColor && nearest != index)
            Remark([&] {
                return L"has the \"Color\" " + std::to_wstring(index) +
                       L", but nearest to its \"TrueColor\" is " + std::to_wstring(nearest);
            });
        if (!m_texts[COLOR].isThere && !m_texts[TRUE_COLOR].isThere)
            Remark([] { return L"has no colour, so it is black"; });
    }

    void TakeLineType(ContourDefInfo& info) {
        const Text& text = m_texts[LINE_TYPE];
        bool isKnown = false;
        for (std::size_t type = 0; type < m_lineStyles.size(); ++type) {
            if (!icompareW(text.value, m_lineStyles[type])) continue;
            info.lineType = static_cast<int>(type);
            isKnown = true;
        }
        if (text.isThere && !isKnown)
            Remark([&] {
                return L"has the line type " + Quoted(text.value) +
                       L", which is read as continuous; known are CONTINUOUS, DASHED and DOTTED";
            });
    }

    // Whether the key is there and begins with a number of that type. One that has more behind it is taken
    // all the same, with a remark.
    template <typename Number> bool TakeNumber(Key key, Number& value) {
        const Text& text = m_texts[key];
        const bool isNumber = NumberText::Extract(text.value, value);
        if (m_wantsRemarks && text.isThere) {
            const bool isWhole = std::is_floating_point_v<Number> ? NumberText::IsDecimal(text.value)
                                                                  : NumberText::IsInteger(text.value);
            if (!isNumber || !isWhole)
                Remark([&] {
                    return L"has " + Quoted(text.value) + L" for " + Quoted(kKeys[key]) +
                           L", which is read as " + ValueText(static_cast<double>(value));
                });
        }
        return isNumber;
    }

    static std::wstring Quoted(std::wstring_view text) { return L'"' + std::wstring(text) + L'"'; }
    static std::wstring ValueText(double value) { return NumberText::FromGeneral(value, 10); }
    static std::wstring On(const std::wstring& name, const std::wstring& text) {
        return L'[' + name + L"] " + text;
    }

    // On the contour under way. The text is composed only for who asked for it.
    template <typename Compose> void Remark(const Compose& compose) {
        if (m_wantsRemarks)
            m_remarks.push_back({m_contours.back().number, m_part, On(m_sections.back().name, compose())});
    }

    // All remarks, of which the first `count` contours are read.
    void TakeRemarks(unsigned int count, std::vector<std::wstring>& remarks) {
        RemarkOnLevels(count);
        std::stable_sort(m_remarks.begin(), m_remarks.end(),
                         [](const RemarkOnContour& a, const RemarkOnContour& b) {
                             return a.contour != b.contour ? a.contour < b.contour : a.part < b.part;
                         });
        for (RemarkOnContour& remark : m_remarks)
            if (remark.contour < count) remarks.push_back(std::move(remark.text));

        const std::wstring next = SectionName(count);
        for (const SectionOfFile& section : m_sections) {
            if (section.contour < count) continue;
            std::wstring why =
                L"is not read: there is no [" + next + L"] with keys, and reading ends at the first gap";
            if (!icompareW(section.name.substr(0, kPrefix.size()), kPrefix))
                why = L"is no contour and not read";
            else if (icompareW(section.name, next))
                why = L"has no keys, so reading ends here";
            remarks.push_back(On(section.name, why));
        }
        if (count == 0) remarks.push_back(On(next, L"is missing or has no keys: the file has no contour"));
    }

    // On levels that do not ascend. A contour without one is passed over.
    void RemarkOnLevels(unsigned int count) {
        std::vector<std::wstring> names(count);
        for (const SectionOfFile& section : m_sections)
            if (section.contour < count) names[section.contour] = section.name;
        double last = 0;
        for (unsigned int i = 0; i < count; ++i) {
            if (m_withLevel.count(i) == 0) continue;
            const double level = m_contours[i].info.level;
            const auto remark = [&](const std::wstring& text) {
                if (i > 0) m_remarks.push_back({i, ORDER_OF_LEVEL, On(names[i], text)});
            };
            if (level == last)
                remark(L"has the level of the contour before, " + ValueText(level));
            else if (level < last)
                remark(L"has the level " + ValueText(level) + L" below the one before, " + ValueText(last));
            last = level;
        }
    }

    static constexpr std::wstring_view kPrefix = L"Contour(";

    std::span<const wchar_t* const> m_lineStyles;
    bool m_isContour = false; // whether the section under way is one
    std::wstring m_name;
    std::array<Text, NUM_KEYS> m_texts;
    std::vector<Contour> m_contours;
    std::vector<std::wstring> m_otherNames; // in capitals

    // For remarks alone.
    bool m_wantsRemarks;
    Part m_part = UP_TO_LEVEL;
    std::vector<SectionOfFile> m_sections; // in file order
    std::set<unsigned int> m_withLevel;    // the contours that have the key
    std::vector<RemarkOnContour> m_remarks;
};

} // namespace

// Exported, for hosts that bind a reference to it.
constexpr int ContourDefinitionList::MAX_GENERATED; // NOLINT(readability-redundant-declaration)

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

bool ContourDefinitionList::Remove(int position) { return Remove(position, 1); }

bool ContourDefinitionList::Remove(int first, int count) {
    if (first < 0 || count < 1 || first >= NumContours() || count > NumContours() - first) return false;
    const auto begin = m_contours.begin() + first;
    m_contours.erase(begin, begin + count);
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

bool ContourDefinitionList::Save(const wchar_t* path) const {
    std::error_code ignored;
    return Save(path, ignored);
}

bool ContourDefinitionList::Save(const wchar_t* path, std::error_code& error) const try {
    error = std::make_error_code(std::errc::no_message);
    if (m_contours.empty()) return false;
    error = SETTINGS::Save(path ? path : L"", [this](SETTINGS::Writer& file) { Compose(file); });
    return !error;
} catch (const std::bad_alloc&) {
    error = std::make_error_code(std::errc::not_enough_memory);
    return false;
}

bool ContourDefinitionList::Write(const FILES::ContentSink& sink) const {
    SETTINGS::Writer file(sink);
    Compose(file);
    return file.Finish();
}

void ContourDefinitionList::Compose(SETTINGS::Writer& file) const {
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
}

bool ContourDefinitionList::Load(const wchar_t* path, std::vector<std::wstring>* remarks) try {
    if (!path || !*path) return false;
    ContourReader reader(LINESTYLES, remarks != nullptr);
    if (SETTINGS::Read(path, reader).status != SETTINGS::ReadStatus::COMPLETE) return false;
    return reader.Finish(m_contours, remarks) && !m_contours.empty();
} catch (const std::bad_alloc&) {
    return false;
}

bool ContourDefinitionList::ReadText(std::string_view content, std::vector<std::wstring>* remarks) try {
    ContourReader reader(LINESTYLES, remarks != nullptr);
    if (SETTINGS::ReadText(content, reader).status != SETTINGS::ReadStatus::COMPLETE) return false;
    return reader.Finish(m_contours, remarks) && !m_contours.empty();
} catch (const std::bad_alloc&) {
    return false;
}
