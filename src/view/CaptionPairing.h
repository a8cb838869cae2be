#pragma once

#include "toolkit/Widget.h"

#include <QRectF>

#include <cstddef>
#include <vector>

namespace qf {

// One shown widget of a container as the pairing sees it, in twips.
struct PlacedWidget {
    QRectF rect;
    WidgetKind kind;
    // Shows a caption that is not blank (labels, check boxes, frames).
    bool captioned = false;
};

// Indexes into the widgets given to pairCaptions.
struct CaptionPair {
    std::size_t caption;
    std::size_t widget;
};

// Which caption a sighted player reads for which widget of one container.
// A text box, combo or list takes the label right before it on its row, else
// the label just above it over its columns, and only when no other widget and
// no frame's edge lies between them; each label goes to one widget, the one
// beside it first, then the nearer. A check box's caption is its own and
// captions no neighbour. An option button takes the innermost captioned frame
// around it: the group it is read in.
std::vector<CaptionPair> pairCaptions(const std::vector<PlacedWidget>& widgets);

} // namespace qf
