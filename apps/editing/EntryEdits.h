#pragma once

#include "GameDataDocument.h"

#include <QStringList>

namespace qf::editing {

// The file after an edit, and what the author should know about it (rules
// that lost their target).
struct EditResult {
    QByteArray bytes;
    QStringList notes;
};

// The edits of a game data file. Each returns the whole new file, or throws
// EditError with what is wrong. Entries keep building the same widgets: where
// an edit moves widgets to other elements of their arrays, every Index and
// every rule target that named one follows it.

// KEY is "Count", "Control<n><suffix>" of section "Custom Controls", or
// "Section/Key" of any other section.
EditResult setKey(const GameDataDocument& doc, const QString& key, const QString& value);
// Sets Location ("LEFTxTOP") or Size ("HEIGHTxWIDTH") of an entry.
EditResult moveEntry(const GameDataDocument& doc, int entry, const QString& location);
EditResult resizeEntry(const GameDataDocument& doc, int entry, const QString& size);
// Appends entry Count + 1 of a kind, with the keys that kind reads.
EditResult addEntry(const GameDataDocument& doc, const QString& kind);
// Removes an entry; later entries move down by one.
EditResult deleteEntry(const GameDataDocument& doc, int entry);
// Moves an entry to number `to`; the entries between move by one.
EditResult reorderEntry(const GameDataDocument& doc, int entry, int to);

} // namespace qf::editing
