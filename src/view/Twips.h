#pragma once

#include <QRect>

#include <cmath>

namespace qf {

/// Positions are twips: 1440 to the inch, so 15 to the pixel at 96 DPI.
class TwipScale {
public:
    /// @param dotsPerInch The screen's resolution.
    explicit TwipScale(int dotsPerInch) : m_pixelsPerTwip(dotsPerInch / 1440.0) {}

    /// @param twips A length. @return Its pixels, rounded.
    int pixels(double twips) const { return int(std::lround(twips * m_pixelsPerTwip)); }
    /// @param left In twips. @param top In twips. @param width In twips.
    /// @param height In twips. @return The rectangle in pixels.
    QRect rect(double left, double top, double width, double height) const
    {
        return QRect(pixels(left), pixels(top), pixels(width), pixels(height));
    }

private:
    double m_pixelsPerTwip;
};

} // namespace qf
