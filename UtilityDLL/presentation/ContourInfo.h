// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/Export.h"
#include "UtilityDLL/settings/Section.h"

#include <cstdint>

/// Whether and how contour lines are generated and labelled on a chart. Lengths are in the unit of the
/// chart's coordinates, and nothing is checked.
class UTILITYDLL_API ContourInfo {
public:
    /// How the text of a label is turned.
    enum label_orientation : std::int32_t {
        OPTIMUM_TEXT_ANGLE, ///< never upside down: see TextInfo::OptTextAngle
        LOW_TO_HIGH,        ///< from low to high contour values
        HIGH_TO_LOW,        ///< from high to low contour values
    };

    /// A value. At first contours are generated, with labels 20 apart, none left out, and no smoothing
    /// (window 0, one pass).
    /// @{
    ContourInfo() = default;
    ContourInfo(const ContourInfo& other) = default;
    ContourInfo& operator=(const ContourInfo& other) = default;
    /// @}

    virtual ~ContourInfo() = default;

    bool GetEnableContouring() const { return m_enableContouring; }     ///< whether contours are generated
    float GetLabelSpacing() const { return m_labelSpacing; }            ///< along a line
    double GetSuppressionLength() const { return m_suppressionLength; } ///< shorter contours are left out
    int GetSmoothingWindow() const { return m_smoothingWindow; }        ///< meant to be 0 to 8
    int GetSmoothingPasses() const { return m_smoothingPasses; }        ///< how often a line is smoothed
    label_orientation GetLabelOrientation() const { return m_labelOrientation; } ///< how labels are turned

    /// All are stored as given.
    /// @{
    void SetEnableContouring(bool enable) { m_enableContouring = enable; }
    void SetLabelSpacing(float spacing) { m_labelSpacing = spacing; }
    void SetSuppressionLength(double length) { m_suppressionLength = length; }
    void SetSmoothingWindow(int window) { m_smoothingWindow = window; }
    void SetSmoothingPasses(int passes) { m_smoothingPasses = passes; }
    void SetLabelOrientation(label_orientation orientation) { m_labelOrientation = orientation; }
    /// @}

    /// Tolerant in spacing and length (MATH::equal), exact in the rest.
    bool operator==(const ContourInfo& other) const;

    /// Keys: SmoothingWindow, ContourLabelSpacing, SuppressionLength, SmoothingPasses, EnableContouring,
    /// LabelOrientation ("OptimumTextAngle", "LowToHigh" or "HighToLow"; empty for another value). A file's
    /// older key LabelSpacing is read too; ContourLabelSpacing goes before it.
    ///
    /// Read() is false every time: do not take its result for an error. An orientation's name counts in its
    /// exact letter case; any other text, and a missing key, gives OPTIMUM_TEXT_ANGLE. The other fields keep
    /// their values where their key is missing. Write() is always true.
    /// @{
    bool Read(const Section& section);
    bool Write(Section& section) const;
    /// @}

private:
    template <typename Exchange, typename Record> static bool Fields(Exchange field, Record& record);

    bool m_enableContouring = true;
    float m_labelSpacing = 20.0f;
    double m_suppressionLength = 0.0;
    int m_smoothingWindow = 0;
    int m_smoothingPasses = 1;
    label_orientation m_labelOrientation = OPTIMUM_TEXT_ANGLE;
};
