#include "context/ControlContext.h"
#include "context/SkipOnError.h"
#include "gamedata/GameData.h"
#include "toolkit/UnloadBatch.h"

namespace qf::gamedata {

namespace {

// Unloads every loaded element; an index that is not loaded is skipped. The
// highest index is taken once, before the first unload.
template <typename T> void unloadDynamicWidgets(WidgetArray<T>& array)
{
    const int highest = array.upperBound();
    for (int index = 1; index <= highest; ++index)
        skipOnError([&] { array.unload(index); });
}

} // namespace

void qClear(ControlContext& context)
{
    // The fields only: clearing runs none of the properties' side effects.
    context.strGamePath.clear();
    context.strGameName.clear();
    context.strGameBase.clear();
    context.strQGDFile.clear();
    context.strVersionType.clear();

    auto& w = context.widgets;
    const UnloadBatch batch; // a view takes the widgets down together
    unloadDynamicWidgets(w.Check1);
    unloadDynamicWidgets(w.Frame1);
    unloadDynamicWidgets(w.Option1);
    unloadDynamicWidgets(w.Combo1);
    unloadDynamicWidgets(w.Text1);
    unloadDynamicWidgets(w.Line1);
    // Labels go too, so that no caption of the previous game stays on screen.
    unloadDynamicWidgets(w.Label1);
}

} // namespace qf::gamedata
