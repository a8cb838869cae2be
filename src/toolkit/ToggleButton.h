#pragma once

#include "toolkit/Widget.h"

namespace qf {

// What check boxes and option buttons share: a caption, the Tag that holds
// their rule, Enabled, and the Click event.
class ToggleButton : public Widget {
public:
    using Widget::Widget;

    const QString& caption() const { return m_caption; }
    void setCaption(const QString& caption) { assign(m_caption, caption, Property::Caption); }
    const QString& tag() const { return m_tag; }
    void setTag(const QString& tag) { assign(m_tag, tag, Property::Tag); }
    bool isEnabled() const { return m_enabled; }
    void setEnabled(bool enabled) { assign(m_enabled, enabled, Property::Enabled); }

    Event<> click;

private:
    QString m_caption;
    QString m_tag;
    bool m_enabled = true;
};

} // namespace qf
