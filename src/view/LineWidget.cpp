#include "view/LineWidget.h"

#include <QPainter>

namespace qf {

LineWidget::LineWidget(QWidget* parent) : QWidget(parent)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
    setFocusPolicy(Qt::NoFocus);
}

void LineWidget::setLine(QPoint from, QPoint to, int thickness)
{
    m_from = from;
    m_to = to;
    m_thickness = std::max(1, thickness);
    const int margin = m_thickness;
    setGeometry(QRect(from, to).normalized().adjusted(-margin, -margin, margin, margin));
    update();
}

void LineWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setPen(
        QPen(palette().color(QPalette::WindowText), m_thickness, Qt::SolidLine, Qt::FlatCap));
    const QPoint offset = geometry().topLeft();
    painter.drawLine(m_from - offset, m_to - offset);
}

} // namespace qf
