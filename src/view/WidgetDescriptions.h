#pragma once

#include <QWidget>

#include <vector>

namespace qf {

class Widget;

struct ShownWidget {
    const Widget* model;
    QWidget* view;
};

// What screen readers and the mouse tell about the widgets of one control: a
// text box, combo or list is named by the caption beside it (a label or check
// box to its left on the same row, else the nearest one above it), and a
// caption its widget cuts off is shown whole as the widget's tooltip.
void describeWidgets(const std::vector<ShownWidget>& widgets);

// Whether the view, at its size, shows less than the whole caption of the model.
bool cutsCaption(const Widget& model, const QWidget& view);

} // namespace qf
