#include "platform/TraceCategory.h"

namespace qf {

Q_LOGGING_CATEGORY(lcTrace, "qforms.trace")

} // namespace qf
