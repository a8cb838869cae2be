#pragma once

#include <QString>

#include <optional>
#include <vector>

// The syntax of the values in a game data file.
namespace qf::syntax {

// A decimal number with optional sign, fraction and exponent, blanks around it
// allowed ("  12 ", "-1", "2.5", ".5", "1e3"). Throws qf::TypeMismatchError for
// anything else (empty, letters, "inf", "12abc") and qf::OverflowError for a
// number beyond the range of double.
double parseNumber(const QString& text);

// parseNumber rounded to the nearest whole number, halves to the even one.
// Throws qf::OverflowError outside -32768..32767.
qint16 toInt16(const QString& text);

// parseNumber in single precision. Throws qf::OverflowError when the number
// does not fit.
float toSingle(const QString& text);

// "true" or "false" in any letter case, or a number (0 false, else true).
// Throws qf::TypeMismatchError for anything else.
bool toBoolean(const QString& text);

// A value "AxB" split at its first "x": first is the text before it, second the
// rest (a second "x" stays in second). Without "x", first is nullopt and second
// the whole value. Callers lower-case the value first, so "X" is not a separator.
struct PairValue {
    std::optional<QString> first;
    QString second;
};
PairValue splitPair(const QString& loweredValue);

// A caption that names a language text: exactly three characters that parse as
// a number ("053").
bool isTextNumber(const QString& text);

// One step of filling a combo from its item list: append an entry, or make an
// entry the current text.
struct ItemListStep {
    enum class Kind { Append, Select };
    Kind kind;
    QString text;

    bool operator==(const ItemListStep&) const = default;
};

// The steps for an item list: entries each closed by ";;"; an entry starting
// with "(" selects its text without the first and last character; text after
// the last ";;" is ignored. A run of more than two semicolons repeats the entry
// before it once for each extra semicolon.
std::vector<ItemListStep> parseItemList(const QString& value);

// The text after the last ";;" of an item list (the whole value without one),
// which parseItemList ignores.
QString itemListTail(const QString& value);

} // namespace qf::syntax
