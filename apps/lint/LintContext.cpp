#include "LintContext.h"

#include "gamedata/GameDataKeys.h"
#include "gamedata/ValueSyntax.h"
#include "platform/Errors.h"

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

QString arrayName(const QString& kind)
{
    if (kind == gamedata::KindCheckBox)
        return QStringLiteral("Check1");
    if (kind == gamedata::KindOptionButton)
        return QStringLiteral("Option1");
    if (kind == gamedata::KindFrame)
        return QStringLiteral("Frame1");
    if (kind == gamedata::KindCombo)
        return QStringLiteral("Combo1");
    if (kind == gamedata::KindLabel)
        return QStringLiteral("Label1");
    if (kind == gamedata::KindLine)
        return QStringLiteral("Line1");
    if (kind == gamedata::KindText)
        return QStringLiteral("Text1");
    return {};
}

QString entryKeyName(int entry, const QString& suffix)
{
    return gamedata::entryKey(entry, suffix);
}

} // namespace qf::lint
