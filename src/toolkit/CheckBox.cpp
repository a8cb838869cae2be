#include "toolkit/CheckBox.h"

#include "platform/Errors.h"

namespace qf {

void CheckBox::setValue(int value)
{
    if (value < Unchecked || value > Greyed)
        throw InvalidValueError(
            QStringLiteral("A check box value is 0, 1 or 2, not %1").arg(value));
    if (assign(m_value, value, Property::Value))
        click.raise();
}

void CheckBox::userClick()
{
    if (isEnabled())
        setValue(m_value == Checked ? Unchecked : Checked);
}

} // namespace qf
