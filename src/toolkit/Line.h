#pragma once

#include "toolkit/Widget.h"

namespace qf {

// A drawn line from (x1, y1) to (x2, y2), in twips, BorderWidth pixels thick.
class Line : public Widget {
public:
    using Widget::Widget;

    WidgetKind kind() const override { return WidgetKind::Line; }

    float x1() const { return m_x1; }
    float y1() const { return m_y1; }
    float x2() const { return m_x2; }
    float y2() const { return m_y2; }
    int borderWidth() const { return m_borderWidth; }

    void setX1(float twips);
    void setY1(float twips);
    void setX2(float twips);
    void setY2(float twips);
    // At least 1 pixel.
    void setBorderWidth(int pixels);

private:
    float m_x1 = 0;
    float m_y1 = 0;
    float m_x2 = 0;
    float m_y2 = 0;
    int m_borderWidth = 1;
};

} // namespace qf
