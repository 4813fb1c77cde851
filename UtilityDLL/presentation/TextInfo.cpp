// SPDX-License-Identifier: MIT
#include "UtilityDLL/presentation/TextInfo.h"

#include "UtilityDLL/presentation/private/Fields.h"
#include "UtilityDLL/presentation/private/OneLineForm.h"

#include <cmath>
#include <iterator>

namespace {

// What a justification is elsewhere, indexed by it.
struct JustificationCodes {
    int horizontal, vertical, attachment; // of the DXF format
    int windows;                          // flags of the text alignment
    TextInfo::JUSTIFICATION reflected;    // through the middle of the box
};
constexpr JustificationCodes kJustifications[] = {
    {0, 1, 7, 8, TextInfo::TOP_RIGHT},      // bottom left
    {1, 1, 8, 14, TextInfo::TOP_CENTER},    // bottom centre
    {2, 1, 9, 10, TextInfo::TOP_LEFT},      // bottom right
    {2, 2, 6, 10, TextInfo::MIDDLE_LEFT},   // middle right
    {2, 3, 3, 2, TextInfo::BOTTOM_LEFT},    // top right
    {1, 3, 2, 6, TextInfo::BOTTOM_CENTER},  // top centre
    {0, 3, 1, 0, TextInfo::BOTTOM_RIGHT},   // top left
    {0, 2, 4, 8, TextInfo::MIDDLE_RIGHT},   // middle left
    {1, 2, 5, 14, TextInfo::MIDDLE_CENTER}, // middle centre
    {0, 0, 7, 24, TextInfo::TOP_RIGHT},     // baseline left
    {1, 0, 1, 30, TextInfo::TOP_CENTER},    // baseline centre: attached at the top left
    {2, 0, 1, 26, TextInfo::TOP_LEFT},      // baseline right: likewise
};
static_assert(std::size(kJustifications) == TextInfo::BASELINE_RIGHT + 1);

// For a justification without a name. `reflected` does not count.
constexpr JustificationCodes kUnknown = {0, 0, 1, 24, TextInfo::BOTTOM_LEFT};

const JustificationCodes& CodesOf(TextInfo::JUSTIFICATION justification) {
    const auto number = static_cast<std::size_t>(justification);
    return number < std::size(kJustifications) ? kJustifications[number] : kUnknown;
}

// Attachment points 1 to 9.
constexpr TextInfo::JUSTIFICATION kAttachments[] = {
    TextInfo::TOP_LEFT,    TextInfo::TOP_CENTER,    TextInfo::TOP_RIGHT,
    TextInfo::MIDDLE_LEFT, TextInfo::MIDDLE_CENTER, TextInfo::MIDDLE_RIGHT,
    TextInfo::BOTTOM_LEFT, TextInfo::BOTTOM_CENTER, TextInfo::BOTTOM_RIGHT,
};

// The horizontal code and ten times the vertical one; 4 is the horizontal code "middle".
struct AcadJustification {
    int key;
    TextInfo::JUSTIFICATION justification;
};
constexpr AcadJustification kAcadJustifications[] = {
    {0, TextInfo::BASELINE_LEFT}, {1, TextInfo::BASELINE_CENTER}, {2, TextInfo::BASELINE_RIGHT},
    {4, TextInfo::BOTTOM_CENTER}, {11, TextInfo::BOTTOM_CENTER},  {12, TextInfo::BOTTOM_RIGHT},
    {20, TextInfo::MIDDLE_LEFT},  {21, TextInfo::MIDDLE_CENTER},  {22, TextInfo::MIDDLE_RIGHT},
    {30, TextInfo::TOP_LEFT},     {31, TextInfo::TOP_CENTER},     {32, TextInfo::TOP_RIGHT},
};

constexpr unsigned int kNumStyles = 8;
constexpr unsigned int kNumAnnotations = 4;
constexpr unsigned int kNumJustifications = static_cast<unsigned int>(std::size(kJustifications));

// A line is read with justifications 0 to 8 only: a baseline in a line leaves the default.
constexpr unsigned int kNumJustificationsInALine = TextInfo::BASELINE_LEFT;

// A depth label's line from before true colours: nine items of text style and five of the label.
constexpr int kItemsOfOldDepthLabel = 14;

} // namespace

template <typename Exchange, typename Record> bool TextInfo::Fields(Exchange field, Record& record) {
    field(L"Font"_key, record.m_font, FORM::Text());
    field(L"Size"_key, record.m_size);
    field(L"Style"_key, record.m_style, FORM::Number{kNumStyles});
    field(L"Justification"_key, record.m_justification, FORM::Number{kNumJustifications});
    field(L"Color"_key, record.m_color, FORM::IndexedColor());
    field(L"Rotation"_key, record.m_rotation, FORM::Degrees());
    field(L"RectWidth"_key, record.m_rectWidth);
    field(L"MultiLine"_key, record.m_multiLine);
    field(L"Annotation"_key, record.m_annotation, FORM::Number{kNumAnnotations});
    field(L"TrueColor"_key, record.m_color);
    return true;
}

