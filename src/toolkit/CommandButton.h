#pragma once

#include "toolkit/Widget.h"

namespace qf {

/// A push button.
class CommandButton : public Widget {
public:
    using Widget::Widget;

    /// @return WidgetKind::CommandButton.
    WidgetKind kind() const override { return WidgetKind::CommandButton; }

    /// @return The text on the button.
    const QString& caption() const { return m_caption; }
    /// Sets the text on the button. @param caption The text.
    void setCaption(const QString& caption) { assign(m_caption, caption, Property::Caption); }

    /// The user pressed the button: raises #click.
    void press() { click.raise(); }

    /// Raised when the button is pressed.
    Event<> click;

private:
    QString m_caption;
};

} // namespace qf
