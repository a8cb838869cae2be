#pragma once

#include "toolkit/Widget.h"

namespace qf {

/// A drawn line from (x1, y1) to (x2, y2), in twips, BorderWidth pixels thick.
class Line : public Widget {
public:
    using Widget::Widget;

    /// @return WidgetKind::Line.
    WidgetKind kind() const override { return WidgetKind::Line; }

    /// @return The start's distance from the container's left edge, in twips.
    float x1() const { return m_x1; }
    /// @return The start's distance from the container's top edge, in twips.
    float y1() const { return m_y1; }
    /// @return The end's distance from the container's left edge, in twips.
    float x2() const { return m_x2; }
    /// @return The end's distance from the container's top edge, in twips.
    float y2() const { return m_y2; }
    /// @return The thickness in pixels.
    int borderWidth() const { return m_borderWidth; }

    /// Moves the start. @param twips The new x1().
    /// @throws qf::InvalidValueError The value is not a finite number.
    void setX1(float twips);
    /// Moves the start. @param twips The new y1().
    /// @throws qf::InvalidValueError The value is not a finite number.
    void setY1(float twips);
    /// Moves the end. @param twips The new x2().
    /// @throws qf::InvalidValueError The value is not a finite number.
    void setX2(float twips);
    /// Moves the end. @param twips The new y2().
    /// @throws qf::InvalidValueError The value is not a finite number.
    void setY2(float twips);
    /// Sets the thickness. @param pixels At least 1.
    /// @throws qf::InvalidValueError A value below 1.
    void setBorderWidth(int pixels);

private:
    float m_x1 = 0;
    float m_y1 = 0;
    float m_x2 = 0;
    float m_y2 = 0;
    int m_borderWidth = 1;
};

} // namespace qf
