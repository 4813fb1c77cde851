// SPDX-License-Identifier: MIT
#include "apps/chartutil/sheet/scene/Degrees.h"

#include "VelmBase/NumberText.h"

#include <algorithm>
#include <cmath>

namespace {

int Decimals(const DegreeFormat& format) { return std::clamp(format.decimals, 0, 9); }

// How many of the last digit of the format a degree has.
double UnitsPerDegree(const DegreeFormat& format) {
    const double parts = format.parts == DegreeFormat::DEGREES   ? 1
                         : format.parts == DegreeFormat::MINUTES ? 60
                                                                 : 3600;
    return parts * std::pow(10, Decimals(format));
}

// A value in units of the last digit, divided into its parts.
class Divided {
public:
    Divided(double degrees, const DegreeFormat& format)
        : m_format(format), m_units(std::llround(std::fabs(degrees) * UnitsPerDegree(format))),
          m_one(std::llround(std::pow(10, Decimals(format)))) {}

    long long Units() const { return m_units; }

    std::wstring Degrees() const {
        if (m_format.parts == DegreeFormat::DEGREES) return Last(m_units) + Symbol(0);
        return std::to_wstring(m_units / (m_format.parts == DegreeFormat::MINUTES ? 60 : 3600) / m_one) +
               Symbol(0);
    }

    std::wstring Minutes() const {
        if (m_format.parts == DegreeFormat::DEGREES) return {};
        if (m_format.parts == DegreeFormat::MINUTES) return Padded(Last(m_units % (60 * m_one))) + Symbol(1);
        return Padded(std::to_wstring(m_units / (60 * m_one) % 60)) + Symbol(1) + Blank() +
               Padded(Last(m_units % (60 * m_one))) + Symbol(2);
    }

    std::wstring Blank() const { return m_format.hasSymbols ? L"" : L" "; }

private:
    std::wstring Symbol(int part) const {
        static const wchar_t* const kSymbols[] = {L"\u00B0", L"\u2032", L"\u2033"};
        return m_format.hasSymbols ? kSymbols[part] : L"";
    }

    std::wstring Last(long long units) const {
        return NumberText::FromFixed(static_cast<double>(units) / static_cast<double>(m_one),
                                     Decimals(m_format));
    }

    static std::wstring Padded(const std::wstring& text) {
        return text.size() < 2 || text[1] == L'.' ? L"0" + text : text;
    }

    const DegreeFormat& m_format;
    long long m_units, m_one;
};

bool IsUsable(double degrees) { return std::fabs(degrees) < 1e6; }

double Normal(double degrees, bool isLatitude) {
    return isLatitude ? degrees : std::remainder(degrees, 360.0);
}

} // namespace

DegreeFormat DegreeFormat::Of(const GeoGridInfo& info) {
    DegreeFormat format;
    format.parts = info.LatLonStyle() == 1 ? SECONDS : info.LatLonStyle() == 2 ? DEGREES : MINUTES;
    format.decimals = std::clamp(info.LatLonDecimals(), 0, 9);
    format.hasSymbols = info.DegMinSecSymbols();
    format.isHemisphereLast = info.TrailingHemisphereIndicator();
    return format;
}

std::wstring DegreeText(double degrees, bool isLatitude, const DegreeFormat& format) {
    if (!IsUsable(degrees)) return {};
    const double value = Normal(degrees, isLatitude);
    const Divided parts(value, format);
    std::wstring text = parts.Degrees();
    if (format.parts != DegreeFormat::DEGREES) text += parts.Blank() + parts.Minutes();
    const Divided half(180, format);
    if (parts.Units() == 0 || (!isLatitude && parts.Units() == half.Units())) return text;
    const wchar_t letter = isLatitude ? (value < 0 ? L'S' : L'N') : (value < 0 ? L'W' : L'E');
    return format.isHemisphereLast ? text + parts.Blank() + letter : letter + parts.Blank() + text;
}

std::wstring MinuteText(double degrees, bool isLatitude, const DegreeFormat& format) {
    if (format.parts == DegreeFormat::DEGREES) return DegreeText(degrees, isLatitude, format);
    return IsUsable(degrees) ? Divided(Normal(degrees, isLatitude), format).Minutes() : std::wstring();
}

DegreeFormat Shortened(double degrees, DegreeFormat format) {
    const DegreeFormat full = format;
    const double written =
        std::round(degrees * UnitsPerDegree(full)); // what the full format shows, in its units
    for (format.decimals = 0; format.decimals < Decimals(full); ++format.decimals) {
        const double units = written / UnitsPerDegree(full) * UnitsPerDegree(format);
        if (std::fabs(units - std::round(units)) < 1e-6 * std::pow(10, format.decimals - Decimals(full)))
            return format;
    }
    return full;
}

bool IsWrittenExactly(double degrees, const DegreeFormat& format) {
    const double units = degrees * UnitsPerDegree(format);
    return std::fabs(units - std::round(units)) < 1e-4;
}
