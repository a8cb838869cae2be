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
// text box, combo or list is named by the caption a sighted player reads for
// it (pairCaptions), and a label that is such a caption becomes its buddy, so
// that Qt reports the labelled-by relation; an option button is read in the
// group of the frame around it; a caption its widget cuts off is shown whole
// as the widget's tooltip.
void describeWidgets(const std::vector<ShownWidget>& widgets);

// Whether the view, at its size, shows less than the whole caption of the model.
bool cutsCaption(const Widget& model, const QWidget& view);

} // namespace qf
