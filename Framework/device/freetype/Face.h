#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

/// The measures of a face, in font units.
struct FaceMetrics {
    int unitsPerEm = 0;
    int winAscent = 0, winDescent = 0; ///< the cell; both positive
    int typoAscent = 0, typoDescent = 0, typoLineGap = 0;
    int externalLeading = 0;
};

/// A face with outlines. What was measured of it once is not read from its file again.
class Face {
public:
    virtual ~Face() = default;
    virtual const std::string& Family() const = 0; ///< UTF-8
    virtual const FaceMetrics& Metrics() const = 0;

    /// The sum of the advances in font units, without kerning.
    virtual double Advance(std::wstring_view text) = 0;
};

/// The face for a family: another where that is missing. Null where there is none with outlines.
std::shared_ptr<Face> FindFace(const std::wstring& family, bool isBold, bool isItalic);
