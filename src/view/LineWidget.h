#pragma once

#include <QWidget>

namespace qf {

// Draws one straight line between two points of its parent. It covers the
// line's bounding box and lets mouse clicks through to what lies below.
class LineWidget : public QWidget {
public:
    explicit LineWidget(QWidget* parent);

    // Ends in the parent's pixel coordinates.
    void setLine(QPoint from, QPoint to, int thickness);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QPoint m_from;
    QPoint m_to;
    int m_thickness = 1;
};

} // namespace qf
