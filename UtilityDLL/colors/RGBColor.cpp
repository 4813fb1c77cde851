// SPDX-License-Identifier: MIT
#include "UtilityDLL/colors/RGBColor.h"

// Not inline: where the sum is close to a whole number, a host whose compiler fuses multiplications and
// additions would get another grey than the library.
RGBColor RGBColor::GrayScale() const {
    if (m_red == m_green && m_green == m_blue) return *this;
    const int gray = static_cast<int>(0.3 * m_red + 0.59 * m_green + 0.11 * m_blue);
    return {gray, gray, gray};
}
