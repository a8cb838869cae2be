#include "control/qForms.h"
#include "gamedata/CustomControlBuilder.h"

QVariant qForms::qInitCustomControls()
{
    qf::CustomControlBuilder(*this).build();
    return {};
}
