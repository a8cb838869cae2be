#include "toolkit/Widget.h"

#include "platform/Errors.h"

#include <cmath>

namespace qf {

namespace {

void requireSize(float twips, const char* what)
{
    if (!std::isfinite(twips) || twips < 0)
        throw InvalidValueError(QStringLiteral("%1 must not be negative: %2")
                                    .arg(QLatin1String(what))
                                    .arg(double(twips)));
}

void requirePosition(float twips)
{
    if (!std::isfinite(twips))
        throw InvalidValueError(QStringLiteral("A position must be a finite number"));
}

} // namespace

Widget::Widget(QString name, Container* container) : m_name(std::move(name)), m_container(container)
{
}

Widget::Widget(const Widget& other)
    : m_name(other.m_name), m_index(other.m_index), m_container(other.m_container),
      m_left(other.m_left), m_top(other.m_top), m_width(other.m_width), m_height(other.m_height),
      m_visible(other.m_visible)
{
}

Widget::~Widget() = default;

void Widget::setLeft(float twips)
{
    requirePosition(twips);
    assign(m_left, twips, Property::Left);
}

void Widget::setTop(float twips)
{
    requirePosition(twips);
    assign(m_top, twips, Property::Top);
}

void Widget::setWidth(float twips)
{
    requireSize(twips, "Width");
    assign(m_width, twips, Property::Width);
}

void Widget::setHeight(float twips)
{
    requireSize(twips, "Height");
    assign(m_height, twips, Property::Height);
}

void Widget::setVisible(bool visible)
{
    assign(m_visible, visible, Property::Visible);
}

void Widget::setGeometry(float left, float top, float width, float height)
{
    requirePosition(left);
    requirePosition(top);
    requireSize(width, "Width");
    requireSize(height, "Height");
    setLeft(left);
    setTop(top);
    setWidth(width);
    setHeight(height);
}

} // namespace qf
