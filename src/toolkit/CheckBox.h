#pragma once

#include "toolkit/Widget.h"

namespace qf {

class CheckBox : public Widget {
public:
    enum : int { Unchecked = 0, Checked = 1, Greyed = 2 };

    using Widget::Widget;

    WidgetKind kind() const override { return WidgetKind::CheckBox; }

    int value() const { return m_value; }
    // Raises Click when the value changes; a value outside 0..2 is rejected.
    void setValue(int value);
    const QString& caption() const { return m_caption; }
    void setCaption(const QString& caption) { assign(m_caption, caption, Property::Caption); }
    const QString& tag() const { return m_tag; }
    void setTag(const QString& tag) { assign(m_tag, tag, Property::Tag); }
    bool isEnabled() const { return m_enabled; }
    void setEnabled(bool enabled) { assign(m_enabled, enabled, Property::Enabled); }

    // A click of the user: a checked box becomes unchecked, any other checked.
    // Only code can grey a box.
    void userClick();

    Event<> click;

private:
    int m_value = Unchecked;
    QString m_caption;
    QString m_tag;
    bool m_enabled = true;
};

} // namespace qf
