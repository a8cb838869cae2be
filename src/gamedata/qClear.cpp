#include "control/SkipOnError.h"
#include "control/qForms.h"
#include "toolkit/UnloadBatch.h"

namespace {

// Unloads every loaded element; an index that is not loaded is skipped. The
// highest index is taken once, before the first unload.
template <typename T> void unloadDynamicWidgets(qf::WidgetArray<T>& array)
{
    const int highest = array.upperBound();
    for (int index = 1; index <= highest; ++index)
        qf::skipOnError([&] { array.unload(index); });
}

} // namespace

QVariant qForms::qClear()
{
    // The fields only: clearing runs none of the properties' side effects.
    strGamePath.clear();
    strGameName.clear();
    strGameBase.clear();
    strQGDFile.clear();
    strVersionType.clear();

    auto& w = *m_widgets;
    const qf::UnloadBatch batch; // a view takes the widgets down together
    unloadDynamicWidgets(w.Check1);
    unloadDynamicWidgets(w.Frame1);
    unloadDynamicWidgets(w.Option1);
    unloadDynamicWidgets(w.Combo1);
    unloadDynamicWidgets(w.Text1);
    unloadDynamicWidgets(w.Line1);
    // Labels go too, so that no caption of the previous game stays on screen.
    unloadDynamicWidgets(w.Label1);
    return {};
}
