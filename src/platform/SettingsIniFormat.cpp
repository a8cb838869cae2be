#include "platform/SettingsIniFormat.h"

#include "platform/Errors.h"
#include "platform/TextEdits.h"

#include <QByteArrayView>
#include <QDataStream>
#include <QIODevice>
#include <QRegularExpression>
#include <QStringDecoder>
#include <QStringList>
#include <QVariant>

#include <algorithm>

// The syntax is QSettings' own: sections, keys and values are parsed the way
// its INI reader parses them, and written the way its writer writes them.
namespace qf::settingsini {

namespace {

// "/" and "\" would split a name into groups: they become %2F and %5C. A "%"
// is written as %25 only where it would otherwise read as one of these three
// escapes, so a name like "Mod 100%" is the key a host's plain QSettings
// writes, and every name still has a key of its own.
QString escapedName(const QString& name)
{
    if (!name.contains(u'%') && !name.contains(u'/') && !name.contains(u'\\'))
        return name; // most names: nothing to escape
    const auto startsEscape = [&](qsizetype at) {
        const QStringView next =
            QStringView(name).sliced(at + 1).first(std::min<qsizetype>(2, name.size() - at - 1));
        return next.compare(u"25", Qt::CaseInsensitive) == 0 ||
               next.compare(u"2F", Qt::CaseInsensitive) == 0 ||
               next.compare(u"5C", Qt::CaseInsensitive) == 0;
    };
    QString escaped;
    escaped.reserve(name.size());
    for (qsizetype i = 0; i < name.size(); ++i) {
        const QChar c = name.at(i);
        if (c == u'%' && startsEscape(i))
            escaped += u"%25";
        else if (c == u'/')
            escaped += u"%2F";
        else if (c == u'\\')
            escaped += u"%5C";
        else
            escaped += c;
    }
    return escaped;
}

QString escapedSection(const QString& section)
{
    const QString general = QStringLiteral("General");
    // A name that reads like the escape below keeps its "%" as %25.
    static const QRegularExpression likeEscapedGeneral(QStringLiteral("^%[0-9a-f]{2}eneral$"),
                                                       QRegularExpression::CaseInsensitiveOption);
    if (likeEscapedGeneral.match(section).hasMatch())
        return QStringLiteral("%25") + section.mid(1);
    if (section == general || section.compare(general, Qt::CaseInsensitive) != 0)
        return escapedName(section);
    return u'%' + QString::number(section.at(0).unicode(), 16).toUpper() + section.mid(1);
}

bool isSpace(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

bool isSpecial(char c)
{
    return c == '\n' || c == '\r' || c == '"' || c == ';' || c == '=' || c == '\\';
}

int hexValue(char16_t c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

int octValue(char c)
{
    return c >= '0' && c <= '7' ? c - '0' : -1;
}

// The next logical line from pos on: comments and blank lines skipped; quotes
// and a backslash before a line break continue a line over several; an
// unquoted ";" ends it. equals is the first unquoted "=", or -1; lineBreak the
// first line break inside it, or -1; quotedBreak the first inside quotes.
struct LogicalLine {
    qsizetype start = 0;
    qsizetype length = 0;
    qsizetype equals = -1;
    qsizetype lineBreak = -1;
    qsizetype quotedBreak = -1;
};

bool readLine(QByteArrayView data, qsizetype& pos, LogicalLine& line)
{
    const qsizetype size = data.size();
    bool inQuotes = false;
    line = {};
    qsizetype start = pos;
    while (start < size && isSpace(data[start]))
        ++start;
    qsizetype i = start;
    while (i < size) {
        const char c = data[i++];
        if (!isSpecial(c))
            continue;
        if (c == '=') {
            if (!inQuotes && line.equals == -1)
                line.equals = i - 1;
        } else if (c == '\n' || c == '\r') {
            if (i == start + 1) {
                ++start;
            } else if (!inQuotes) {
                --i;
                break;
            } else {
                if (line.lineBreak < 0)
                    line.lineBreak = i - 1;
                if (line.quotedBreak < 0)
                    line.quotedBreak = i - 1;
            }
        } else if (c == '\\') {
            if (i < size) {
                const char next = data[i++];
                if ((next == '\n' || next == '\r') && line.lineBreak < 0)
                    line.lineBreak = i - 1;
                if (i < size &&
                    ((next == '\n' && data[i] == '\r') || (next == '\r' && data[i] == '\n')))
                    ++i;
            }
        } else if (c == '"') {
            inQuotes = !inQuotes;
        } else if (i == start + 1) { // ';' opening a comment line
            while (i < size && data[i] != '\n' && data[i] != '\r')
                ++i;
            while (i < size && isSpace(data[i]))
                ++i;
            start = i;
        } else if (!inQuotes) {
            --i;
            break;
        }
    }
    pos = i;
    line.start = start;
    line.length = i - start;
    return line.length > 0;
}

QByteArray escapedKey(const QString& key)
{
    static constexpr char Hex[] = "0123456789ABCDEF";
    QByteArray escaped;
    escaped.reserve(key.size() * 3 / 2);
    for (const QChar qc : key) {
        char16_t c = qc.unicode();
        if (c == '/') {
            escaped += '\\';
        } else if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
                   c == '_' || c == '-' || c == '.') {
            escaped += char(c);
        } else if (c <= 0xFF) {
            escaped += '%';
            escaped += Hex[c / 16];
            escaped += Hex[c % 16];
        } else {
            escaped += "%U";
            for (int shift = 12; shift >= 0; shift -= 4)
                escaped += Hex[(c >> shift) & 0xF];
        }
    }
    return escaped;
}

QString unescapedKey(QByteArrayView raw)
{
    const QString key = QString::fromUtf8(raw);
    QString result;
    result.reserve(key.size());
    for (qsizetype i = 0; i < key.size();) {
        const QChar c = key.at(i);
        if (c == u'\\') {
            result += u'/';
            ++i;
            continue;
        }
        if (c == u'%' && i + 1 < key.size()) {
            const bool wide = key.at(i + 1) == u'U';
            const qsizetype first = i + (wide ? 2 : 1);
            const qsizetype digits = wide ? 4 : 2;
            // QSettings reads the digits as a number, blanks, "+" and "0x" included.
            bool ok = false;
            const ushort code = first + digits <= key.size()
                                    ? QStringView(key).sliced(first, digits).toUShort(&ok, 16)
                                    : 0;
            if (ok) {
                result += QChar(code);
                i = first + digits;
                continue;
            }
        }
        result += c;
        ++i;
    }
    return result;
}

// A text as QSettings writes it, and besides with U+FEFF and unpaired
// surrogates as hex escapes: a reader decoding UTF-8 drops U+FEFF at the start
// of a run and cannot carry an unpaired surrogate.
void appendEscapedText(QByteArray& escaped, const QString& text)
{
    const qsizetype start = escaped.size();
    bool needsQuotes = false;
    bool escapeNextIfHex = false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t c = text.at(i).unicode();
        if (c == ';' || c == ',' || c == '=')
            needsQuotes = true;
        // "\x1" followed by "a" would read as "\x1a".
        if (escapeNextIfHex && hexValue(c) >= 0) {
            escaped += "\\x" + QByteArray::number(c, 16);
            continue;
        }
        escapeNextIfHex = false;
        switch (c) {
        case '\0':
            escaped += "\\0";
            escapeNextIfHex = true;
            break;
        case '\a':
            escaped += "\\a";
            break;
        case '\b':
            escaped += "\\b";
            break;
        case '\f':
            escaped += "\\f";
            break;
        case '\n':
            escaped += "\\n";
            break;
        case '\r':
            escaped += "\\r";
            break;
        case '\t':
            escaped += "\\t";
            break;
        case '\v':
            escaped += "\\v";
            break;
        case '"':
        case '\\':
            escaped += '\\';
            escaped += char(c);
            break;
        default:
            if (c <= 0x1F || c == 0xFEFF ||
                (QChar::isSurrogate(c) && !(QChar::isHighSurrogate(c) && i + 1 < text.size() &&
                                            text.at(i + 1).isLowSurrogate()))) {
                escaped += "\\x" + QByteArray::number(c, 16);
                escapeNextIfHex = true;
            } else if (c < 0x80) {
                escaped += char(c);
            } else {
                const qsizetype units = QChar::isHighSurrogate(c) ? 2 : 1;
                escaped += QStringView(text).sliced(i, units).toUtf8();
                i += units - 1;
            }
        }
    }
    if (needsQuotes ||
        (escaped.size() > start && (escaped.at(start) == ' ' || escaped.back() == ' '))) {
        escaped.insert(start, '"');
        escaped.append('"');
    }
}

void chopTrailingBlanks(QString& text, qsizetype limit)
{
    qsizetype n = text.size();
    while (n > limit && (text.at(n - 1) == u' ' || text.at(n - 1) == u'\t'))
        --n;
    text.truncate(n);
}

// A value's text: quotes removed, escapes replaced, and unquoted commas
// splitting it into a list.
template <typename Stored> Stored unescapedValue(QByteArrayView raw)
{
    static constexpr char EscapeCodes[][2] = {{'a', '\a'}, {'b', '\b'},  {'f', '\f'}, {'n', '\n'},
                                              {'r', '\r'}, {'t', '\t'},  {'v', '\v'}, {'"', '"'},
                                              {'?', '?'},  {'\'', '\''}, {'\\', '\\'}};
    enum class State { SkipBlanks, Normal, HexEscape, OctEscape, End };
    Stored value;
    QString& text = value.text;
    // One decoder for the whole value, as QSettings has: a BOM is dropped only
    // where decoding starts, and a character may go on across an escape.
    QStringDecoder fromUtf8(QStringDecoder::Utf8);
    const qsizetype size = raw.size();
    qsizetype i = 0;
    bool inQuotes = false;
    bool quoted = false;
    char16_t code = 0;
    qsizetype chopLimit = 0;
    State state = State::SkipBlanks;
    const auto enterNormal = [&] {
        chopLimit = text.size();
        state = State::Normal;
    };
    while (state != State::End) {
        switch (state) {
        case State::SkipBlanks:
            while (i < size && (raw[i] == ' ' || raw[i] == '\t'))
                ++i;
            enterNormal();
            break;
        case State::Normal:
            if (i >= size) {
                if (!quoted)
                    chopTrailingBlanks(text, chopLimit);
                state = State::End;
            } else if (raw[i] == '\\') {
                if (++i >= size) {
                    state = State::End;
                    break;
                }
                const char c = raw[i++];
                const auto* known = std::find_if(std::begin(EscapeCodes), std::end(EscapeCodes),
                                                 [c](const char* e) { return e[0] == c; });
                if (known != std::end(EscapeCodes)) {
                    text += QLatin1Char((*known)[1]);
                    enterNormal();
                } else if (c == 'x') {
                    code = 0;
                    if (i >= size)
                        state = State::End;
                    else if (hexValue(uchar(raw[i])) >= 0)
                        state = State::HexEscape;
                    else
                        chopLimit = text.size();
                } else if (octValue(c) >= 0) {
                    code = char16_t(octValue(c));
                    state = State::OctEscape;
                } else {
                    // A line break after a backslash continues the line; any
                    // other escaped character is dropped.
                    if ((c == '\n' || c == '\r') && i < size &&
                        (raw[i] == '\n' || raw[i] == '\r') && raw[i] != c)
                        ++i;
                    chopLimit = text.size();
                }
            } else if (raw[i] == '"') {
                ++i;
                quoted = true;
                inQuotes = !inQuotes;
                if (!inQuotes)
                    state = State::SkipBlanks;
            } else if (raw[i] == ',' && !inQuotes) {
                if (!quoted)
                    chopTrailingBlanks(text, chopLimit);
                value.isList = true;
                value.list.append(text);
                text.clear();
                quoted = false;
                ++i;
                state = State::SkipBlanks;
            } else {
                qsizetype j = i + 1;
                while (j < size && raw[j] != '\\' && raw[j] != '"' && raw[j] != ',')
                    ++j;
                text += fromUtf8(raw.sliced(i, j - i));
                i = j;
            }
            break;
        case State::HexEscape:
        case State::OctEscape: {
            const bool hex = state == State::HexEscape;
            const int digit = i < size ? (hex ? hexValue(uchar(raw[i])) : octValue(raw[i])) : -1;
            if (digit >= 0) {
                code = char16_t((code << (hex ? 4 : 3)) + digit);
                ++i;
            } else {
                text += QChar(code);
                if (i >= size)
                    state = State::End;
                else
                    enterNormal();
            }
            break;
        }
        case State::End:
            break;
        }
    }
    if (value.isList)
        value.list.append(text);
    return value;
}

// QSettings' split of a typed value's arguments: at each blank, with ")"
// ending an argument without starting a new one.
qsizetype argumentCount(QStringView text, qsizetype open)
{
    qsizetype count = 0;
    for (qsizetype i = open + 1; i < text.size(); ++i)
        if (text.at(i) == u' ' || text.at(i) == u')')
            ++count;
    return count;
}

// What QSettings' value().toString() makes of a value's text: "@" marks a
// value of another type than text, and "@@" a text that starts with "@"; a
// typed value whose text QSettings cannot read stays the text it is.
QString typedText(const QString& text)
{
    if (!text.startsWith(u'@') || text.startsWith(u"@@"))
        return text.startsWith(u'@') ? text.sliced(1) : text;
    if (!text.endsWith(u')'))
        return text;
    if (text.startsWith(u"@String("))
        return text.sliced(8).chopped(1);
    if (text.startsWith(u"@ByteArray("))
        return QString::fromUtf8(text.sliced(11).chopped(1).toLatin1());
    if (text == u"@Invalid()")
        return QString();
    // Geometry has no text form; with the wrong number of numbers it is no geometry.
    const struct {
        QLatin1StringView prefix;
        qsizetype arguments;
    } geometry[] = {{QLatin1StringView("@Rect("), 4},
                    {QLatin1StringView("@Size("), 2},
                    {QLatin1StringView("@Point("), 2}};
    for (const auto& shape : geometry)
        if (text.startsWith(shape.prefix))
            return argumentCount(text, shape.prefix.size() - 1) == shape.arguments ? QString()
                                                                                   : text;
    const bool isDateTime = text.startsWith(u"@DateTime(");
    if (isDateTime || text.startsWith(u"@Variant(")) {
        QByteArray data = text.sliced(isDateTime ? 10 : 9).toLatin1();
        QDataStream stream(&data, QIODevice::ReadOnly);
        stream.setVersion(isDateTime ? QDataStream::Qt_5_6 : QDataStream::Qt_4_0);
        QVariant variant;
        stream >> variant;
        return variant.toString();
    }
    return text;
}

// The text a value is stored as: "@" starts a typed value, and a text with a
// NUL goes inside "@String()", as QSettings writes one.
QString storedText(const QString& text)
{
    if (text.contains(QChar::Null))
        return QStringLiteral("@String(") + text + u')';
    return text.startsWith(u'@') ? u'@' + text : text;
}

QByteArray escapedValue(const QString& text)
{
    QByteArray escaped;
    appendEscapedText(escaped, storedText(text));
    return escaped;
}

QByteArray sectionHeader(const QString& section)
{
    QByteArray header = section.isEmpty() ? QByteArrayLiteral("General") : escapedKey(section);
    if (!section.isEmpty() && header.compare("general", Qt::CaseInsensitive) == 0)
        header.prepend('%');
    return '[' + header + ']';
}

bool isValidUtf8(QByteArrayView bytes)
{
    QStringDecoder decoder(QStringConverter::Utf8, QStringDecoder::Flag::Stateless);
    const QString decoded = decoder.decode(bytes);
    return !decoder.hasError();
}

// The end of the physical line that holds pos.
qsizetype lineEnd(QByteArrayView data, qsizetype pos)
{
    while (pos < data.size() && data[pos] != '\n' && data[pos] != '\r')
        ++pos;
    return pos;
}

} // namespace

QString settingsKey(const QString& section, const QString& key)
{
    if (key.isEmpty())
        throw InvalidValueError(
            QStringLiteral("A settings key must not be empty (section \"%1\")").arg(section));
    // An empty section leaves the key at the top level, the INI section [General].
    if (section.isEmpty())
        return escapedName(key);
    // A load asks for many keys of one game in a row.
    thread_local QString lastSection, lastEscaped;
    if (lastSection.isNull() || section != lastSection) {
        lastSection = section;
        lastEscaped = escapedSection(section) + u'/';
    }
    return lastEscaped + escapedName(key);
}

Document::Document(QByteArrayView data)
    : m_bytes(data.toByteArray()), m_eol(data.contains("\r\n")                         ? "\r\n"
                                         : data.contains('\r') && !data.contains('\n') ? "\r"
                                                                                       : "\n")
{
    // At most a key a line; growing the index as it fills costs more.
    const qsizetype lineFeeds = data.count('\n');
    const qsizetype lines = (lineFeeds > 0 ? lineFeeds : data.count('\r')) + 1;
    m_entries.reserve(size_t(lines));
    m_index.reserve(lines);
    QString section;
    QString prefix; // the section's name and "/", empty at the top level
    const auto keyLine = [&](const LogicalLine& line) {
        if (line.quotedBreak >= 0)
            m_runawayQuotes.push_back(line.quotedBreak);
        if (m_sections.empty())
            m_sections.push_back({QString(), 0}); // the lines before any header
        m_sections.back().addAt = lineEnd(data, line.start + line.length);
        // QSettings drops a line without "=", and so does the document.
        if (line.equals < 0)
            return;
        const QByteArrayView text = data.sliced(line.start, line.length);
        Entry entry;
        // The byte order mark a first key starts with goes as its UTF-8 is read.
        entry.key =
            prefix + unescapedKey(data.sliced(line.start, line.equals - line.start).trimmed());
        entry.value = unescapedValue<Stored>(
            data.sliced(line.equals + 1, line.start + line.length - line.equals - 1));
        entry.section = section;
        entry.begin = line.start;
        entry.end = line.start + line.length;
        entry.equals = line.equals;
        entry.damaged = line.lineBreak >= 0 || text.contains('\0') || !isValidUtf8(text);
        insert(std::move(entry));
    };

    qsizetype pos = 0;
    LogicalLine line;
    // QSettings finds the sections past a byte order mark, but reads the keys
    // before the first one from the file's first byte, the mark included: a
    // blank after the mark stays in the first key.
    if (data.startsWith("\xEF\xBB\xBF")) {
        qsizetype scan = 3;
        qsizetype header = data.size();
        while (readLine(data, scan, line))
            if (data[line.start] == '[') {
                header = line.start;
                break;
            }
        const QByteArrayView beforeHeader = data.first(header);
        while (readLine(beforeHeader, pos, line))
            keyLine(line);
        pos = header;
    }
    while (readLine(data, pos, line)) {
        const QByteArrayView text = data.sliced(line.start, line.length);
        if (!text.startsWith('[')) {
            keyLine(line);
            continue;
        }
        if (line.quotedBreak >= 0)
            m_runawayQuotes.push_back(line.quotedBreak);
        qsizetype close = text.indexOf(']');
        if (close < 0)
            close = line.length;
        const QByteArrayView name = text.sliced(1, close - 1).trimmed();
        // [General] holds the keys of the top level; "[]" keys that start
        // with "/", as QSettings reads them.
        const bool general = name.compare("general", Qt::CaseInsensitive) == 0;
        if (general)
            section.clear();
        else if (name.compare("%general", Qt::CaseInsensitive) == 0)
            section = QString::fromLatin1(name.sliced(1));
        else
            section = unescapedKey(name);
        prefix = general ? QString() : section + u'/';
        m_sections.push_back({prefix, lineEnd(data, line.start + line.length)});
    }
}

void Document::insert(Entry entry)
{
    // QSettings keeps "[]" keys as "/key", which no name reaches and its
    // writer puts under [General]; there they must not hide a key "key".
    entry.exact = !entry.key.startsWith(u'/');
    if (!entry.exact)
        entry.key.remove(0, 1);
    const auto found = m_index.constFind(entry.key);
    if (found == m_index.constEnd()) {
        m_index.insert(entry.key, m_entries.size());
        m_entries.push_back(std::move(entry));
        return;
    }
    Entry& had = m_entries[*found];
    if (had.exact && !entry.exact)
        return;
    // QSettings reads the sections in the order of their names, a repeated one
    // in file order: a key defined in two sections takes the value of the
    // section that comes later in that order.
    if (had.exact == entry.exact && entry.section < had.section)
        return;
    QString key = std::move(had.key);
    had = std::move(entry);
    had.key = std::move(key);
}

std::optional<QString> Document::value(const QString& settingsKey) const
{
    const auto found = m_index.constFind(settingsKey);
    if (found == m_index.constEnd() || !m_entries[*found].exact)
        return std::nullopt;
    const Stored& stored = m_entries[*found].value;
    // A list has no text form in QSettings.
    return stored.isList ? QString() : typedText(stored.text);
}

Document::Saved Document::withValues(const std::vector<std::pair<QString, QString>>& values) const
{
    // A quote left open at the end of its line swallows the lines after it;
    // a save ends it there, as the person who typed it meant, so that the
    // keys below read as their own again, and keeps the file as found.
    if (!m_runawayQuotes.empty()) {
        Document closed(withRunawayQuotesClosed());
        for (int round = 0; round < 64 && !closed.m_runawayQuotes.empty(); ++round)
            closed = Document(closed.withRunawayQuotesClosed());
        Saved saved = closed.inPlace(values);
        saved.altered = true;
        return saved;
    }
    return inPlace(values);
}

QByteArray Document::withRunawayQuotesClosed() const
{
    TextEdits<QByteArray> edits(m_bytes);
    for (const qsizetype at : m_runawayQuotes)
        edits.insert(at, QByteArrayLiteral("\""));
    return edits.result();
}

Document::Saved Document::inPlace(const std::vector<std::pair<QString, QString>>& values) const
{
    const QByteArray& eol = m_eol;
    TextEdits<QByteArray> edits(m_bytes);
    bool altered = false;
    // New keys by the section QSettings' writer files them under: the part
    // of the key before its first "/".
    QStringList added;
    QHash<QString, QByteArray> addedFor;
    std::vector<bool> setEntries(m_entries.size());
    for (const auto& [key, text] : values) {
        const auto found = m_index.constFind(key);
        if (found != m_index.constEnd() && m_entries[*found].exact) {
            setEntries[*found] = true;
            const Entry& entry = m_entries[*found];
            altered |= entry.damaged;
            // The key as written and the blanks around the value stay.
            const QByteArrayView old(m_bytes.constData() + entry.equals + 1,
                                     entry.end - entry.equals - 1);
            qsizetype lead = 0;
            while (lead < old.size() && (old[lead] == ' ' || old[lead] == '\t'))
                ++lead;
            qsizetype trail = old.size();
            while (trail > lead && (old[trail - 1] == ' ' || old[trail - 1] == '\t'))
                --trail;
            edits.replace(entry.equals + 1, entry.end,
                          old.first(lead).toByteArray() + escapedValue(text) +
                              old.sliced(trail).toByteArray());
            continue;
        }
        const qsizetype slash = key.indexOf(u'/');
        const QString section = slash < 0 ? QString() : key.first(slash);
        const QByteArray line =
            escapedKey(slash < 0 ? key : key.sliced(slash + 1)) + '=' + escapedValue(text);
        if (!addedFor.contains(section))
            added.append(section);
        addedFor[section] += line + eol;
    }
    QByteArray appended;
    for (const QString& section : added) {
        const QByteArray lines = addedFor.value(section);
        const QString prefix = section.isEmpty() ? QString() : section + u'/';
        const auto last = std::find_if(m_sections.rbegin(), m_sections.rend(),
                                       [&](const Section& s) { return s.prefix == prefix; });
        if (last != m_sections.rend()) {
            // After the section's last line, whatever follows it.
            edits.insert(last->addAt, eol + lines.chopped(eol.size()));
            continue;
        }
        if (!m_bytes.isEmpty() || !appended.isEmpty())
            appended += eol;
        appended += sectionHeader(section) + eol + lines;
    }
    if (!appended.isEmpty()) {
        if (!m_bytes.isEmpty() && !m_bytes.endsWith('\n') && !m_bytes.endsWith('\r'))
            appended.prepend(eol);
        edits.insert(m_bytes.size(), appended);
    }
    QByteArray bytes = edits.result();
    // The rare file whose lines an edit would join (a backslash ending the
    // last line) is written whole instead.
    auto saved = std::make_unique<Document>(bytes);
    if (!readsAsSaved(*saved, values, setEntries))
        return {wholeFile(values), true, nullptr};
    return {bytes, altered, std::move(saved)};
}

bool Document::readsAsSaved(const Document& saved,
                            const std::vector<std::pair<QString, QString>>& values,
                            const std::vector<bool>& setEntries) const
{
    for (const auto& [key, text] : values)
        if (saved.value(key) != text)
            return false;
    for (size_t i = 0; i < m_entries.size(); ++i) {
        const Entry& entry = m_entries[i];
        if (!entry.exact || setEntries[i])
            continue;
        // A value stored alike reads alike; one stored otherwise may still.
        const auto found = saved.m_index.constFind(entry.key);
        if (found != saved.m_index.constEnd() && saved.m_entries[*found].exact &&
            saved.m_entries[*found].value == entry.value)
            continue;
        if (saved.value(entry.key) != value(entry.key))
            return false;
    }
    return true;
}

QByteArray Document::wholeFile(const std::vector<std::pair<QString, QString>>& values) const
{
    Document updated = *this;
    for (const auto& [key, text] : values) {
        Entry entry;
        entry.key = key;
        entry.value.text = storedText(text);
        entry.section = QStringLiteral("\uFFFF"); // later than any section: it wins
        updated.insert(std::move(entry));
    }
    const QByteArray& eol = m_eol;
    // Sections by the part of the key before its first "/", in the order they
    // first come, as QSettings' writer groups them.
    std::vector<std::pair<QString, std::vector<const Entry*>>> sections;
    QHash<QString, size_t> sectionIndex;
    for (const Entry& entry : updated.m_entries) {
        const qsizetype slash = entry.key.indexOf(u'/');
        const QString section = slash < 0 ? QString() : entry.key.first(slash);
        auto found = sectionIndex.constFind(section);
        if (found == sectionIndex.constEnd()) {
            found = sectionIndex.insert(section, sections.size());
            sections.emplace_back(section, std::vector<const Entry*>());
        }
        sections[*found].second.push_back(&entry);
    }

    QByteArray result;
    for (const auto& [section, entries] : sections) {
        if (!result.isEmpty())
            result += eol;
        result += sectionHeader(section) + eol;
        for (const Entry* entry : entries) {
            result +=
                escapedKey(section.isEmpty() ? entry->key : entry->key.sliced(section.size() + 1));
            result += '=';
            if (!entry->value.isList) {
                appendEscapedText(result, entry->value.text);
            } else {
                for (qsizetype i = 0; i < entry->value.list.size(); ++i) {
                    if (i > 0)
                        result += ", ";
                    appendEscapedText(result, entry->value.list.at(i));
                }
            }
            result += eol;
        }
    }
    return result;
}

} // namespace qf::settingsini
