#pragma once

#include "LintContext.h"

class qForms;

namespace qf::lint {

// Where the built widgets lie (once), and whether each caption fits its
// widget in this language, measured with the view's own widgets and font.
void checkLayout(LintContext& lint, qForms& control, int language, bool placement);

} // namespace qf::lint
