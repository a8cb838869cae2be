#pragma once

#include "toolkit/ToggleButton.h"

namespace qf {

// Option buttons of one container form a group: selecting one deselects the
// one selected before.
class OptionButton : public ToggleButton {
public:
    using ToggleButton::ToggleButton;
    // A copy starts deselected: a group has only one selected button.
    OptionButton(const OptionButton& other);
    ~OptionButton() override;

    WidgetKind kind() const override { return WidgetKind::OptionButton; }

    bool value() const { return m_value; }
    // Selecting raises Click on this button; deselecting raises nothing.
    void setValue(bool selected);

    void userClick();

private:
    bool m_value = false;
};

} // namespace qf
