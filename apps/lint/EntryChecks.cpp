#include "LintContext.h"
#include "Suggest.h"

#include "gamedata/GameData.h"
#include "gamedata/GameDataKeys.h"
#include "gamedata/ValueSyntax.h"
#include "platform/Errors.h"

#include <cmath>
#include <set>

namespace qf::lint {

namespace {

namespace gd = gamedata;

const QStringList& knownSuffixes()
{
    static const QStringList suffixes = {gd::Type,
                                         gd::Location,
                                         gd::Size,
                                         gd::Caption,
                                         gd::VisualFunction,
                                         gd::Visible,
                                         gd::Locked,
                                         gd::XLocation,
                                         gd::YLocation,
                                         gd::Width,
                                         gd::Index,
                                         gd::ControlKey,
                                         gd::ControlDefaultValue};
    return suffixes;
}

// The keys each kind's routines read (builder, saving, loading).
const QStringList& suffixesOf(const QString& kind)
{
    static const QStringList placed = {gd::Type, gd::Location, gd::Size, gd::Caption};
    static const QStringList stored = {gd::Index, gd::ControlKey};
    static const QHash<QString, QStringList> byKind = {
        {gd::KindCheckBox,
         placed + stored + QStringList{gd::VisualFunction, gd::Visible, gd::ControlDefaultValue}},
        {gd::KindOptionButton,
         placed + stored + QStringList{gd::VisualFunction, gd::ControlDefaultValue}},
        {gd::KindCombo, placed + stored},
        {gd::KindText, placed + stored + QStringList{gd::Locked, gd::ControlDefaultValue}},
        {gd::KindLine, {gd::Type, gd::XLocation, gd::YLocation, gd::Width}},
        {gd::KindFrame, placed},
        {gd::KindLabel, placed}};
    static const QStringList typeOnly = {gd::Type};
    const auto found = byKind.constFind(kind);
    return found == byKind.cend() ? typeOnly : *found;
}

struct EntryKey {
    int entry;
    QString suffix;
};

// "Control12Caption" -> 12, "Caption"; nullopt for a key of no entry.
std::optional<EntryKey> splitEntryKey(QStringView name)
{
    static const QLatin1String prefix("control");
    if (!name.startsWith(prefix, Qt::CaseInsensitive))
        return std::nullopt;
    qsizetype end = prefix.size();
    while (end < name.size() && name[end].isDigit() && name[end].unicode() < 0x80)
        ++end;
    bool isNumber = false;
    const int entry = name.mid(prefix.size(), end - prefix.size()).toInt(&isNumber);
    if (!isNumber)
        return std::nullopt;
    return EntryKey{entry, name.mid(end).toString()};
}

QString kindInWords(const QString& kind)
{
    return kind == gd::KindCheckBox       ? QStringLiteral("a check box")
           : kind == gd::KindOptionButton ? QStringLiteral("an option button")
           : kind == gd::KindText         ? QStringLiteral("a text box")
                                          : QStringLiteral("a ") + kind;
}

} // namespace

void checkCount(LintContext& lint)
{
    const std::optional<QString> count = lint.value(gd::Count);
    const QString check = QStringLiteral("entries-count");
    if (!count && !lint.document->sectionPosition(gd::Section)) {
        // Without the section the author most likely misspelled its name.
        QStringList names;
        std::optional<IniDocument::Position> where;
        for (const IniDocument::SectionLines& section : lint.document->lines())
            if (section.namePosition)
                names.append(section.name.toString());
        const QString meant = closest(gd::Section, names);
        for (const IniDocument::SectionLines& section : lint.document->lines())
            if (section.namePosition && section.name == meant && !where)
                where = section.namePosition;
        lint.addAt(Severity::Error, QStringLiteral("entries-section"),
                   meant.isEmpty()
                       ? QStringLiteral("no [%1] section; no entry is built").arg(gd::Section)
                       : QStringLiteral("[%1]: unknown section; write [%2], or no entry is built")
                             .arg(meant, gd::Section),
                   0, lint.path, where);
        return;
    }
    if (!count) {
        lint.add(Severity::Error, check, QStringLiteral("Count: missing; no entry is built"), 0,
                 gd::Count);
        return;
    }
    const QString message = QStringLiteral("Count: \"%1\" ").arg(*count);
    try {
        lint.count = syntax::toInt16(*count);
    } catch (const OverflowError&) {
        lint.add(Severity::Error, check,
                 message + QStringLiteral("is out of range (at most 32767); no entry is built"), 0,
                 gd::Count, true);
        return;
    } catch (const Error&) {
        lint.add(Severity::Error, check,
                 message + QStringLiteral("is not a number; no entry is built"), 0, gd::Count,
                 true);
        return;
    }
    const double number = syntax::parseNumber(*count);
    if (number != std::floor(number))
        lint.add(Severity::Warning, check,
                 message + QStringLiteral("is not a whole number; it rounds to %1").arg(lint.count),
                 0, gd::Count, true);
    if (lint.count < 0)
        lint.add(Severity::Warning, check,
                 message + QStringLiteral("is negative; no entry is built"), 0, gd::Count, true);
}

void checkKeys(LintContext& lint)
{
    const QList<IniDocument::SectionLines> sections = lint.document->lines();
    bool seenSection = false;
    std::set<int> aboveCount;
    for (const IniDocument::SectionLines& section : sections) {
        if (section.name.compare(gd::Section, Qt::CaseInsensitive) != 0)
            continue;
        if (seenSection) {
            lint.addAt(
                Severity::Warning, QStringLiteral("entries-duplicate-section"),
                QStringLiteral("[%1] appears again; only the first one is read").arg(section.name),
                0, lint.path, section.namePosition);
            continue;
        }
        seenSection = true;
        for (const IniDocument::KeyLine& line : section.keys) {
            // Comment lines are stored like keys but never match one.
            if (line.name.startsWith(u';'))
                continue;
            // A later line of a name is not the one lookups find.
            if (lint.document->keyPosition(gd::Section, line.name) != line.namePosition) {
                lint.addAt(
                    Severity::Warning, QStringLiteral("entries-duplicate-key"),
                    QStringLiteral("%1: appears again; this line is never read").arg(line.name), 0,
                    lint.path, line.namePosition);
                continue;
            }
            if (line.name.compare(gd::Count, Qt::CaseInsensitive) == 0)
                continue;
            const std::optional<EntryKey> match = splitEntryKey(line.name);
            static const QString unknown = QStringLiteral("entries-unknown-key");
            if (!match) {
                const QString suggestion = closest(line.name.toString(), {gd::Count});
                lint.addAt(
                    Severity::Warning, unknown,
                    QStringLiteral("%1: unknown key%2")
                        .arg(line.name, suggestion.isEmpty()
                                            ? QStringLiteral("; it is never read")
                                            : QStringLiteral("; did you mean %1?").arg(suggestion)),
                    0, lint.path, line.namePosition);
                continue;
            }
            const int entry = match->entry;
            const QString suffix = match->suffix;
            lint.firstKeys.try_emplace(entry, line.namePosition);
            const QString known = [&] {
                for (const QString& candidate : knownSuffixes()) {
                    if (candidate.compare(suffix, Qt::CaseInsensitive) == 0)
                        return candidate;
                }
                return QString();
            }();
            if (known.isEmpty()) {
                const QString suggestion = closest(suffix, knownSuffixes());
                lint.addAt(Severity::Warning, unknown,
                           QStringLiteral("%1: unknown key%2")
                               .arg(line.name, suggestion.isEmpty()
                                                   ? QStringLiteral("; it is never read")
                                                   : QStringLiteral("; did you mean %1?")
                                                         .arg(entryKeyName(entry, suggestion))),
                           entry, lint.path, line.namePosition);
                continue;
            }
            if (entry < 1 || entry > lint.count) {
                if (aboveCount.insert(entry).second)
                    lint.addAt(Severity::Warning, QStringLiteral("entries-above-count"),
                               QStringLiteral("%1: entry %2 is outside 1..Count (%3); its keys "
                                              "are never read")
                                   .arg(line.name)
                                   .arg(entry)
                                   .arg(lint.count),
                               entry, lint.path, line.namePosition);
                continue;
            }
            const QString& kind = lint.kinds[entry];
            if (gd::kindOf(kind) != gd::Kind::None && !suffixesOf(kind).contains(known)) {
                const bool storesNothing = known == gd::ControlKey || known == gd::Index;
                lint.addAt(Severity::Warning,
                           storesNothing ? QStringLiteral("storage-key-unused") : unknown,
                           QStringLiteral("%1: %2 %3; this key is never read")
                               .arg(line.name, kindInWords(kind),
                                    storesNothing ? QStringLiteral("stores nothing")
                                                  : QStringLiteral("does not read %1").arg(known)),
                           entry, lint.path, line.namePosition);
            }
        }
    }
}

} // namespace qf::lint
