#include "platform/SettingsIniFormat.h"

#include "platform/Errors.h"

#include <QByteArrayView>
#include <QDataStream>
#include <QIODevice>
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

// The end of the physical line that holds pos: a comment after a line's ";"
// belongs to it.
qsizetype physicalLineEnd(const QByteArray& data, qsizetype pos)
{
    while (pos < data.size() && data[pos] != '\n' && data[pos] != '\r')
        ++pos;
    return pos;
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
            int code = first + digits <= key.size() ? 0 : -1;
            for (qsizetype d = first; code >= 0 && d < first + digits; ++d) {
                const int h = hexValue(key.at(d).unicode());
                code = h < 0 ? -1 : code * 16 + h;
            }
            if (code >= 0) {
                result += QChar(char16_t(code));
                i = first + digits;
                continue;
            }
        }
        result += c;
        ++i;
    }
    return result;
}

QByteArray escapedValue(const QString& value)
{
    QString text = value;
    if (text.contains(QChar::Null))
        text = QStringLiteral("@String(") + text + u')';
    else if (text.startsWith(u'@'))
        text.prepend(u'@');
    const QByteArray utf8 = text.toUtf8();

    QByteArray escaped;
    escaped.reserve(utf8.size() + 2);
    bool needsQuotes = false;
    bool escapeNextIfHex = false;
    for (const char c : utf8) {
        if (c == ';' || c == ',' || c == '=')
            needsQuotes = true;
        // "\x1" followed by "a" would read as "\x1a".
        if (escapeNextIfHex && hexValue(uchar(c)) >= 0) {
            escaped += "\\x" + QByteArray::number(uchar(c), 16);
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
            escaped += c;
            break;
        default:
            if (uchar(c) <= 0x1F) {
                escaped += "\\x" + QByteArray::number(uchar(c), 16);
                escapeNextIfHex = true;
            } else {
                escaped += c;
            }
        }
    }
    if (needsQuotes || (!escaped.isEmpty() && (escaped.front() == ' ' || escaped.back() == ' '))) {
        escaped.prepend('"');
        escaped.append('"');
    }
    return escaped;
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
struct RawValue {
    QString text;
    QStringList list;
    bool isList = false;
};

RawValue unescapedValue(QByteArrayView raw)
{
    static constexpr char EscapeCodes[][2] = {{'a', '\a'}, {'b', '\b'},  {'f', '\f'}, {'n', '\n'},
                                              {'r', '\r'}, {'t', '\t'},  {'v', '\v'}, {'"', '"'},
                                              {'?', '?'},  {'\'', '\''}, {'\\', '\\'}};
    enum class State { SkipBlanks, Normal, HexEscape, OctEscape, End };
    RawValue value;
    QString& text = value.text;
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
                text += QString::fromUtf8(raw.sliced(i, j - i));
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

Document::Document(QByteArray bytes) : m_bytes(std::move(bytes))
{
    const QByteArrayView data(m_bytes);
    qsizetype pos = data.startsWith("\xEF\xBB\xBF") ? 3 : 0;
    qsizetype start = 0;
    qsizetype length = 0;
    qsizetype equals = -1;
    QString section; // empty: the top level
    while (readLine(data, pos, start, length, equals)) {
        const QByteArrayView line = data.sliced(start, length);
        if (line.startsWith('[')) {
            qsizetype close = line.indexOf(']');
            if (close < 0)
                close = length;
            const QByteArrayView name = line.sliced(1, close - 1).trimmed();
            if (name.compare("general", Qt::CaseInsensitive) == 0)
                section.clear();
            else if (name.compare("%general", Qt::CaseInsensitive) == 0)
                section = QString::fromLatin1(name.sliced(1));
            else
                section = unescapedKey(name);
            m_sectionEnds.insert(section, physicalLineEnd(m_bytes, start + length));
            continue;
        }
        // QSettings drops a line without "=" and so does a reader here; a
        // merge keeps it.
        if (equals < 0)
            continue;
        const QString key = unescapedKey(data.sliced(start, equals - start).trimmed());
        // Blanks around a value are not part of it; a new value goes between them.
        qsizetype begin = equals + 1;
        qsizetype end = start + length;
        while (begin < end && (data[begin] == ' ' || data[begin] == '\t'))
            ++begin;
        while (end > begin && (data[end - 1] == ' ' || data[end - 1] == '\t'))
            --end;
        m_values.insert(section.isEmpty() ? key : section + u'/' + key, ValueSpan{begin, end});
        m_sectionEnds.insert(section, physicalLineEnd(m_bytes, start + length));
    }
}

std::optional<QString> Document::value(const QString& settingsKey) const
{
    const auto found = m_values.constFind(settingsKey);
    if (found == m_values.constEnd())
        return std::nullopt;
    RawValue raw =
        unescapedValue(QByteArrayView(m_bytes).sliced(found->begin, found->end - found->begin));
    if (!raw.isList)
        return typedText(raw.text);
    for (QString& item : raw.list)
        if (item.startsWith(u"@@"))
            item.remove(0, 1);
    return raw.list.join(QStringLiteral(", "));
}

QByteArray Document::merged(const std::vector<std::pair<QString, QString>>& values) const
{
    struct Edit {
        qsizetype pos;
        qsizetype removed;
        QByteArray text;
    };
    // New lines end as the file's lines do.
    const QByteArray eol =
        m_bytes.contains("\r\n") ? QByteArrayLiteral("\r\n") : QByteArrayLiteral("\n");
    std::vector<Edit> edits;
    // New lines by section, in the order the sections first come.
    std::vector<std::pair<QString, QByteArray>> added;
    for (const auto& [key, value] : values) {
        const auto found = m_values.constFind(key);
        if (found != m_values.constEnd()) {
            edits.push_back({found->begin, found->end - found->begin, escapedValue(value)});
            continue;
        }
        const qsizetype slash = key.indexOf(u'/');
        const QString section = slash < 0 ? QString() : key.first(slash);
        const QString name = slash < 0 ? key : key.sliced(slash + 1);
        auto group = std::find_if(added.begin(), added.end(),
                                  [&](const auto& entry) { return entry.first == section; });
        if (group == added.end())
            group = added.insert(added.end(), {section, QByteArray()});
        group->second += escapedKey(name) + '=' + escapedValue(value) + eol;
    }

    // An edit inside a line goes before a line added at its end.
    QByteArray tail;
    std::vector<Edit> insertions;
    for (const auto& [section, lines] : added) {
        const auto end = m_sectionEnds.constFind(section);
        if (end != m_sectionEnds.constEnd()) {
            insertions.push_back({*end, 0, eol + lines.chopped(eol.size())});
            continue;
        }
        QByteArray header = section.isEmpty() ? QByteArrayLiteral("General") : escapedKey(section);
        if (header.compare("general", Qt::CaseInsensitive) == 0 && !section.isEmpty())
            header.prepend('%');
        if (!m_bytes.isEmpty() || !tail.isEmpty())
            tail += eol;
        tail += '[' + header + ']' + eol + lines;
    }
    edits.insert(edits.end(), insertions.begin(), insertions.end());
    std::stable_sort(edits.begin(), edits.end(),
                     [](const Edit& a, const Edit& b) { return a.pos < b.pos; });

    QByteArray result;
    result.reserve(m_bytes.size() + tail.size() + qsizetype(edits.size()) * 16);
    qsizetype copied = 0;
    for (const Edit& edit : edits) {
        result += QByteArrayView(m_bytes).sliced(copied, edit.pos - copied);
        result += edit.text;
        copied = edit.pos + edit.removed;
    }
    result += QByteArrayView(m_bytes).sliced(copied);
    if (!tail.isEmpty() && !result.isEmpty() && !result.endsWith('\n') && !result.endsWith('\r'))
        result += eol;
    return result + tail;
}

} // namespace qf::settingsini
