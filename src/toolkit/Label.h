#pragma once

#include "toolkit/Widget.h"

#include <QtGlobal>

#include <optional>

namespace qf {

// Design-time look of a label that the toolkit keeps but the control never sets.
struct LabelLook {
    std::optional<quint32> backColor; // 0xBBGGRR; none is the container's background
    bool bold = false;
};

class Label : public Widget {
public:
    Label(QString name, Container* container, LabelLook look = {});

    WidgetKind kind() const override { return WidgetKind::Label; }

    const QString& caption() const { return m_caption; }
    void setCaption(const QString& caption);
    // 0xBBGGRR; none is the platform's default text colour.
    std::optional<quint32> foreColor() const { return m_foreColor; }
    void setForeColor(quint32 bgr);
    const LabelLook& look() const { return m_look; }

    // Raised when the caption changes; setting the caption it has is no change.
    Event<> change;

private:
    QString m_caption;
    std::optional<quint32> m_foreColor;
    LabelLook m_look;
};

} // namespace qf
