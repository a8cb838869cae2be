#pragma once

#include "toolkit/ToggleButton.h"

namespace qf {

class CheckBox : public ToggleButton {
public:
    enum : int { Unchecked = 0, Checked = 1, Greyed = 2 };

    using ToggleButton::ToggleButton;

    WidgetKind kind() const override { return WidgetKind::CheckBox; }

    int value() const { return m_value; }
    // Raises Click when the value changes; a value outside 0..2 is rejected.
    void setValue(int value);

    // A click of the user: a checked box becomes unchecked, any other checked.
    // Only code can grey a box.
    void userClick();

private:
    int m_value = Unchecked;
};

} // namespace qf
