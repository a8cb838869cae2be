#include "platform/TraceCategory.h"

namespace qf {

// Off unless asked for (QT_LOGGING_RULES="qforms.trace.debug=true"): a game
// check traces several lines on every keystroke in the folder box.
Q_LOGGING_CATEGORY(lcTrace, "qforms.trace", QtInfoMsg)

} // namespace qf
