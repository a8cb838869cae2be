#include "LintContext.h"

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

// Saving and loading address the widget by Index, the builder numbers the
// entries of a kind 1, 2, 3...: when the two differ another widget's value
// is stored under this entry's key.
void checkIndex(LintContext& lint, int entry, const QString& kind)
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
    if (index == built->second)
        return;
    const QString array = arrayName(kind);
    const int other = lint.entryOf(kind, index);
    const QString instead =
        other ? QStringLiteral("%1(%2), entry %3").arg(array).arg(index).arg(other)
              : QStringLiteral("%1(%2), which does not exist, so nothing").arg(array).arg(index);
    lint.add(Severity::Warning, QStringLiteral("storage-index"),
             QStringLiteral("%1: %2, but the builder makes this entry %3(%4); the value of %5 "
                            "is stored instead%6")
                 .arg(key,
                      lint.entryValue(entry, gd::Index) ? indexText : QStringLiteral("1 (missing)"),
                      array)
                 .arg(built->second)
                 .arg(instead, QStringLiteral("; set %1=%2").arg(key).arg(built->second)),
             entry, key, true);
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
    for (const auto& [entry, kind] : lint.kinds) {
        if (!isValued(kind))
            continue;
        const std::optional<QString> controlKey = lint.entryValue(entry, gd::ControlKey);
        if (!controlKey || controlKey->isEmpty())
            continue; // never saved: said once, by the saving routine's report
        checkIndex(lint, entry, kind);
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
