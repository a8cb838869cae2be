#pragma once

#include <QLoggingCategory>

namespace qf {

// The game check's trace messages ("qforms.trace", debug level).
Q_DECLARE_LOGGING_CATEGORY(lcTrace)

} // namespace qf
