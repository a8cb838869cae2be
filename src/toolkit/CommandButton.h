#pragma once

#include "toolkit/Widget.h"

namespace qf {

class CommandButton : public Widget {
public:
    using Widget::Widget;

    WidgetKind kind() const override { return WidgetKind::CommandButton; }

    const QString& caption() const { return m_caption; }
    void setCaption(const QString& caption) { assign(m_caption, caption, Property::Caption); }

    // The user pressed the button.
    void press() { click.raise(); }

    Event<> click;

private:
    QString m_caption;
};

} // namespace qf
