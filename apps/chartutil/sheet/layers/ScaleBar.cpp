// SPDX-License-Identifier: MIT
#include "UtilityDLL/GTL/UnitType.h"
#include "VelmBase/NumberText.h"
#include "apps/chartutil/sheet/layers/PanelContent.h"
#include "apps/chartutil/sheet/layers/TitleText.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kMetresPerMile = 1852; // by definition

// A bar of equal parts to the right of zero, and one more to the left of it that is divided further.
struct Bar {
    std::wstring name;
    double part;   // its length in the bar's unit
    double partMm; // and on the paper
    int parts;     // to the right of zero
    int divisions; // of the part to the left

    double Length() const { return partMm * (parts + 1); }
};

Bar BarOf(const std::wstring& name, double metresPerUnit, double unitsPerMm, double room) {
    const double mmPerUnit = UnitType(UnitType::M).Convert(UnitType::MM, metresPerUnit) / (unitsPerMm * 1000);
    constexpr int kFewest = 3, kMost = 6; // parts, with that to the left
    const double part = RoundLength(room / mmPerUnit / kFewest);
    const double partMm = part * mmPerUnit;
    const int parts = std::min(static_cast<int>(room / partMm), kMost) - 1;
    constexpr double kShortest = 1; // millimetres
    const int divisions = partMm / 10 >= kShortest ? 10 : partMm / 5 >= kShortest ? 5 : 2;
    return {name, part, partMm, std::max(parts, 1), divisions};
}

class Drawing {
public:
    Drawing(const Sheet& sheet, double width)
        : m_panel(sheet.project.scaleBar), m_size(static_cast<double>(m_panel.text.Size())),
          m_scale(PlaceCentred(m_panel.heading, L"SCALE " + ScaleText(sheet.frame), 0, 0, 0)),
          m_nameHeight(HeightOf(PlaceCentred(m_panel.subheading, L"M", 0, 0, 0))),
          m_numberHeight(HeightOf(PlaceCentred(m_panel.text, L"0", 0, 0, 0))) {
        const double room = std::max(width - Overhang() * 2, m_size * 12);
        for (const auto& [name, metres] :
             {std::pair(L"NAUTICAL MILES", kMetresPerMile), std::pair(L"METRES", 1.0)})
            m_bars.push_back(BarOf(name, metres, sheet.frame.UnitsPerMm(), room));
    }

    double Width() const {
        double width = WidthOf(m_scale);
        for (const Bar& bar : m_bars) width = std::max(width, bar.Length() + Overhang() * 2);
        return width;
    }
    double Height() const {
        return HeightOf(m_scale) + m_size * 0.4 - m_size + static_cast<double>(m_bars.size()) * BarHeight();
    }

    void Draw(const Occupied::Box& box, Surface& surface) const {
        const double middle = (box.left + box.right) / 2;
        PlacedText scale = m_scale;
        scale.place = {middle, box.top};
        scale.Draw(surface);
        double y = box.top + HeightOf(m_scale) + m_size * 0.4;
        for (const Bar& bar : m_bars) {
            DrawBar(bar, middle, y, surface);
            y += BarHeight();
        }
    }

private:
    double FieldHeight() const { return m_size * 0.28; }
    double BarHeight() const { return m_nameHeight + m_numberHeight + 2 * FieldHeight() + m_size; }
    double Overhang() const { return m_size * 2.2; } // of the numbers at the ends

    // Two rows of alternating fields, numbers above them and the unit above those.
    void DrawBar(const Bar& bar, double middle, double top, Surface& surface) const {
        const RGBColor ink(m_panel.text.Color());
        const Surface::Pen pen{ink, 0.12};
        const double left = middle - bar.Length() / 2, zero = left + bar.partMm;
        const double high = FieldHeight(), upper = top + m_nameHeight + m_numberHeight, lower = upper + high;
        PlaceCentred(m_panel.subheading, bar.name, 0, middle, top).Draw(surface);
        TextInfo style = m_panel.text;
        style.SetJustification(TextInfo::BOTTOM_CENTER);
        const auto number = [&](double value, double x) {
            PlaceText(style, NumberText::FromGeneral(value, 9), {x, upper - m_size * 0.1}).Draw(surface);
        };
        bool isUpper = true;
        const auto field = [&](double x, double width) {
            surface.Rectangle(x, isUpper ? upper : lower, width, high, ink);
            isUpper = !isUpper;
        };
        const double step = bar.partMm / bar.divisions;
        for (int i = 0; i < bar.divisions; ++i) field(left + i * step, step);
        for (int i = 0; i < bar.parts; ++i) field(zero + i * bar.partMm, bar.partMm);
        surface.Frame(left, upper, bar.Length(), 2 * high, pen);
        surface.Line(left, lower, left + bar.Length(), lower, pen);
        number(bar.part, left);
        for (int i = 0; i <= bar.parts; ++i) number(bar.part * i, zero + i * bar.partMm);
    }

    const Panel& m_panel;
    double m_size;
    PlacedText m_scale;
    double m_nameHeight, m_numberHeight;
    std::vector<Bar> m_bars;
};

} // namespace

double RoundLength(double length) {
    const double power = std::pow(10, std::floor(std::log10(length)));
    for (const double round : {5.0, 2.0, 1.0})
        if (round * power <= length) return round * power;
    return power;
}

PanelContent ScaleBar(const Sheet& sheet, double width) {
    if (sheet.scene.system && sheet.scene.system->IsGeographic()) return {};
    const Drawing drawing(sheet, width);
    return {drawing.Width(), drawing.Height(),
            [drawing](const Occupied::Box& box, Surface& surface) { drawing.Draw(box, surface); }};
}
