#include "platform/SettingsIniFormat.h"

#include "platform/Errors.h"

#include <QByteArrayView>
#include <QDataStream>
#include <QIODevice>
#include <QStringDecoder>
#include <QStringList>
#include <QVariant>

#include <algorithm>

// The syntax is QSettings' own: sections, keys and values are parsed the way
// its INI reader parses them, and written the way its writer writes them.
namespace qf::settingsini {

namespace {

QString escapedName(const QString& name)
{
    QString escaped;
    escaped.reserve(name.size());
    for (const QChar c : name) {
        if (c == u'%')
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
// unquoted ";" ends it. equals is the first unquoted "=", or -1.
bool readLine(QByteArrayView data, qsizetype& pos, qsizetype& start, qsizetype& length,
              qsizetype& equals)
{
    const qsizetype size = data.size();
    bool inQuotes = false;
    equals = -1;
    start = pos;
    while (start < size && isSpace(data[start]))
        ++start;
    qsizetype i = start;
    while (i < size) {
        const char c = data[i++];
        if (!isSpecial(c))
            continue;
        if (c == '=') {
            if (!inQuotes && equals == -1)
                equals = i - 1;
        } else if (c == '\n' || c == '\r') {
            if (i == start + 1) {
                ++start;
            } else if (!inQuotes) {
                --i;
                break;
            }
        } else if (c == '\\') {
            if (i < size) {
                const char next = data[i++];
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
    length = i - start;
    return length > 0;
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

QString textOf(const QVariant& value)
{
    if (value.metaType().id() == QMetaType::QStringList)
        return value.toStringList().join(QStringLiteral(", "));
    return value.toString();
}

// What QSettings makes of a value's text: "@" marks a value of another type
// than text, and "@@" a text that starts with "@".
std::optional<QString> typedText(const QString& text)
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
        return std::nullopt;
    // Geometry has no text form.
    if (text.startsWith(u"@Rect(") || text.startsWith(u"@Size(") || text.startsWith(u"@Point("))
        return QString();
    const bool isDateTime = text.startsWith(u"@DateTime(");
    if (isDateTime || text.startsWith(u"@Variant(")) {
        QByteArray data = text.sliced(isDateTime ? 10 : 9).toLatin1();
        QDataStream stream(&data, QIODevice::ReadOnly);
        stream.setVersion(isDateTime ? QDataStream::Qt_5_6 : QDataStream::Qt_4_0);
        QVariant variant;
        stream >> variant;
        return variant.isValid() ? std::optional(textOf(variant)) : std::nullopt;
    }
    return text;
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
    return escapedSection(section) + u'/' + escapedName(key);
}

Document::Document(QByteArrayView data) : m_crlf(data.contains("\r\n"))
{
    qsizetype pos = data.startsWith("\xEF\xBB\xBF") ? 3 : 0;
    qsizetype start = 0;
    qsizetype length = 0;
    qsizetype equals = -1;
    QString prefix; // the section's name and "/", empty at the top level
    while (readLine(data, pos, start, length, equals)) {
        const QByteArrayView line = data.sliced(start, length);
        if (line.startsWith('[')) {
            qsizetype close = line.indexOf(']');
            if (close < 0)
                close = length;
            const QByteArrayView name = line.sliced(1, close - 1).trimmed();
            if (name.compare("general", Qt::CaseInsensitive) == 0)
                prefix.clear();
            else if (name.compare("%general", Qt::CaseInsensitive) == 0)
                prefix = QString::fromLatin1(name.sliced(1)) + u'/';
            else
                prefix = unescapedKey(name) + u'/';
            continue;
        }
        // QSettings drops a line without "=", and so does the document.
        if (equals < 0)
            continue;
        insert(prefix + unescapedKey(data.sliced(start, equals - start).trimmed()),
               unescapedValue<Stored>(data.sliced(equals + 1, start + length - equals - 1)));
    }
}

void Document::insert(QString key, Stored value)
{
    // QSettings keeps "[]" keys as "/key", which no name reaches and its
    // writer puts under [General]; there they must not hide a key "key".
    const bool exact = !key.startsWith(u'/');
    if (!exact)
        key.remove(0, 1);
    const auto found = m_index.constFind(key);
    if (found == m_index.constEnd()) {
        m_index.insert(key, m_entries.size());
        m_entries.push_back({std::move(key), std::move(value), exact});
        return;
    }
    Entry& entry = m_entries[*found];
    if (entry.exact && !exact)
        return;
    entry.value = std::move(value);
    entry.exact = exact;
}

std::optional<QString> Document::value(const QString& settingsKey) const
{
    const auto found = m_index.constFind(settingsKey);
    if (found == m_index.constEnd() || !m_entries[*found].exact)
        return std::nullopt;
    const Stored& stored = m_entries[*found].value;
    if (!stored.isList)
        return typedText(stored.text);
    QStringList items = stored.list;
    for (QString& item : items)
        if (item.startsWith(u"@@"))
            item.remove(0, 1);
    return items.join(QStringLiteral(", "));
}

void Document::setValue(const QString& settingsKey, const QString& text)
{
    // "@" starts a typed value; a text with a NUL goes inside "@String()", as
    // QSettings writes one.
    Stored stored;
    if (text.contains(QChar::Null))
        stored.text = QStringLiteral("@String(") + text + u')';
    else
        stored.text = text.startsWith(u'@') ? u'@' + text : text;
    insert(settingsKey, std::move(stored));
}

QByteArray Document::toBytes() const
{
    const QByteArray eol = m_crlf ? QByteArrayLiteral("\r\n") : QByteArrayLiteral("\n");
    // Sections by the part of the key before its first "/", in the order they
    // first come, as QSettings' writer groups them.
    std::vector<std::pair<QString, std::vector<const Entry*>>> sections;
    QHash<QString, size_t> sectionIndex;
    for (const Entry& entry : m_entries) {
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
        QByteArray header = section.isEmpty() ? QByteArrayLiteral("General") : escapedKey(section);
        if (!section.isEmpty() && header.compare("general", Qt::CaseInsensitive) == 0)
            header.prepend('%');
        result += '[' + header + ']' + eol;
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
