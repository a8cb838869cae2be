#include "PageEntries.h"

#include "gamedata/GameData.h"
#include "gamedata/GameDataKeys.h"
#include "gamedata/ValueSyntax.h"
#include "platform/Errors.h"

#include <cmath>

namespace qf::editing {

namespace gd = qf::gamedata;

std::optional<EntryKey> parseEntryKey(const QString& name)
{
    static const QString control = QStringLiteral("Control");
    if (!name.startsWith(control, Qt::CaseInsensitive))
        return std::nullopt;
    qsizetype end = control.size();
    while (end < name.size() && name.at(end).isDigit() && name.at(end).unicode() < 0x80)
        ++end;
    const qsizetype length = end - control.size();
    if (length == 0 || length > 5 || name.at(control.size()) == u'0' || end == name.size())
        return std::nullopt;
    const int entry = name.sliced(control.size(), length).toInt();
    if (entry > 32767)
        return std::nullopt;
    return EntryKey{entry, name.sliced(end), control.size(), length};
}

QString knownSuffix(const QString& suffix)
{
    for (const QString& known : {gd::Type, gd::Location, gd::Size, gd::Caption, gd::VisualFunction,
                                 gd::Visible, gd::Locked, gd::XLocation, gd::YLocation, gd::Width,
                                 gd::Index, gd::ControlKey, gd::ControlDefaultValue})
        if (suffix.compare(known, Qt::CaseInsensitive) == 0)
            return known;
    return {};
}

QString PageEntries::kindOf(const GameDataDocument& doc, int entry)
{
    return doc.value(gd::Section, gd::entryKey(entry, gd::Type)).value_or(QString()).toLower();
}

PageEntries PageEntries::read(const GameDataDocument& doc)
{
    PageEntries page;
    try {
        page.count =
            syntax::toInt16(doc.value(gd::Section, gd::Count).value_or(QStringLiteral("0")));
    } catch (const Error&) {
        return page;
    }
    std::map<QString, int> counters;
    for (int entry = 1; entry <= *page.count; ++entry) {
        const QString kind = kindOf(doc, entry);
        if (gd::kindOf(kind) != gd::Kind::None)
            page.widgets[entry] = {kind, ++counters[kind]};
    }
    return page;
}

std::optional<QPoint> numberPair(const GameDataDocument& doc, int entry, const QString& suffix)
{
    const std::optional<QString> value = doc.value(gd::Section, gd::entryKey(entry, suffix));
    if (!value)
        return std::nullopt;
    const syntax::PairValue pair = syntax::splitPair(value->toLower());
    if (!pair.first)
        return std::nullopt;
    try {
        return QPoint(int(std::lround(syntax::toSingle(*pair.first))),
                      int(std::lround(syntax::toSingle(pair.second))));
    } catch (const Error&) {
        return std::nullopt;
    }
}

std::optional<RuleTarget> parseRuleTarget(const QString& rule)
{
    const QString lowered = rule.toLower();
    const qsizetype separator = lowered.indexOf(u";;");
    const QStringView prefix = QStringView(lowered).left(5);
    QString kind;
    qsizetype word = 0;
    if (prefix == u"check")
        kind = gd::KindCheckBox, word = 8;
    else if (prefix == u"optio")
        kind = gd::KindOptionButton, word = 6;
    else if (prefix == u"combo")
        kind = gd::KindCombo, word = 5;
    if (kind.isEmpty() || separator <= word || lowered.size() != rule.size())
        return std::nullopt;
    const QString digits = lowered.sliced(word, separator - word);
    for (const QChar c : digits)
        if (c < u'0' || c > u'9')
            return std::nullopt;
    if (digits.size() > 5)
        return std::nullopt;
    return RuleTarget{{kind, digits.toInt()}, word, digits.size()};
}

} // namespace qf::editing
