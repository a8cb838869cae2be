#pragma once

#include "toolkit/Widget.h"

#include <QtGlobal>

#include <optional>

namespace qf {

/// Design-time look of a label that the toolkit keeps but the control never sets.
struct LabelLook {
    std::optional<quint32> backColor; ///< 0xBBGGRR; none is the container's background.
    bool bold = false;                ///< Bold text.
};

/// A text the user cannot change.
class Label : public Widget {
public:
    /// An empty label. @param name As for Widget. @param container As for Widget.
    /// @param look Its fixed look.
    Label(QString name, Container* container, LabelLook look = {});

    /// @return WidgetKind::Label.
    WidgetKind kind() const override { return WidgetKind::Label; }

    /// @return The text shown.
    const QString& caption() const { return m_caption; }
    /// Sets the text; raises #change when it differs. @param caption The text.
    void setCaption(const QString& caption);
    /// @return 0xBBGGRR; none is the platform's default text colour.
    std::optional<quint32> foreColor() const { return m_foreColor; }
    /// Sets the text colour. @param bgr 0xBBGGRR.
    /// @throws qf::InvalidValueError A value above 0xFFFFFF.
    void setForeColor(quint32 bgr);
    /// @return The look given at construction.
    const LabelLook& look() const { return m_look; }

    /// Raised when the caption changes; setting the caption it has is no change.
    Event<> change;

private:
    QString m_caption;
    std::optional<quint32> m_foreColor;
    LabelLook m_look;
};

} // namespace qf
