#pragma once

#include <QString>

#include <functional>

namespace qf {
class ControlContext;
}

// Reading the game data file, and building and removing the dynamic widgets.
namespace qf::gamedata {

// One profile read of a value, with the Windows profile rules and the
// 1024-character buffer; the result and its length stay in the context's
// buffer fields until the next read.
QString profileRead(ControlContext& context, const QString& section, const QString& key,
                    const QString& defaultValue, const QString& path);

// The game data file: AppPath + "\Data\" + qpQGD.
QString gameDataPath(const ControlContext& context);
QString gameDataRead(ControlContext& context, const QString& section, const QString& key,
                     const QString& defaultValue);
// A key of custom control entry `entry` ("Control12Type"), as read.
QString customControlRead(ControlContext& context, int entry, const QString& suffix,
                          const QString& defaultValue);

// The kinds of custom control entries; None for any other word.
enum class Kind { None, CheckBox, OptionButton, Frame, Combo, Label, Line, Text };
// The kind a lower-cased Type value names.
Kind kindOf(const QString& loweredType);

// Runs `visit` for entry numbers 1 to "Count" in order. A Count that cannot be
// read as a 16-bit number visits nothing.
void forEachEntry(ControlContext& context, const std::function<void(int entry)>& visit);

// Builds the dynamic widgets from section "Custom Controls". Failing steps are
// skipped.
void qInitCustomControls(ControlContext& context);

// Forgets the game and unloads every dynamic widget.
void qClear(ControlContext& context);

} // namespace qf::gamedata
