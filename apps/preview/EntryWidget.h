#pragma once

#include <QString>

namespace qf {
struct ControlWidgets;
class Widget;
} // namespace qf

namespace qf::preview {

// The widget the builder made for custom control entry `entry` of the game data
// file: the n-th entry of a kind is element n of that kind's array. nullptr when
// the entry built nothing (no such entry, no known kind, element not loaded).
const Widget* entryWidget(const QString& gameDataPath, int entry, const ControlWidgets& widgets);

} // namespace qf::preview
