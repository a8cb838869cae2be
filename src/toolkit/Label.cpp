#include "toolkit/Label.h"

#include "platform/Errors.h"

namespace qf {

Label::Label(QString name, Container* container, LabelLook look)
    : Widget(std::move(name), container), m_look(look)
{
}

void Label::setCaption(const QString& caption)
{
    if (assign(m_caption, caption, Property::Caption))
        change.raise();
}

void Label::setForeColor(quint32 bgr)
{
    if (bgr > 0xFFFFFF)
        throw InvalidValueError(QStringLiteral("Not a colour: %1").arg(bgr, 0, 16));
    assign(m_foreColor, std::optional<quint32>(bgr), Property::ForeColor);
}

} // namespace qf
