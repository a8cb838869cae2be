#pragma once

#include "toolkit/Container.h"
#include "toolkit/Widget.h"

namespace qf {

class Frame : public Widget, public Container {
public:
    Frame(const QString& name, Container* container) : Widget(name, container), Container(name) {}

    WidgetKind kind() const override { return WidgetKind::Frame; }

    const QString& caption() const { return m_caption; }
    void setCaption(const QString& caption) { assign(m_caption, caption, Property::Caption); }

private:
    QString m_caption;
};

} // namespace qf
