#include "EntryEdits.h"

#include "LineChanges.h"
#include "PageEntries.h"

#include "gamedata/GameData.h"
#include "gamedata/GameDataKeys.h"
#include "gamedata/ValueSyntax.h"
#include "platform/IniDocument.h"

#include <QPoint>
#include <QRect>
#include <QSet>

#include <algorithm>
#include <functional>
#include <set>

namespace qf::editing {

namespace gd = qf::gamedata;
using namespace Qt::Literals::StringLiterals;

namespace {

using NewNumber = std::function<std::optional<int>(int entry)>;

const GameDataDocument::Line& lineAt(const GameDataDocument& doc, int line)
{
    return doc.lines()[line];
}

std::optional<QString> stripped(const GameDataDocument& doc, std::optional<int> line)
{
    if (!line || !lineAt(doc, *line).hasValue)
        return std::nullopt;
    return IniDocument::stripQuotes(lineAt(doc, *line).value);
}

std::optional<int> entryLine(const GameDataDocument& doc, int entry, const QString& suffix)
{
    return doc.keyLine(gd::Section, gd::entryKey(entry, suffix));
}

// The key lines of the entries in the section lookups read, duplicates too.
std::vector<std::pair<int, EntryKey>> entryLines(const GameDataDocument& doc)
{
    std::vector<std::pair<int, EntryKey>> found;
    if (const std::optional<int> header = doc.section(gd::Section))
        for (const int line : doc.keyLines(*header))
            if (std::optional<EntryKey> key = parseEntryKey(lineAt(doc, line).name))
                found.push_back({line, *key});
    return found;
}

int readCount(const PageEntries& page)
{
    if (!page.count)
        throw EditError(QStringLiteral("Count is not a number the control reads; set it first"));
    return *page.count;
}

void requireEntry(const PageEntries& page, int entry)
{
    const int count = readCount(page);
    if (entry < 1 || entry > count)
        throw EditError(QStringLiteral("there is no entry %1; the entries are 1 to Count (%2)")
                            .arg(entry)
                            .arg(count));
}

void checkValueText(const QString& value)
{
    if (value.contains(u'\n') || value.contains(u'\r') || value.contains(QChar(0)))
        throw EditError(QStringLiteral("a value is one line"));
    if (value != value.trimmed())
        throw EditError(QStringLiteral("the control drops blanks around a value"));
    if (value.size() > 1023)
        throw EditError(QStringLiteral("the control reads only 1023 characters of a value"));
}

void checkPair(const QString& value, const QString& what)
{
    const syntax::PairValue pair = syntax::splitPair(value.toLower());
    try {
        if (pair.first) {
            syntax::toSingle(*pair.first);
            syntax::toSingle(pair.second);
            return;
        }
    } catch (const Error&) {
    }
    throw EditError(
        QStringLiteral("\"%1\" is not %2: two numbers with \"x\" between").arg(value, what));
}

const QStringList RuleKeywords = {u"ifonthenoff"_s,      u"ifoffthenon"_s,     u"ifonthenon"_s,
                                  u"ifoffthenoff"_s,     u"ifonthendisable"_s, u"ifonthenenable"_s,
                                  u"ifoffthendisable"_s, u"ifoffthenenable"_s};

// Refuses values the control would not read as meant.
void checkValue(const PageEntries& page, const QString& suffix, const QString& value)
{
    checkValueText(value);
    try {
        if (suffix == gd::Type && gd::kindOf(value.toLower()) == gd::Kind::None)
            throw EditError(QStringLiteral("\"%1\" is not a kind: checkbox, option button, frame, "
                                           "combo, label, line or text")
                                .arg(value));
        if (suffix == gd::Location || suffix == gd::XLocation || suffix == gd::YLocation)
            checkPair(value, QStringLiteral("a position"));
        if (suffix == gd::Size)
            checkPair(value, QStringLiteral("a size (HEIGHTxWIDTH)"));
        if ((suffix == gd::Index || suffix == gd::Width) && syntax::toInt16(value) < 1)
            throw EditError(QStringLiteral("%1 is 1 or more").arg(suffix));
        if (suffix == gd::Visible || suffix == gd::Locked)
            syntax::toBoolean(value);
    } catch (const EditError&) {
        throw;
    } catch (const Error&) {
        throw EditError(QStringLiteral("\"%1\" is not a value %2 takes").arg(value, suffix));
    }
    if (suffix == gd::VisualFunction && !value.isEmpty()) {
        const std::optional<RuleTarget> target = parseRuleTarget(value);
        const QString keyword = value.toLower().section(u";;"_s, 1);
        if (!target || !RuleKeywords.contains(keyword))
            throw EditError(QStringLiteral("\"%1\" is not a rule: checkbox<n>, option<n> or "
                                           "combo<n>, then \";;\" and a keyword")
                                .arg(value));
        if (target->widget.kind == gd::KindCombo && !keyword.contains(u"able"))
            throw EditError(QStringLiteral("a combo only takes the enable and disable keywords"));
        bool exists = false;
        for (const auto& [entry, widget] : page.widgets)
            exists = exists || widget == target->widget;
        if (!exists)
            throw EditError(QStringLiteral("\"%1\": the page has no %2 %3")
                                .arg(value, target->widget.kind)
                                .arg(target->widget.element));
    }
}

// Where new keys of an entry go: after its last key line; for an entry without
// any, after the last line of the entries (or Count, or the header).
int anchorLine(const GameDataDocument& doc, int entry)
{
    const std::optional<int> header = doc.section(gd::Section);
    int own = -1, any = *header;
    for (const int line : doc.keyLines(*header)) {
        const std::optional<EntryKey> key = parseEntryKey(lineAt(doc, line).name);
        if (key && key->entry == entry)
            own = line;
        if (key || lineAt(doc, line).name.compare(gd::Count, Qt::CaseInsensitive) == 0)
            any = line;
    }
    return own >= 0 ? own : any;
}

void setOrInsert(LineChanges& changes, const GameDataDocument& doc, int entry,
                 const QString& suffix, const QString& value)
{
    if (const std::optional<int> line = entryLine(doc, entry, suffix))
        changes.setValue(*line, value);
    else
        changes.insertAfter(anchorLine(doc, entry), {gd::entryKey(entry, suffix) + u'=' + value});
}

// Keeps Index values and rule targets on the widgets they named when entries
// are renumbered, removed, given another kind or cut off by Count. A rule whose
// widget is gone goes too; the notes say so.
void followWidgets(LineChanges& changes, QStringList& notes, const GameDataDocument& doc,
                   const PageEntries& before, const NewNumber& newNumber, int newCount,
                   const std::map<int, QString>& retyped = {})
{
    const auto kindAfter = [&](int entry) {
        const auto it = retyped.find(entry);
        return it != retyped.end() ? it->second : PageEntries::kindOf(doc, entry);
    };
    std::map<int, int> order; // new number -> old number
    for (int entry = 1; entry <= before.count.value_or(0); ++entry)
        if (const std::optional<int> n = newNumber(entry); n && *n <= newCount)
            order[*n] = entry;
    std::map<Widget, Widget> moved;
    std::map<QString, int> counters;
    for (const auto& [n, entry] : order) {
        const QString kind = kindAfter(entry);
        if (gd::kindOf(kind) == gd::Kind::None)
            continue;
        const int element = ++counters[kind];
        const auto old = before.widgets.find(entry);
        if (old != before.widgets.end() && old->second.kind == kind)
            moved[old->second] = {kind, element};
    }
    std::set<Widget> built;
    for (const auto& [entry, widget] : before.widgets)
        built.insert(widget);
    // Where an old widget went; nullopt when it is gone, the widget itself
    // when it never existed (nothing to follow).
    const auto follow = [&](const Widget& widget) -> std::optional<Widget> {
        if (!built.count(widget))
            return widget;
        const auto it = moved.find(widget);
        return it == moved.end() ? std::nullopt : std::optional(it->second);
    };

    for (const auto& [n, entry] : order) {
        const auto widget = before.widgets.find(entry);
        if (widget == before.widgets.end() || widget->second.kind != kindAfter(entry))
            continue;
        const QString kind = widget->second.kind;
        const std::optional<int> indexLine = entryLine(doc, entry, gd::Index);
        if (const std::optional<QString> index = stripped(doc, indexLine)) {
            try {
                const std::optional<Widget> to = follow({kind, syntax::toInt16(*index)});
                if (!to)
                    notes << QStringLiteral("Control%1Index: %2 named the widget of the removed "
                                            "entry; it now names the one after it")
                                 .arg(n)
                                 .arg(*index);
                else if (to->element != syntax::toInt16(*index))
                    changes.setValue(*indexLine, QString::number(to->element));
            } catch (const Error&) {
                // Not a number: it names no widget to follow.
            }
        }
        const std::optional<int> ruleLine = entryLine(doc, entry, gd::VisualFunction);
        const std::optional<QString> rule = stripped(doc, ruleLine);
        const std::optional<RuleTarget> target = rule ? parseRuleTarget(*rule) : std::nullopt;
        if (!target)
            continue;
        const std::optional<Widget> to = follow(target->widget);
        if (!to) {
            changes.removeLine(*ruleLine);
            notes << QStringLiteral("Control%1VisualFunction: the rule \"%2\" is removed: its "
                                    "widget is gone")
                         .arg(n)
                         .arg(*rule);
        } else if (to->element != target->widget.element) {
            QString text = *rule;
            text.replace(target->digitsBegin, target->digitsLength, QString::number(to->element));
            changes.setValue(*ruleLine, text);
        }
    }
}

void setCountLine(LineChanges& changes, const GameDataDocument& doc, int count)
{
    if (const std::optional<int> line = doc.keyLine(gd::Section, gd::Count))
        changes.setValue(*line, QString::number(count));
    else
        changes.insertAfter(*doc.section(gd::Section), {gd::Count + u'=' + QString::number(count)});
}

// Renames the key lines of the entries that get another number.
void renumberKeys(LineChanges& changes, const GameDataDocument& doc, int count,
                  const NewNumber& newNumber)
{
    for (const auto& [line, key] : entryLines(doc)) {
        if (key.entry > count)
            continue;
        const std::optional<int> n = newNumber(key.entry);
        if (!n)
            changes.removeLine(line);
        else if (*n != key.entry)
            changes.renumber(line, key.digitsBegin, key.digitsLength, *n);
    }
    // A removed entry that stood between blank lines takes one of them along,
    // so the gaps between entries stay one line.
    const auto& lines = doc.lines();
    const auto blank = [&](size_t i) {
        return i < lines.size() && lines[i].kind == GameDataDocument::Line::Kind::Blank &&
               !changes.isRemoved(int(i));
    };
    for (size_t first = 0; first < lines.size(); ++first) {
        if (!changes.isRemoved(int(first)))
            continue;
        size_t last = first;
        while (last + 1 < lines.size() && changes.isRemoved(int(last + 1)))
            ++last;
        if (first > 0 && blank(first - 1) && blank(last + 1))
            changes.removeLine(int(last + 1));
        first = last;
    }
}

EditResult setOtherSection(const GameDataDocument& doc, const QString& section, const QString& key,
                           const QString& value)
{
    if (section.trimmed().isEmpty() || section.contains(u']') || key.trimmed() != key ||
        key.isEmpty() || key.contains(u'=') || key.startsWith(u'[') || key.startsWith(u';'))
        throw EditError(QStringLiteral("\"%1/%2\" is not a section and key").arg(section, key));
    checkValueText(value);
    LineChanges changes(doc);
    if (const std::optional<int> line = doc.keyLine(section, key)) {
        changes.setValue(*line, value);
    } else if (const std::optional<int> header = doc.section(section)) {
        int after = *header;
        for (const int line : doc.keyLines(*header))
            if (lineAt(doc, line).hasValue)
                after = line;
        changes.insertAfter(after, {key + u'=' + value});
    } else {
        QStringList lines = {u'[' + section.trimmed() + u']', key + u'=' + value};
        if (!doc.bytes().isEmpty())
            lines.prepend(QString());
        changes.insertAfter(-1, lines);
    }
    return {changes.result(), {}};
}

} // namespace

EditResult setKey(const GameDataDocument& doc, const QString& key, const QString& value)
{
    const qsizetype slash = key.indexOf(u'/');
    if (slash >= 0 && key.left(slash).trimmed().compare(gd::Section, Qt::CaseInsensitive) != 0)
        return setOtherSection(doc, key.left(slash), key.sliced(slash + 1), value);
    const QString name = slash >= 0 ? key.sliced(slash + 1) : key;
    const PageEntries page = PageEntries::read(doc);
    EditResult result;
    if (!doc.section(gd::Section))
        throw EditError(QStringLiteral("the file has no section \"Custom Controls\""));
    LineChanges changes(doc);
    if (name.compare(gd::Count, Qt::CaseInsensitive) == 0) {
        checkValueText(value);
        int count = -1;
        try {
            count = syntax::toInt16(value);
        } catch (const Error&) {
        }
        if (count < 0 || value.contains(u'.'))
            throw EditError(QStringLiteral("Count is a whole number from 0 to 32767"));
        followWidgets(
            changes, result.notes, doc, page, [](int e) { return e; }, count);
        setCountLine(changes, doc, count);
        result.bytes = changes.result();
        return result;
    }
    const std::optional<EntryKey> entryKey = parseEntryKey(name);
    const QString suffix = entryKey ? knownSuffix(entryKey->suffix) : QString();
    if (suffix.isEmpty())
        throw EditError(QStringLiteral("\"%1\" is not a key the control reads: Count, or "
                                       "Control<n> followed by Type, Location, Size, Caption, "
                                       "VisualFunction, Visible, Locked, X-Location, Y-Location, "
                                       "Width, Index, ControlKey or ControlDefaultValue")
                            .arg(name));
    requireEntry(page, entryKey->entry);
    checkValue(page, suffix, value);
    if (suffix == gd::Type && value.toLower() != PageEntries::kindOf(doc, entryKey->entry))
        followWidgets(changes, result.notes, doc, page, [](int e) { return e; }, *page.count,
                      {{entryKey->entry, value.toLower()}});
    setOrInsert(changes, doc, entryKey->entry, suffix, value);
    result.bytes = changes.result();
    return result;
}

namespace {

EditResult setPlacement(const GameDataDocument& doc, int entry, const QString& suffix,
                        const QString& value)
{
    const PageEntries page = PageEntries::read(doc);
    requireEntry(page, entry);
    const auto widget = page.widgets.find(entry);
    if (widget == page.widgets.end())
        throw EditError(QStringLiteral("entry %1 builds no widget").arg(entry));
    if (widget->second.kind == gd::KindLine)
        throw EditError(
            QStringLiteral("entry %1 is a line: set its X-Location and Y-Location").arg(entry));
    checkValue(page, suffix, value);
    LineChanges changes(doc);
    setOrInsert(changes, doc, entry, suffix, value);
    return {changes.result(), {}};
}

// Where a new widget of this size goes: the first spot on a 120-twip grid in
// the band the host's fixed widgets leave free whatever it shows (top 1575 to
// 2520), clear of every entry placed there; the band's corner when none is.
QPoint freeSpot(const GameDataDocument& doc, const PageEntries& page, int height, int width)
{
    constexpr int Top = 1680, Bottom = 2520, Left = 120, Right = 6615, Step = 120;
    std::vector<QRect> taken;
    for (const auto& [entry, widget] : page.widgets) {
        const auto at = numberPair(doc, entry, gd::Location);
        const auto size = numberPair(doc, entry, gd::Size);
        if (at && size && widget.kind != gd::KindFrame)
            taken.emplace_back(at->x(), at->y(), size->y(), size->x());
    }
    for (int y = Top; y + height <= Bottom; y += Step)
        for (int x = Left; x + width <= Right; x += Step) {
            const QRect spot(x, y, width, height);
            if (std::none_of(taken.begin(), taken.end(),
                             [&](const QRect& r) { return r.intersects(spot); }))
                return spot.topLeft();
        }
    return {Left, Top};
}

} // namespace

EditResult moveEntry(const GameDataDocument& doc, int entry, const QString& location)
{
    return setPlacement(doc, entry, gd::Location, location);
}

EditResult resizeEntry(const GameDataDocument& doc, int entry, const QString& size)
{
    return setPlacement(doc, entry, gd::Size, size);
}

EditResult addEntry(const GameDataDocument& doc, const QString& kindWord)
{
    const QString kind = kindWord.toLower();
    const gd::Kind k = gd::kindOf(kind);
    if (k == gd::Kind::None)
        throw EditError(QStringLiteral("\"%1\" is not a kind: checkbox, option button, frame, "
                                       "combo, label, line or text")
                            .arg(kindWord));
    const PageEntries page = doc.section(gd::Section) ? PageEntries::read(doc) : PageEntries{0, {}};
    const int entry = readCount(page) + 1;
    if (entry > 32767)
        throw EditError(QStringLiteral("a page holds at most 32767 entries"));
    for (const auto& [line, key] : entryLines(doc))
        if (key.entry == entry)
            throw EditError(QStringLiteral("line %1 has a key of entry %2, which is above Count; "
                                           "remove it first")
                                .arg(line + 1)
                                .arg(entry));

    int element = 1;
    QSet<QString> keys;
    for (const auto& [e, widget] : page.widgets) {
        element += widget.kind == kind;
        if (const std::optional<QString> key =
                doc.value(gd::Section, gd::entryKey(e, gd::ControlKey)))
            keys.insert(key->toLower());
    }
    const auto line = [&](const QString& suffix, const QString& value) {
        return gd::entryKey(entry, suffix) + u'=' + value;
    };
    QStringList lines = {line(gd::Type, kind)};
    static const std::map<gd::Kind, std::pair<QString, QString>> looks = {
        {gd::Kind::CheckBox, {u"255x1800"_s, u"New check box"_s}},
        {gd::Kind::OptionButton, {u"255x1800"_s, u"New option"_s}},
        {gd::Kind::Frame, {u"1215x2400"_s, u"New frame"_s}},
        {gd::Kind::Combo, {u"315x1800"_s, u"first;;second;;(first);;"_s}},
        {gd::Kind::Label, {u"255x1800"_s, u"New label"_s}},
        {gd::Kind::Text, {u"285x1800"_s, QString()}},
    };
    if (k == gd::Kind::Line) {
        const QPoint at = freeSpot(doc, page, 15, 1800);
        lines << line(gd::XLocation, u"%1x%2"_s.arg(at.x()).arg(at.x() + 1800))
              << line(gd::YLocation, u"%1x%1"_s.arg(at.y())) << line(gd::Width, u"1"_s);
    } else {
        const QString size = looks.at(k).first;
        const QPoint at =
            freeSpot(doc, page, size.section(u'x', 0, 0).toInt(), size.section(u'x', 1, 1).toInt());
        lines << line(gd::Location, u"%1x%2"_s.arg(at.x()).arg(at.y())) << line(gd::Size, size)
              << line(gd::Caption, looks.at(k).second);
    }
    if (k == gd::Kind::CheckBox || k == gd::Kind::OptionButton || k == gd::Kind::Combo ||
        k == gd::Kind::Text) {
        QString key = QString(kind).remove(u' ') + QString::number(element);
        for (int n = 2; keys.contains(key.toLower()); ++n)
            key = QString(kind).remove(u' ') + QString::number(element) + u'_' + QString::number(n);
        lines << line(gd::Index, QString::number(element)) << line(gd::ControlKey, key);
        if (k != gd::Kind::Combo)
            lines << line(gd::ControlDefaultValue, u"0"_s);
    }

    LineChanges changes(doc);
    if (!doc.section(gd::Section)) {
        lines.prepend(gd::Count + u"=1"_s);
        lines.prepend(u'[' + gd::Section + u']');
        if (!doc.bytes().isEmpty())
            lines.prepend(QString());
        changes.insertAfter(-1, lines);
    } else {
        setCountLine(changes, doc, entry);
        changes.insertAfter(anchorLine(doc, entry), lines);
    }
    return {changes.result(), {}};
}

EditResult deleteEntry(const GameDataDocument& doc, int entry)
{
    const PageEntries page = PageEntries::read(doc);
    requireEntry(page, entry);
    const NewNumber newNumber = [entry](int e) -> std::optional<int> {
        if (e == entry)
            return std::nullopt;
        return e > entry ? e - 1 : e;
    };
    EditResult result;
    LineChanges changes(doc);
    renumberKeys(changes, doc, *page.count, newNumber);
    followWidgets(changes, result.notes, doc, page, newNumber, *page.count - 1);
    setCountLine(changes, doc, *page.count - 1);
    result.bytes = changes.result();
    return result;
}

EditResult reorderEntry(const GameDataDocument& doc, int entry, int to)
{
    const PageEntries page = PageEntries::read(doc);
    requireEntry(page, entry);
    requireEntry(page, to);
    const NewNumber newNumber = [entry, to](int e) -> std::optional<int> {
        if (e == entry)
            return to;
        if (entry < to && e > entry && e <= to)
            return e - 1;
        if (to < entry && e >= to && e < entry)
            return e + 1;
        return e;
    };
    EditResult result;
    LineChanges changes(doc);
    renumberKeys(changes, doc, *page.count, newNumber);
    followWidgets(changes, result.notes, doc, page, newNumber, *page.count);
    result.bytes = changes.result();
    return result;
}

} // namespace qf::editing
