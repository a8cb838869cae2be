#include "PlayerChoices.h"

#include "control/qForms.h"

PlayerChoices readPlayerChoices(const qForms& control)
{
    // The control leaves the switched-off groups empty itself.
    return {control.programPath(), control.chosenMod(), control.chosenConfig(),
            control.additionalParameters()};
}
