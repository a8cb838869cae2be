#include "platform/IniDocument.h"

#include <algorithm>
#include <atomic>

namespace qf {

namespace {

// The section number under which the section names are kept.
constexpr qsizetype SectionNames = -1;

QStringView trimmed(QStringView text)
{
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && isProfileBlank(text[begin]))
        ++begin;
    while (end > begin && isProfileBlank(text[end - 1]))
        --end;
    return text.sliced(begin, end - begin);
}

char32_t foldedAt(QStringView text, qsizetype& i)
{
    const char16_t c = text[i++].unicode();
    if (c < 0x80)
        return (c >= u'A' && c <= u'Z') ? char32_t(c + 0x20) : char32_t(c);
    if (QChar::isHighSurrogate(c) && i < text.size() && text[i].isLowSurrogate())
        return QChar::toCaseFolded(QChar::surrogateToUcs4(c, text[i++].unicode()));
    return QChar::toCaseFolded(char32_t(c));
}

} // namespace

size_t caseInsensitiveHash(QStringView text, size_t seed)
{
    // FNV-1a over the case-folded code points.
    quint64 hash = 0xcbf29ce484222325ULL ^ seed;
    const char16_t* data = text.utf16();
    for (qsizetype i = 0; i < text.size();) {
        const char16_t c = data[i];
        if (c < 0x80) {
            hash ^= (c >= u'A' && c <= u'Z') ? char32_t(c + 0x20) : char32_t(c);
            ++i;
        } else {
            hash ^= foldedAt(text, i);
        }
        hash *= 0x100000001b3ULL;
    }
    return size_t(hash ^ (hash >> 32));
}

bool isProfileBlank(QChar c)
{
    // ^Z ends files copied from DOS and counts as a blank there.
    const char16_t u = c.unicode();
    return (u >= 0x09 && u <= 0x0D) || u == 0x1A || u == 0x20;
}

IniDocument IniDocument::parse(QString text)
{
    static std::atomic<quint64> lastId{0};
    IniDocument doc;
    doc.m_id = ++lastId;
    doc.m_text = std::move(text);
    const QStringView all(doc.m_text);
    // Every line holds at most one key; spare room costs little, rehashing
    // a large file costs much.
    const qsizetype lineFeeds = all.count(u'\n');
    const qsizetype lineCount = (lineFeeds > 0 ? lineFeeds : all.count(u'\r')) + 1;
    doc.m_keys.reserve(lineCount);
    doc.m_lines.reserve(size_t(lineCount));

    doc.m_headers.push_back(Line{});
    doc.m_sections.insert(KeyRef{SectionNames, {}}, 0);
    qint32 header = 0;
    bool repeated = false; // keys of a repeated section are never found

    qsizetype pos = 0;
    qint32 lineNumber = 0;
    while (pos < all.size()) {
        qsizetype end = pos;
        bool hasNul = false;
        for (; end < all.size(); ++end) {
            const char16_t c = all[end].unicode();
            if (c == u'\n' || c == u'\r')
                break;
            hasNul |= c == 0;
        }
        const QStringView line = trimmed(all.sliced(pos, end - pos));
        pos = end + (end + 1 < all.size() && all[end] == u'\r' && all[end + 1] == u'\n' ? 2 : 1);
        ++lineNumber;
        if (line.isEmpty())
            continue;
        // A NUL ends the name or value it is in, as in a C string.
        const auto cut = [hasNul](QStringView part) {
            if (!hasNul)
                return part;
            const qsizetype nul = part.indexOf(QChar(0));
            return nul < 0 ? part : part.first(nul);
        };

        if (line.front() == u'[') {
            const qsizetype close = line.lastIndexOf(u']');
            if (close > 0) {
                const QStringView name = cut(trimmed(line.sliced(1, close - 1)));
                header = qint32(doc.m_headers.size());
                doc.m_headers.push_back(Line{name, {}, lineNumber, header, false});
                const qsizetype count = doc.m_sections.size();
                qsizetype& first = doc.m_sections[KeyRef{SectionNames, name}];
                repeated = doc.m_sections.size() == count;
                if (!repeated)
                    first = header;
                continue;
            }
            // Without "]" the line is read as a key line, as Windows does.
        }

        const qsizetype equals = line.indexOf(u'=');
        Line entry{cut(line), {}, lineNumber, header, false};
        if (equals >= 0) {
            entry.name = cut(trimmed(line.first(equals)));
            entry.value = cut(trimmed(line.sliced(equals + 1)));
            entry.present = true;
        }
        doc.m_lines.push_back(entry);
        if (repeated)
            continue;
        // The first line of a key name wins, even one without "=".
        const qsizetype count = doc.m_keys.size();
        Value& slot = doc.m_keys[KeyRef{header, entry.name}];
        if (doc.m_keys.size() != count) {
            slot = Value{entry.value, qint32(doc.m_lines.size() - 1), entry.present};
            doc.m_lines.back().found = true;
        }
    }
    return doc;
}

