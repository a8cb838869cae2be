#include "toolkit/OptionButton.h"

#include "toolkit/Container.h"

namespace qf {

OptionButton::OptionButton(const OptionButton& other) : ToggleButton(other) {}

OptionButton::~OptionButton()
{
    if (container() && container()->m_selectedOption == this)
        container()->m_selectedOption = nullptr;
}

void OptionButton::setValue(bool selected)
{
    if (selected == m_value)
        return;
    Container* group = container();
    if (!selected) {
        if (group && group->m_selectedOption == this)
            group->m_selectedOption = nullptr;
        assign(m_value, false, Property::Value);
        return;
    }
    if (group) {
        if (OptionButton* previous = group->m_selectedOption; previous && previous != this)
            previous->assign(previous->m_value, false, Property::Value);
        group->m_selectedOption = this;
    }
    assign(m_value, true, Property::Value);
    click.raise();
}

void OptionButton::userClick()
{
    if (isEnabled())
        setValue(true);
}

} // namespace qf
