#pragma once

#include "toolkit/Widget.h"

namespace qf {

// Option buttons of one container form a group: selecting one deselects the
// one selected before.
class OptionButton : public Widget {
public:
    using Widget::Widget;
    // A copy starts deselected: a group has only one selected button.
    OptionButton(const OptionButton& other);
    ~OptionButton() override;

    WidgetKind kind() const override { return WidgetKind::OptionButton; }

    bool value() const { return m_value; }
    // Selecting raises Click on this button; deselecting raises nothing.
    void setValue(bool selected);
    const QString& caption() const { return m_caption; }
    void setCaption(const QString& caption) { assign(m_caption, caption, Property::Caption); }
    const QString& tag() const { return m_tag; }
    void setTag(const QString& tag) { assign(m_tag, tag, Property::Tag); }
    bool isEnabled() const { return m_enabled; }
    void setEnabled(bool enabled) { assign(m_enabled, enabled, Property::Enabled); }

    void userClick();

    Event<> click;

private:
    bool m_value = false;
    QString m_caption;
    QString m_tag;
    bool m_enabled = true;
};

} // namespace qf
