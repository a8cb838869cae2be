#include "LintContext.h"

#include "gamedata/GameDataKeys.h"
#include "gamedata/ValueSyntax.h"
#include "platform/Errors.h"

#include <algorithm>

namespace qf::lint {

std::optional<QString> LintContext::value(const QString& key) const
{
    return document->value(gamedata::Section, key);
}

std::optional<QString> LintContext::entryValue(int entry, const QString& suffix) const
{
    return value(gamedata::entryKey(entry, suffix));
}

void LintContext::add(Severity severity, const QString& check, const QString& message, int entry,
                      const QString& key, bool atValue)
{
    std::optional<IniDocument::Position> position;
    if (atValue)
        position = document->valuePosition(gamedata::Section, key);
    if (!position)
        position = document->keyPosition(gamedata::Section, key);
    // A missing key is about its entry: place it at the entry's first line.
    if (const auto first = firstKeys.find(entry); !position && first != firstKeys.end())
        position = first->second;
    if (!position)
        position = document->sectionPosition(gamedata::Section);
    addAt(severity, check, message, entry, path, position);
}

void LintContext::addAt(Severity severity, const QString& check, const QString& message, int entry,
                        const QString& filePath, std::optional<IniDocument::Position> position)
{
    Finding finding;
    finding.path = filePath;
    if (position) {
        finding.line = position->line;
        finding.column = position->column;
    }
    finding.severity = severity;
    finding.message = message;
    finding.check = check;
    finding.entry = entry;
    findings.push_back(std::move(finding));
}

int LintContext::entryOf(const QString& kind, int element) const
{
    const auto found = entriesByElement.find({kind, element});
    return found == entriesByElement.end() ? 0 : found->second;
}

bool isDisplayOnly(const LintContext& lint, int entry)
{
    const auto kind = lint.kinds.find(entry);
    if (kind == lint.kinds.end() || kind->second != gamedata::KindText)
        return false;
    try {
        return syntax::toBoolean(lint.entryValue(entry, gamedata::Locked).value_or(QString()));
    } catch (const Error&) {
        return false;
    }
}

const QStringList& kindWords()
{
    namespace gd = gamedata;
    static const QStringList words = {gd::KindCheckBox, gd::KindOptionButton, gd::KindFrame,
                                      gd::KindCombo,    gd::KindLabel,        gd::KindLine,
                                      gd::KindText};
    return words;
}

int LintContext::countOf(const QString& kind) const
{
    return int(std::count_if(entriesByElement.begin(), entriesByElement.end(),
                             [&](const auto& built) { return built.first.first == kind; }));
}

QString LintContext::elementInWords(const QString& kind, int element) const
{
    const int entry = entryOf(kind, element);
    return entry ? QStringLiteral("%1 (entry %2)").arg(widgetInWords(kind, element)).arg(entry)
                 : widgetInWords(kind, element);
}

QString widgetInWords(const QString& kind, int element)
{
    const int tens = element % 100;
    const char* suffix = tens >= 11 && tens <= 13 ? "th"
                         : element % 10 == 1      ? "st"
                         : element % 10 == 2      ? "nd"
                         : element % 10 == 3      ? "rd"
                                                  : "th";
    const QString noun = kind == gamedata::KindCheckBox       ? QStringLiteral("check box")
                         : kind == gamedata::KindOptionButton ? QStringLiteral("option button")
                         : kind == gamedata::KindText         ? QStringLiteral("text box")
                                                              : kind;
    return QStringLiteral("the %1%2 %3").arg(element).arg(QLatin1String(suffix), noun);
}

QString entryKeyName(int entry, const QString& suffix)
{
    return gamedata::entryKey(entry, suffix);
}

} // namespace qf::lint
