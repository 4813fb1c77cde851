#include "apps/chartutil/commands/contours/ContourCheck.h"

#include "UtilityDLL/colors/DXFColor.h"
#include "VelmBase/NumberText.h"
#include "VelmBase/WideString.h"
#include "apps/chartutil/commands/contours/LineTypes.h"
#include "apps/chartutil/terminal/Numbers.h"

#include <algorithm>
#include <set>

namespace {

std::string SectionName(int position) { return "Contour(" + std::to_string(position) + ")"; }

// What is odd in a file, each with the section that it is in.
class Checker {
public:
    explicit Checker(const IniFile& file) : m_file(file) { Check(); }
    const std::vector<std::string>& Findings() const { return m_findings; }
    int NumContours() const { return m_count; }

private:
    void Check() {
        while (m_file[FromUtf8(SectionName(m_count))].NumKeys() > 0)
            CheckContour(m_file[FromUtf8(SectionName(m_count++))]);
        const std::string next = SectionName(m_count);
        for (int i = 0; i < m_file.NumSections(); ++i) {
            const std::string name = ToUtf8(m_file[i].GetName().String());
            if (m_numbered.count(&m_file[i])) continue;
            if (!icompareW(m_file[i].GetName().String().substr(0, 8), L"Contour("))
                Add(name, "is no contour and not read");
            else if (icompareW(m_file[i].GetName().String(), FromUtf8(next)))
                Add(name, "has no keys, so reading ends here");
            else
                Add(name,
                    "is not read: there is no [" + next + "] with keys, and reading ends at the first gap");
        }
        if (m_count == 0) Add(next, "is missing or has no keys: the file has no contour");
    }

    void CheckContour(const Section& section) {
        m_numbered.insert(&section);
        const std::string name = ToUtf8(section.GetName().String());
        CheckKeys(section, name);
        double level = 0;
        if (CheckNumber(section, name, L"Level", level) || section.HasKey(L"Level")) {
            if (m_count > 1 && level == m_lastLevel)
                Add(name, "has the level of the contour before, " + GeneralText(level));
            else if (m_count > 1 && level < m_lastLevel)
                Add(name, "has the level " + GeneralText(level) + " below the one before, " +
                              GeneralText(m_lastLevel));
            m_lastLevel = level;
        } else {
            Add(name, "has no \"Level\", which is read as 0");
        }
        float width = 0;
        if (CheckNumber(section, name, L"LineWidth", width) && width < 0)
            Add(name, "has a \"LineWidth\" below 0");
        bool annotate = false;
        CheckNumber(section, name, L"Annotate", annotate);
        CheckColors(section, name);
        const std::wstring& type = section[L"LineType"].GetValue();
        if (section.HasKey(L"LineType") &&
            !std::any_of(kLineTypes.begin(), kLineTypes.end(),
                         [&](const std::string& known) { return icompareW(FromUtf8(known), type); }))
            Add(name, "has the line type \"" + ToUtf8(type) +
                          "\", which is read as continuous; known are CONTINUOUS, "
                          "DASHED and DOTTED");
    }

    void CheckKeys(const Section& section, const std::string& name) {
        constexpr std::wstring_view kKnown[] = {L"Level",    L"Color",     L"TrueColor",
                                                L"LineType", L"LineWidth", L"Annotate"};
        for (int i = 0; i < section.NumKeys(); ++i) {
            const SectionKey& key = section[i];
            if (!key.IsValid()) continue; // a comment
            const std::string text = "the key \"" + ToUtf8(key.GetName().String()) + "\"";
            if (std::none_of(std::begin(kKnown), std::end(kKnown), [&](std::wstring_view known) {
                    return icompareW(known, key.GetName().String());
                }))
                Add(name, "has " + text + ", which is not read");
            else if (&section[key.GetName().String()] != &key)
                Add(name, "has " + text + " again; the first one counts");
        }
    }

    void CheckColors(const Section& section, const std::string& name) {
        int index = 0;
        const bool hasIndex = CheckNumber(section, name, L"Color", index);
        if (hasIndex && (index < 0 || index > 255))
            Add(name, "has a \"Color\" outside 0 to 255, which is read as 0");
        unsigned long color = 0;
        const bool hasColor = CheckNumber(section, name, L"TrueColor", color);
        if (hasIndex && hasColor && DXFColor(RGBColor(color)).Index() != index)
            Add(name, "has the \"Color\" " + std::to_string(index) +
                          ", but nearest to its \"TrueColor\" is " +
                          std::to_string(DXFColor(RGBColor(color)).Index()));
        if (!section.HasKey(L"Color") && !section.HasKey(L"TrueColor"))
            Add(name, "has no colour, so it is black");
    }

    // Whether the key is there and reads as a number; what else stands there is a finding.
    template <typename Number>
    bool CheckNumber(const Section& section, const std::string& name, const wchar_t* key, Number& value) {
        if (!section.HasKey(key)) return false;
        const std::wstring& text = section[key].GetValue();
        const bool isNumber = NumberText::Extract(text, value);
        const bool isWhole =
            std::is_floating_point_v<Number> ? NumberText::IsDecimal(text) : NumberText::IsInteger(text);
        if (!isNumber || !isWhole)
            Add(name, "has \"" + ToUtf8(text) + "\" for \"" + ToUtf8(key) + "\", which is read as " +
                          GeneralText(static_cast<double>(value)));
        return isNumber;
    }

    void Add(const std::string& section, const std::string& what) {
        m_findings.push_back("[" + section + "] " + what);
    }

    const IniFile& m_file;
    int m_count = 0;
    double m_lastLevel = 0;
    std::set<const Section*> m_numbered;
    std::vector<std::string> m_findings;
};

} // namespace

ContourFindings CheckContours(const IniFile& file) {
    const Checker checker(file);
    return {checker.NumContours(), checker.Findings()};
}
