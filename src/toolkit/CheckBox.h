#pragma once

#include "toolkit/ToggleButton.h"

namespace qf {

/// A check box with three states: unchecked, checked and greyed.
class CheckBox : public ToggleButton {
public:
    /// The values of value().
    enum : int {
        Unchecked = 0, ///< Not ticked.
        Checked = 1,   ///< Ticked.
        Greyed = 2     ///< Ticked, shown grey; only code sets it.
    };

    using ToggleButton::ToggleButton;

    /// @return WidgetKind::CheckBox.
    WidgetKind kind() const override { return WidgetKind::CheckBox; }

    /// @return Unchecked, Checked or Greyed.
    int value() const { return m_value; }
    /// Sets the state; raises #click when it changes.
    /// @param value Unchecked, Checked or Greyed.
    /// @throws qf::InvalidValueError A value outside 0..2; the box keeps its state.
    void setValue(int value);

    /// A click of the user: a checked box becomes unchecked, any other checked;
    /// a disabled box does not change. Only code can grey a box.
    void userClick();

private:
    int m_value = Unchecked;
};

} // namespace qf
