#pragma once

#include <QtGlobal>

namespace qf {
class ControlContext;
}

// The visual function rules: what a click on a dynamic check box or option
// button does to the widget its Tag names. Errors of the target reach the caller.
namespace qf::rules {

void Check1_Click(ControlContext& context, qint16 Index);
void Option1_Click(ControlContext& context, qint16 Index);

} // namespace qf::rules