std::optional<qsizetype> IniDocument::findSection(QStringView section) const
{
    // The reads of one file mostly ask for one section in a row.
    thread_local quint64 lastDocument = 0;
    thread_local QString lastName;
    thread_local std::optional<qsizetype> lastHeader;
    if (lastDocument == m_id && section == lastName)
        return lastHeader;
    const auto it = m_sections.constFind(KeyRef{SectionNames, trimmed(section)});
    lastDocument = m_id;
    lastName = section.toString();
    lastHeader = it == m_sections.cend() ? std::nullopt : std::optional<qsizetype>(*it);
    return lastHeader;
}

const IniDocument::Line* IniDocument::findKey(QStringView section, QStringView key) const
{
    const std::optional<qsizetype> header = findSection(section);
    if (!header)
        return nullptr;
    const auto it = m_keys.constFind(KeyRef{*header, trimmed(key)});
    return it == m_keys.cend() ? nullptr : &m_lines[size_t(it->line)];
}

namespace {
// The line the last lookup of a document found, for the next one to start at.
thread_local quint64 lastFoundDocument = 0;
thread_local qsizetype lastFoundLine = -1;
} // namespace

const IniDocument::Line* IniDocument::nearLastFound(qsizetype header, QStringView key) const
{
    // A build or a load reads the keys of an entry, then of the next one, in
    // about the order they are written: the few lines after the last one found
    // usually hold the next, and reading them costs less than a hash lookup
    // in a large file. Only a name written exactly as looked up is taken here.
    if (lastFoundDocument != m_id)
        return nullptr;
    const qsizetype end = std::min<qsizetype>(lastFoundLine + 8, qsizetype(m_lines.size()));
    for (qsizetype i = lastFoundLine + 1; i < end; ++i) {
        const Line& line = m_lines[size_t(i)];
        if (line.found && line.header == header && line.name == key) {
            lastFoundLine = i;
            return &line;
        }
    }
    return nullptr;
}

std::optional<QStringView> IniDocument::rawView(QStringView section, QStringView key) const
{
    const std::optional<qsizetype> header = findSection(section);
    if (!header)
        return std::nullopt;
    const QStringView name = trimmed(key);
    if (const Line* line = nearLastFound(*header, name))
        return line->present ? std::optional(line->value) : std::nullopt;
    const auto keyIt = m_keys.constFind(KeyRef{*header, name});
    if (keyIt == m_keys.cend())
        return std::nullopt;
    lastFoundDocument = m_id;
    lastFoundLine = keyIt->line;
    if (!keyIt->present)
        return std::nullopt;
    return keyIt->text;
}

std::optional<QString> IniDocument::rawValue(QStringView section, QStringView key) const
{
    const std::optional<QStringView> view = rawView(section, key);
    return view ? std::optional(view->toString()) : std::nullopt;
}

IniDocument::Position IniDocument::positionOf(const Line& line, QStringView text) const
{
    const QStringView all(m_text);
    const qsizetype at = text.data() - all.data();
    qsizetype start = at;
    while (start > 0 && all[start - 1] != u'\n' && all[start - 1] != u'\r')
        --start;
    const QStringView before = all.sliced(start, at - start);
    qsizetype pairs = 0;
    for (qsizetype i = 1; i < before.size(); ++i)
        pairs += before[i].isLowSurrogate() && before[i - 1].isHighSurrogate();
    return {line.lineNumber, int(before.size() - pairs) + 1};
}

std::optional<IniDocument::Position> IniDocument::sectionPosition(QStringView section) const
{
    const std::optional<qsizetype> header = findSection(section);
    if (!header || *header == 0)
        return std::nullopt;
    const Line& line = m_headers[size_t(*header)];
    return positionOf(line, line.name);
}

std::optional<IniDocument::Position> IniDocument::keyPosition(QStringView section,
                                                              QStringView key) const
{
    const Line* line = findKey(section, key);
    if (!line)
        return std::nullopt;
    return positionOf(*line, line->name);
}

std::optional<IniDocument::Position> IniDocument::valuePosition(QStringView section,
                                                                QStringView key) const
{
    const Line* line = findKey(section, key);
    if (!line || !line->present)
        return std::nullopt;
    return positionOf(*line, line->value);
}

QList<IniDocument::SectionLines> IniDocument::lines() const
{
    QList<SectionLines> sections;
    sections.reserve(qsizetype(m_headers.size()));
    for (size_t i = 0; i < m_headers.size(); ++i) {
        const Line& header = m_headers[i];
        sections.append(
            SectionLines{header.name,
                         i == 0 ? std::nullopt : std::optional(positionOf(header, header.name)),
                         {}});
    }
    for (const Line& line : m_lines) {
        KeyLine key{line.name, std::nullopt, positionOf(line, line.name), std::nullopt};
        if (line.present) {
            key.value = line.value;
            key.valuePosition = positionOf(line, line.value);
        }
        sections[line.header].keys.append(std::move(key));
    }
    if (sections.front().keys.isEmpty())
        sections.removeFirst();
    return sections;
}

std::optional<QString> IniDocument::value(QStringView section, QStringView key) const
{
    std::optional<QString> raw = rawValue(section, key);
    if (raw)
        return stripQuotes(*raw);
    return raw;
}

QString IniDocument::stripQuotes(const QString& text)
{
    if (text.size() >= 2 && (text.front() == u'"' || text.front() == u'\'') &&
        text.back() == text.front())
        return text.sliced(1, text.size() - 2);
    return text;
}

} // namespace qf
