#pragma once

#include "GameDataDocument.h"

#include <QPoint>
#include <QString>

#include <map>
#include <optional>

namespace qf::editing {

// A key name "Control12Type" split into its entry number and suffix.
struct EntryKey {
    int entry = 0;
    QString suffix;
    qsizetype digitsBegin = 0; // where the number starts in the name
    qsizetype digitsLength = 0;
};
// nullopt for any other name; the number is written without leading zeros.
std::optional<EntryKey> parseEntryKey(const QString& name);

// The suffixes the control reads, spelled as the format gives them; empty when
// the suffix is none of them.
QString knownSuffix(const QString& suffix);

// A widget as the builder makes it: its kind word and its element in that
// kind's array.
struct Widget {
    QString kind;
    int element = 0;
    bool operator==(const Widget&) const = default;
    bool operator<(const Widget& other) const
    {
        return kind != other.kind ? kind < other.kind : element < other.element;
    }
};

// What section "Custom Controls" builds, read like the builder reads it.
struct PageEntries {
    // Count as read; nullopt when present but not a number the control takes.
    std::optional<int> count;
    // Entry -> the widget it builds, for the entries 1..count that build one.
    std::map<int, Widget> widgets;

    static PageEntries read(const GameDataDocument& doc);
    // The lower-cased Type of an entry as the builder reads it.
    static QString kindOf(const GameDataDocument& doc, int entry);
};

// An entry's "AxB" value (Location, Size, X-Location, Y-Location) as the two
// numbers the control reads from it, rounded to whole twips; nullopt when the
// key is missing or the control would not read two numbers from it.
std::optional<QPoint> numberPair(const GameDataDocument& doc, int entry, const QString& suffix);

// The widget a rule names, as the click handlers find it: the kind by the first
// five letters, the index the digits between the kind word and the first ";;".
struct RuleTarget {
    Widget widget;
    qsizetype digitsBegin = 0; // in the value as written
    qsizetype digitsLength = 0;
};
std::optional<RuleTarget> parseRuleTarget(const QString& rule);

} // namespace qf::editing
