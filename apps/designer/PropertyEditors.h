#pragma once

#include "PageEntries.h"

#include <QString>
#include <QWidget>

#include <functional>

namespace qf::designer {

// Takes a key's new value as written in the file.
using Commit = std::function<void(const QString& value)>;

// The editor of one key of an entry of that kind: a check box for Booleans,
// a spin box for Index, an item-list editor for a combo's Caption, a rule
// editor for VisualFunction, a line edit for the rest and for any value the
// special editors could not show as written.
QWidget* keyEditor(const QString& suffix, const QString& kind, const QString& value,
                   const editing::PageEntries& page, Commit commit, QWidget* parent);

} // namespace qf::designer
