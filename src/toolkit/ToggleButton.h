#pragma once

#include "toolkit/Widget.h"

namespace qf {

/// What check boxes and option buttons share: a caption, the Tag that holds
/// their rule, Enabled, and the Click event.
class ToggleButton : public Widget {
public:
    using Widget::Widget;

    /// @return The text beside the button.
    const QString& caption() const { return m_caption; }
    /// Sets the text beside the button. @param caption The text.
    void setCaption(const QString& caption) { assign(m_caption, caption, Property::Caption); }
    /// @return The visual function rule the game data gave the button.
    const QString& tag() const { return m_tag; }
    /// Sets the rule; it runs at the next click. @param tag The rule.
    void setTag(const QString& tag) { assign(m_tag, tag, Property::Tag); }
    /// @return Whether the user can click it.
    bool isEnabled() const { return m_enabled; }
    /// Lets the user click it, or not. @param enabled True to let them.
    void setEnabled(bool enabled) { assign(m_enabled, enabled, Property::Enabled); }

    /// Raised when the value changes to one that runs the rule.
    Event<> click;

private:
    QString m_caption;
    QString m_tag;
    bool m_enabled = true;
};

} // namespace qf
