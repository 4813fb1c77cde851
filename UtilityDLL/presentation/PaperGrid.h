// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/Export.h"
#include "UtilityDLL/GTL/Point2D.h"
#include "UtilityDLL/settings/Section.h"
#include "VelmBase/ErrorString.h"

#include <cmath>

/// The grid on paper on which a plot layout is edited. Lengths are in the layout's unit.
class UTILITYDLL_API PaperGrid {
public:
    /// Stores the absolute values of the steps; unlike the setters it takes steps below 1.
    PaperGrid(double xStep = 1.0, double yStep = 1.0, const GTL::Point2D<float>& origin = {},
              bool snapOn = true, bool visible = true)
        : m_xStep(std::fabs(xStep)), m_yStep(std::fabs(yStep)), m_origin(origin), m_snapOn(snapOn),
          m_visible(visible) {}

    /// A value that is copied as a whole.
    /// @{
    PaperGrid(const PaperGrid& other) = default;
    PaperGrid& operator=(const PaperGrid& other) = default;
    /// @}

    virtual ~PaperGrid() = default;

    double XStep() const { return m_xStep; }                       ///< between grid points along x
    double YStep() const { return m_yStep; }                       ///< between grid points along y
    const GTL::Point2D<float>& Origin() const { return m_origin; } ///< a point of the grid
    bool SnapOn() const { return m_snapOn; }   ///< whether positions are to snap to the grid
    bool Visible() const { return m_visible; } ///< whether the grid is drawn

    /// The steps are stored as their absolute value, and as 1 where that is less.
    /// @{
    void XStep(double step) { m_xStep = AtLeastOne(step); }
    void YStep(double step) { m_yStep = AtLeastOne(step); }
    void SetOrigin(const GTL::Point2D<float>& origin) { m_origin = origin; }
    void SnapOn(bool snapOn) { m_snapOn = snapOn; }
    void Visible(bool visible) { m_visible = visible; }
    /// @}

    /// Shows a grid that is hidden, and hides one that is shown.
    void ToggleVisible() { m_visible = !m_visible; }

    /// The grid point nearest to `p`; half way between two, the one that lies further from the origin. It
    /// does not look at SnapOn(). In a direction with step 0 there is no grid, and the coordinate stays. A
    /// step that was read from a file is not checked: one of 1e-320, say, gives places that are not finite.
    GTL::Point2D<double> SnapToGrid(const GTL::Point2D<double>& p) const;

    /// Tolerant in steps and origin (MATH::equal), exact in the rest.
    bool operator==(const PaperGrid& other) const;

    /// Keys: XStep, YStep, Visible, SnapOn, OringinX, OringinY. Always success. The origin is written for
    /// other readers: Read() leaves it alone. The steps are read as absolute values, without the setters'
    /// lower bound; fields keep their values where their key is missing.
    /// @{
    ErrorString Read(const Section& section);
    ErrorString Write(Section& section) const;
    /// @}

private:
    static double AtLeastOne(double step) { return std::fabs(step) > 1.0 ? std::fabs(step) : 1.0; }

    template <typename Exchange, typename Record> static bool Fields(Exchange field, Record& record);

    double m_xStep;
    double m_yStep;
    GTL::Point2D<float> m_origin;
    bool m_snapOn;
    bool m_visible;
};
