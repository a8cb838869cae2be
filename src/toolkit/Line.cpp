#include "toolkit/Line.h"

#include "platform/Errors.h"

#include <cmath>

namespace qf {

namespace {

float checkedCoordinate(float twips)
{
    if (!std::isfinite(twips))
        throw InvalidValueError(QStringLiteral("A line end must be a finite number"));
    return twips;
}

} // namespace

void Line::setX1(float twips)
{
    assign(m_x1, checkedCoordinate(twips), Property::X1);
}

void Line::setY1(float twips)
{
    assign(m_y1, checkedCoordinate(twips), Property::Y1);
}

void Line::setX2(float twips)
{
    assign(m_x2, checkedCoordinate(twips), Property::X2);
}

void Line::setY2(float twips)
{
    assign(m_y2, checkedCoordinate(twips), Property::Y2);
}

void Line::setBorderWidth(int pixels)
{
    if (pixels < 1)
        throw InvalidValueError(
            QStringLiteral("A line is at least 1 pixel wide, not %1").arg(pixels));
    assign(m_borderWidth, pixels, Property::BorderWidth);
}

} // namespace qf
