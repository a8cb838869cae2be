#pragma once

#include "toolkit/Container.h"
#include "toolkit/Widget.h"

namespace qf {

/// A captioned box that holds other widgets; its option buttons form a group.
class Frame : public Widget, public Container {
public:
    /// An empty frame. @param name Its name, also as a container.
    /// @param container What it lies in.
    Frame(const QString& name, Container* container) : Widget(name, container), Container(name) {}

    /// @return WidgetKind::Frame.
    WidgetKind kind() const override { return WidgetKind::Frame; }

    /// @return The text on the frame's border.
    const QString& caption() const { return m_caption; }
    /// Sets the text on the frame's border. @param caption The text.
    void setCaption(const QString& caption) { assign(m_caption, caption, Property::Caption); }

private:
    QString m_caption;
};

} // namespace qf
