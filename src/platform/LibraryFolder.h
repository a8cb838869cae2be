#pragma once

#include <QString>

namespace qf {

// The folder of the shared library file that holds the control; empty when the
// system cannot tell.
QString libraryFolder();

} // namespace qf
