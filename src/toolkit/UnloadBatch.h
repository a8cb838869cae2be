#pragma once

#include "toolkit/Event.h"

namespace qf {

// Marks a run of unloads (clearing a whole page) as one change. While one is
// alive, a view may hold back taking down the widgets of unloaded elements and
// take them all down together when the outermost batch ends, before its
// destructor returns. GUI thread only, like the widgets.
class UnloadBatch {
public:
    UnloadBatch();
    ~UnloadBatch();
    UnloadBatch(const UnloadBatch&) = delete;
    UnloadBatch& operator=(const UnloadBatch&) = delete;

    static bool active();
    // Raised when the outermost batch ends.
    static Event<>& ended();
};

} // namespace qf
