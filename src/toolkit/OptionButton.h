#pragma once

#include "toolkit/ToggleButton.h"

namespace qf {

/// Option buttons of one container form a group: selecting one deselects the
/// one selected before.
class OptionButton : public ToggleButton {
public:
    using ToggleButton::ToggleButton;
    /// A copy starts deselected: a group has only one selected button.
    /// @param other The button copied.
    OptionButton(const OptionButton& other);
    ~OptionButton() override;

    /// @return WidgetKind::OptionButton.
    WidgetKind kind() const override { return WidgetKind::OptionButton; }

    /// @return Whether the button is selected.
    bool value() const { return m_value; }
    /// Selects the button (deselecting the group's other one) or deselects it.
    /// Selecting raises #click on this button; deselecting raises nothing.
    /// @param selected True to select.
    void setValue(bool selected);

    /// A click of the user: selects an enabled button.
    void userClick();

private:
    bool m_value = false;
};

} // namespace qf
