#include "LintContext.h"
#include "Suggest.h"

#include "gamedata/GameData.h"
#include "gamedata/GameDataKeys.h"
#include "gamedata/ValueSyntax.h"
#include "platform/Errors.h"

namespace qf::lint {

namespace {

namespace gd = gamedata;

bool isValued(const QString& kind)
{
    const gd::Kind k = gd::kindOf(kind);
    return k == gd::Kind::CheckBox || k == gd::Kind::OptionButton || k == gd::Kind::Combo ||
           k == gd::Kind::Text;
}

// The place each entry takes among the widgets of its kind once the file's
// misspelled kinds are fixed: advice on Index must hold after that fix too.
std::map<int, int> intendedElements(const LintContext& lint)
{
    std::map<int, int> elements;
    QHash<QString, int> counted;
    for (const auto& [entry, kind] : lint.kinds) {
        const QString meant =
            gd::kindOf(kind) != gd::Kind::None ? kind : closest(kind, kindWords()).toLower();
        if (!meant.isEmpty() && !kind.isEmpty())
            elements[entry] = ++counted[meant];
    }
    return elements;
}

// Saving and loading address the widget by Index, the builder numbers the
// entries of a kind 1, 2, 3...: when the two differ another widget's value
// is stored under this entry's key.
void checkIndex(LintContext& lint, int entry, const QString& kind,
                const std::map<int, int>& intended)
{
    const auto built = lint.elements.find(entry);
    if (built == lint.elements.end())
        return;
    const QString key = entryKeyName(entry, gd::Index);
    const QString indexText = lint.entryValue(entry, gd::Index).value_or(QStringLiteral("1"));
    qint16 index;
    try {
        index = syntax::toInt16(indexText.toLower());
    } catch (const Error&) {
        lint.add(Severity::Error, QStringLiteral("storage-index"),
                 QStringLiteral("%1: \"%2\" is not a number; the value is never saved or restored")
                     .arg(key, indexText),
                 entry, key, true);
        return;
    }
    const auto meant = intended.find(entry);
    const int place = meant == intended.end() ? built->second : meant->second;
    if (index == place)
        return;
    const QString written =
        lint.entryValue(entry, gd::Index) ? indexText : QStringLiteral("1 (missing)");
    QString what;
    if (place != built->second)
        what = QStringLiteral("once the misspelled Types are fixed this entry is %1")
                   .arg(widgetInWords(kind, place));
    else if (lint.entryOf(kind, index))
        what = QStringLiteral("this entry is %1, and the value of %2 is stored instead")
                   .arg(widgetInWords(kind, place), lint.elementInWords(kind, index));
    else
        what = QStringLiteral("this entry is %1, and there is no %2, so nothing is stored")
                   .arg(widgetInWords(kind, place), widgetInWords(kind, index));
    lint.add(Severity::Warning, QStringLiteral("storage-index"),
             QStringLiteral("%1: %2, but %3; set %1=%4").arg(key, written, what).arg(place), entry,
             key, true);
}

void checkDefault(LintContext& lint, int entry, const QString& kind)
{
    const std::optional<QString> value = lint.entryValue(entry, gd::ControlDefaultValue);
    if (!value || kind != gd::KindText || *value == value->toLower())
        return;
    const QString key = entryKeyName(entry, gd::ControlDefaultValue);
    lint.add(Severity::Warning, QStringLiteral("storage-default-case"),
             QStringLiteral("%1: \"%2\" arrives lower-cased, as \"%3\"")
                 .arg(key, *value, value->toLower()),
             entry, key, true);
}

} // namespace

void checkStorage(LintContext& lint)
{
    // Key -> the entries that save under it, in saving order.
    QHash<QString, QList<int>> owners;
    QList<QString> order;
    const std::map<int, int> intended = intendedElements(lint);
    for (const auto& [entry, kind] : lint.kinds) {
        if (!isValued(kind))
            continue;
        const std::optional<QString> controlKey = lint.entryValue(entry, gd::ControlKey);
        if (!controlKey || controlKey->isEmpty()) {
            // Saving reads the widget before the key: an Index that names no
            // widget hides the missing key from the routines' own report.
            if (isDisplayOnly(lint, entry) || !lint.elements.contains(entry))
                continue;
            const QString key = entryKeyName(entry, gd::ControlKey);
            lint.add(Severity::Warning, QStringLiteral("storage-no-key"),
                     QStringLiteral("entry %1 has no %2; its value is never saved")
                         .arg(entry)
                         .arg(key),
                     entry, entryKeyName(entry, gd::Type));
            checkIndex(lint, entry, kind, intended);
            continue;
        }
        checkIndex(lint, entry, kind, intended);
        checkDefault(lint, entry, kind);
        const QString folded = *controlKey; // the store tells keys apart by letter case
        if (!owners.contains(folded))
            order.append(folded);
        owners[folded].append(entry);
    }
    for (const QString& folded : order) {
        const QList<int>& entries = owners[folded];
        for (qsizetype i = 1; i < entries.size(); ++i) {
            const QString key = entryKeyName(entries[i], gd::ControlKey);
            lint.add(Severity::Warning, QStringLiteral("storage-duplicate-key"),
                     QStringLiteral("%1: \"%2\" is also the key of entry %3; entry %4 is saved "
                                    "last and wins, and both restore its value")
                         .arg(key, *lint.entryValue(entries[i], gd::ControlKey))
                         .arg(entries[0])
                         .arg(entries.last()),
                     entries[i], key, true);
        }
    }
}

} // namespace qf::lint
