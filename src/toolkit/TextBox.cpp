#include "toolkit/TextBox.h"

namespace qf {

void TextBox::setText(const QString& text)
{
    if (assign(m_text, text, Property::Text))
        change.raise();
}

void TextBox::setLocked(bool locked)
{
    assign(m_locked, locked, Property::Locked);
}

} // namespace qf
