#pragma once

#include <QRect>

#include <cmath>

namespace qf {

// Positions are twips: 1440 to the inch, so 15 to the pixel at 96 DPI.
class TwipScale {
public:
    explicit TwipScale(int dotsPerInch) : m_pixelsPerTwip(dotsPerInch / 1440.0) {}

    int pixels(double twips) const { return int(std::lround(twips * m_pixelsPerTwip)); }
    QRect rect(double left, double top, double width, double height) const
    {
        return QRect(pixels(left), pixels(top), pixels(width), pixels(height));
    }

private:
    double m_pixelsPerTwip;
};

} // namespace qf