bool TextInfo::Read(const Section& section) { return Fields(FieldReader(section), *this); }
bool TextInfo::Read(const std::wstring& prefix, const Section& section) {
    return Fields(FieldReader(section, prefix), *this);
}
bool TextInfo::Write(Section& section) const { return Fields(FieldWriter(section), *this); }
bool TextInfo::Write(const std::wstring& prefix, Section& section) const {
    return Fields(FieldWriter(section, prefix), *this);
}

void TextInfo::SetFont(const std::wstring& font) {
    if (font.empty())
        m_font = L"Arial";
    else
        m_font = font;
}

bool TextInfo::operator==(const TextInfo& other) const {
    return icompareW(m_font, other.m_font) && m_size == other.m_size && m_style == other.m_style &&
           m_annotation == other.m_annotation && MATH::equal(m_rotation.Get(), other.m_rotation.Get()) &&
           m_color == other.m_color && m_justification == other.m_justification &&
           m_rectWidth == other.m_rectWidth && m_multiLine == other.m_multiLine;
}

bool TextInfo::operator<(const TextInfo& other) const {
    const int fonts = CompareNoCaseW(m_font, other.m_font);
    if (fonts != 0) return fonts < 0;
    // Without its own place, behind all numbers, NaN would be equivalent to sizes that are not so to each
    // other.
    const bool isSizeNan = std::isnan(m_size);
    const bool isOtherNan = std::isnan(other.m_size);
    if (isSizeNan != isOtherNan) return isOtherNan;
    if (!isSizeNan && m_size != other.m_size) return m_size < other.m_size;
    return m_style < other.m_style;
}

template <typename Items> void TextInfo::ListItems(Items& items) const {
    items.Add(L"Font", m_font);
    items.Add(L"Size", m_size);
    items.Add(L"Style", m_style);
    items.Add(L"Justification", m_justification);
    items.Add(L"Color", DXFColor(m_color).Index());
    items.Add(L"Rotation", m_rotation.Get());
    items.Add(L"RectWidth", m_rectWidth);
    items.Add(L"MultiLine", m_multiLine);
    items.Add(L"Annotation", m_annotation);
    items.Add(L"TrueColor", m_color);
}

std::wstring TextInfo::ToString() const {
    OneLineForm line;
    ListItems(line);
    return line.Text();
}

std::vector<std::wstring> TextInfo::OneLineItems() {
    OneLineItemNames items;
    TextInfo().ListItems(items);
    return items.Names();
}

void TextInfo::FromString(const std::wstring& line) {
    const FormatString items = SplitOneLineForm(line); // first, since the line may be this record's font
    *this = TextInfo();
    FromString(items);
}

int TextInfo::FromString(const FormatString& items) {
    const int count = items.NumItems();
    if (count > 0) m_font = items.Item(0);
    if (count > 1) m_size = static_cast<float>(atof(items.Item(1)));
    ReadNumberBelow(kNumStyles, items, 2, m_style);
    ReadNumberBelow(kNumJustificationsInALine, items, 3, m_justification);
    if (count > 4) m_color = DXFColor(atoi(items.Item(4)));
    if (count > 5) m_rotation = Angle(atof(items.Item(5)));
    if (count > 6) m_rectWidth = static_cast<float>(atof(items.Item(6)));
    if (count > 7) m_multiLine = atoi(items.Item(7)) != 0;
    ReadNumberBelow(kNumAnnotations, items, 8, m_annotation);
    if (count == kItemsOfOldDepthLabel) return 9;
    if (count > 9) m_color = static_cast<std::uint32_t>(atoi(items.Item(9)));
    return 10;
}

int TextInfo::AcadHJust() const { return CodesOf(m_justification).horizontal; }
int TextInfo::AcadVJust() const { return CodesOf(m_justification).vertical; }
int TextInfo::AcadAttachmentPoint() const { return CodesOf(m_justification).attachment; }
int TextInfo::WinAlignment() const { return CodesOf(m_justification).windows; }

void TextInfo::FromAcadJust(int hJust, int vJust) {
    const long long key = hJust + 10LL * vJust;
    const auto found = std::find_if(std::begin(kAcadJustifications), std::end(kAcadJustifications),
                                    [key](const AcadJustification& entry) { return entry.key == key; });
    m_justification = found != std::end(kAcadJustifications) ? found->justification : BOTTOM_LEFT;
}

void TextInfo::AcadAttachmentPoint(int point) {
    const bool isPoint = point >= 1 && point <= static_cast<int>(std::size(kAttachments));
    m_justification = isPoint ? kAttachments[point - 1] : BOTTOM_LEFT;
}

bool TextInfo::IsUpsideDown(const Angle& reference) const {
    const double difference = (m_rotation - reference).Get();
    return difference >= 90.0 && difference < 270.0;
}

void TextInfo::OptTextAngle(Angle reference) {
    if (IsUpsideDown(reference)) m_rotation += Angle(180.0);
}

TextInfo TextInfo::OptTextAngleJust(Angle reference) const {
    TextInfo turned(*this);
    if (!IsUpsideDown(reference)) return turned;
    turned.OptTextAngle(reference);
    if (static_cast<std::size_t>(m_justification) < std::size(kJustifications))
        turned.m_justification = CodesOf(m_justification).reflected;
    return turned;
}
