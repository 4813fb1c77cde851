// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/Export.h"
#include "UtilityDLL/GTL/Angle.h"
#include "UtilityDLL/settings/Section.h"
#include "VelmBase/FormatString.h"

#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

/// How a piece of annotation text is drawn on a plot or chart. Lengths are in the plot's unit.
class UTILITYDLL_API TextInfo {
public:
    /// A set of flags; every combination, 0 to 7, is valid.
    enum STYLE : std::int32_t { REGULAR = 0, BOLD = 1, ITALIC = 2, UNDERLINE = 4 };
    /// Sets of flags, combined bit by bit.
    /// @{
    friend constexpr STYLE operator|(STYLE a, STYLE b) { return STYLE(+a | +b); }
    friend constexpr STYLE operator&(STYLE a, STYLE b) { return STYLE(+a & +b); }
    friend constexpr STYLE operator~(STYLE a) { return STYLE(~+a); }
    friend constexpr STYLE& operator|=(STYLE& a, STYLE b) { return a = a | b; }
    friend constexpr STYLE& operator&=(STYLE& a, STYLE b) { return a = a & b; }
    /// @}

    /// Which point of the text box sits on the insertion point: 0 to 7 anticlockwise round the box. The
    /// numbers are stored in files.
    enum JUSTIFICATION : std::int32_t {
        BOTTOM_LEFT,
        BOTTOM_CENTER,
        BOTTOM_RIGHT,
        MIDDLE_RIGHT,
        TOP_RIGHT,
        TOP_CENTER,
        TOP_LEFT,
        MIDDLE_LEFT,
        MIDDLE_CENTER,
        BASELINE_LEFT,
        BASELINE_CENTER,
        BASELINE_RIGHT,
    };

    /// The kind of annotation. What each draws is up to the plotting clients.
    enum ANNOTATION : std::int32_t { ANNOTATION_0, ANNOTATION_1, ANNOTATION_2, ANNOTATION_3 };

protected:
    /// Reads the items of a one-line form over the present values, and returns the index of the first item
    /// that a derived record may read: 9 where there are exactly 14 (see DepthLabelInfo), else 10. Of a line
    /// longer than 1000 items the last one is the whole rest.
    virtual int FromString(const FormatString& items);

public:
    virtual ~TextInfo() = default;

    /// A value. At first Arial 2.5, regular, black, bottom left, without rotation.
    /// @{
    TextInfo() = default;
    TextInfo(const TextInfo& other) = default;
    TextInfo(TextInfo&& other) = default;
    TextInfo& operator=(const TextInfo& other) = default;
    TextInfo& operator=(TextInfo&& other) = default;
    /// @}

    const std::wstring& Font() const { return m_font; }             ///< the face's name
    float Size() const { return m_size; }                           ///< the text's height
    STYLE Style() const { return m_style; }                         ///< a set of flags
    ANNOTATION Annotation() const { return m_annotation; }          ///< what is annotated
    const Angle& Rotation() const { return m_rotation; }            ///< the text's direction
    JUSTIFICATION Justification() const { return m_justification; } ///< the insertion point

    /// False for a justification without a name.
    bool IsOnBaseline() const {
        return m_justification >= BASELINE_LEFT && m_justification <= BASELINE_RIGHT;
    }

    const unsigned long& Color() const { return m_color; } ///< a colour reference
    float RectWidth() const { return m_rectWidth; }        ///< what multi-line text is wrapped into
    bool MultiLine() const { return m_multiLine; }         ///< whether the text is wrapped

    /// An empty name gives "Arial".
    void SetFont(const std::wstring& font);

    /// Both store the absolute value.
    /// @{
    void SetSize(float size) { m_size = std::fabs(size); }
    void SetRectWidth(float width) { m_rectWidth = std::fabs(width); }
    /// @}

    /// Stored as given; of a colour 32 bits.
    /// @{
    void SetStyle(STYLE style) { m_style = style; }
    void SetAnnotation(ANNOTATION annotation) { m_annotation = annotation; }
    void SetRotation(const Angle& rotation) { m_rotation = rotation; }
    void SetJustification(JUSTIFICATION justification) { m_justification = justification; }
    void SetColor(const unsigned long& color) { m_color = static_cast<std::uint32_t>(color); }
    void SetMultiLine(bool multiLine) { m_multiLine = multiLine; }
    /// @}

    /// Ignores the letter case of the font and is tolerant in the rotation (MATH::equal); exact in the rest.
    bool operator==(const TextInfo& other) const;

    /// The order for measuring text: by font (ignoring letter case), size and style. Nothing else counts, so
    /// that two styles that differ in colour are neither less nor greater, yet not equal.
    bool operator<(const TextInfo& other) const;

    /// Keys: Font, Size, Style, Justification, Color (DXF index), Rotation (degrees), RectWidth, MultiLine,
    /// Annotation, TrueColor; with a prefix as in "Title.Font". Always true. A missing Color counts as index
    /// 0, and TrueColor goes before it; the other fields keep their values where their key is missing, and so
    /// do style, justification and annotation at a number that they do not have.
    /// @{
    bool Read(const Section& section);
    bool Read(const std::wstring& prefix, const Section& section);
    bool Write(Section& section) const;
    bool Write(const std::wstring& prefix, Section& section) const;
    /// @}

    /// "font,size,style,justification,index,rotation,width,multiline,annotation,color", as in
    /// "Arial,2.5,0,0,0,0,0,0,0,0". Numbers have six significant digits. A comma in the font's name splits it
    /// when the line is read, and a colour reference above 2147483647 becomes 2147483647.
    std::wstring ToString() const;

    /// The names of that line's items, in its order; they are those of the keys.
    static std::vector<std::wstring> OneLineItems();

    /// Resets to the defaults and reads the items that the line has. A text that is no number counts as 0. A
    /// style, annotation or justification out of range keeps its default, and so does a baseline
    /// justification. An empty font stays empty, and sizes keep their sign.
    void FromString(const std::wstring& line);

    /// The codes of the DXF format: horizontal 0 left, 1 centre, 2 right; vertical 0 baseline, 1 bottom, 2
    /// middle, 3 top; attachment point of multi-line text 1 to 9, from top left by rows.
    /// @{
    int AcadHJust() const;
    int AcadVJust() const;
    int AcadAttachmentPoint() const;
    /// @}

    /// Takes the justification of these codes of the DXF format; BOTTOM_LEFT for codes that have none.
    /// @{
    void FromAcadJust(int hJust, int vJust);
    void AcadAttachmentPoint(int point);
    /// @}

    /// The alignment flags of Windows' text output. It has no vertical middle, so this becomes bottom.
    int WinAlignment() const;

    /// Keeps text from reading upside down in a view rotated by `reference`: text that points 90 degrees or
    /// more but less than 270 away from it is turned by 180.
    void OptTextAngle(Angle reference);

    /// A copy to which the same was done; where it was turned, its justification is reflected through the
    /// middle of the box as well, so that the text covers the same area. Baselines become tops.
    TextInfo OptTextAngleJust(Angle reference) const;

private:
    template <typename Exchange, typename Record> static bool Fields(Exchange field, Record& record);
    template <typename Items> void ListItems(Items& items) const;
    bool IsUpsideDown(const Angle& reference) const;

    std::wstring m_font = L"Arial";
    float m_size = 2.5f;
    STYLE m_style = REGULAR;
    ANNOTATION m_annotation = ANNOTATION_0;
    Angle m_rotation;
    JUSTIFICATION m_justification = BOTTOM_LEFT;
    unsigned long m_color = 0;
    float m_rectWidth = 0.0f;
    bool m_multiLine = false;
};
