#include "GameDataDocument.h"

#include "platform/IniDocument.h"
#include "platform/TextDecoding.h"

namespace qf::editing {

namespace {

// [begin, end) without the blanks around it.
void trim(const QByteArray& bytes, qsizetype& begin, qsizetype& end)
{
    while (begin < end && isProfileBlank(QLatin1Char(bytes.at(begin))))
        ++begin;
    while (end > begin && isProfileBlank(QLatin1Char(bytes.at(end - 1))))
        --end;
}

void insertFirst(QHash<QString, int>& index, const QString& key, int line)
{
    if (!index.contains(key))
        index.insert(key, line);
}

QString keyIndex(int header, const QString& name)
{
    return QString::number(header) + u'\n' + name.trimmed().toCaseFolded();
}

} // namespace

GameDataDocument GameDataDocument::parse(QByteArray bytes)
{
    GameDataDocument doc;
    doc.m_bytes = std::move(bytes);
    const QByteArray& b = doc.m_bytes;
    if (b.startsWith("\xFF\xFE") || b.startsWith("\xFE\xFF"))
        throw EditError(QStringLiteral("the file is UTF-16; save it as UTF-8 to edit it"));
    qsizetype start = b.startsWith("\xEF\xBB\xBF") ? 3 : 0;
    // As the reader decides: UTF-8 after a byte order mark or when the bytes
    // are valid UTF-8, else Windows-1252.
    doc.m_encoding =
        start > 0 || QByteArrayView(b).isValidUtf8() ? Encoding::Utf8 : Encoding::Windows1252;
    const auto decode = [&](qsizetype from, qsizetype to) {
        const QByteArray part = b.sliced(from, to - from);
        return doc.m_encoding == Encoding::Utf8 ? QString::fromUtf8(part) : decodeWindows1252(part);
    };

    const qsizetype firstEnd = b.indexOf('\n');
    const qsizetype firstCr = b.indexOf('\r');
    if (firstCr >= 0 && (firstEnd < 0 || firstCr < firstEnd))
        doc.m_lineEnd = b.mid(firstCr, 2) == "\r\n" ? "\r\n" : "\r";

    int section = -1;
    bool firstOfName = false; // the section is the first of its name
    while (start < b.size()) {
        Line line;
        line.begin = start;
        qsizetype end = start;
        while (end < b.size() && b.at(end) != '\n' && b.at(end) != '\r')
            ++end;
        line.end = end;
        line.next = end;
        if (line.next < b.size())
            line.next += b.at(end) == '\r' && end + 1 < b.size() && b.at(end + 1) == '\n' ? 2 : 1;
        start = line.next;

        // A NUL ends what the reader sees of the line.
        const qsizetype nul = b.indexOf('\0', line.begin);
        qsizetype textBegin = line.begin, textEnd = nul >= 0 && nul < end ? nul : end;
        trim(b, textBegin, textEnd);
        const qsizetype close = b.lastIndexOf(']', textEnd - 1);
        if (textBegin == textEnd) {
            line.kind = Line::Kind::Blank;
        } else if (b.at(textBegin) == '[' && close > textBegin) {
            line.kind = Line::Kind::Header;
            line.nameBegin = textBegin + 1;
            line.nameEnd = close;
            trim(b, line.nameBegin, line.nameEnd);
            line.name = decode(line.nameBegin, line.nameEnd);
            section = int(doc.m_lines.size());
            const QString folded = line.name.toCaseFolded();
            firstOfName = !doc.m_firstSection.contains(folded);
            insertFirst(doc.m_firstSection, folded, section);
        } else {
            line.kind = Line::Kind::Key;
            const qsizetype equals = b.indexOf('=', textBegin);
            line.hasValue = equals >= 0 && equals < textEnd;
            line.nameBegin = textBegin;
            line.nameEnd = line.hasValue ? equals : textEnd;
            trim(b, line.nameBegin, line.nameEnd);
            line.name = decode(line.nameBegin, line.nameEnd);
            if (line.hasValue) {
                line.valueBegin = equals + 1;
                line.valueEnd = textEnd;
                trim(b, line.valueBegin, line.valueEnd);
                if (line.valueBegin == line.valueEnd)
                    line.valueBegin = line.valueEnd = equals + 1;
                line.value = decode(line.valueBegin, line.valueEnd);
            }
        }
        line.section = section;
        // Only the first section of a name and the first key of a name in it
        // are ever found, as the reader finds them.
        if (line.kind == Line::Kind::Key && firstOfName)
            insertFirst(doc.m_firstKey, keyIndex(section, line.name), int(doc.m_lines.size()));
        doc.m_lines.push_back(line);
    }
    return doc;
}

QByteArray GameDataDocument::encode(const QString& text) const
{
    if (m_encoding == Encoding::Utf8)
        return text.toUtf8();
    static const QString table = [] {
        QByteArray all(256, '\0');
        for (int i = 0; i < 256; ++i)
            all[i] = char(i);
        return decodeWindows1252(all);
    }();
    QByteArray out;
    for (const QChar c : text) {
        const qsizetype byte = table.indexOf(c);
        if (byte < 0)
            throw EditError(
                QStringLiteral("\"%1\" cannot be written in the file's encoding, Windows-1252")
                    .arg(c));
        out += char(byte);
    }
    return out;
}

std::optional<int> GameDataDocument::section(const QString& name) const
{
    const auto found = m_firstSection.constFind(name.trimmed().toCaseFolded());
    return found == m_firstSection.cend() ? std::nullopt : std::optional(*found);
}

std::vector<int> GameDataDocument::keyLines(int header) const
{
    std::vector<int> keys;
    for (int i = header + 1; i < int(m_lines.size()) && m_lines[i].section == header; ++i)
        if (m_lines[i].kind == Line::Kind::Key)
            keys.push_back(i);
    return keys;
}

std::optional<int> GameDataDocument::keyLine(const QString& section, const QString& key) const
{
    const std::optional<int> header = this->section(section);
    if (!header)
        return std::nullopt;
    const auto found = m_firstKey.constFind(keyIndex(*header, key));
    return found == m_firstKey.cend() ? std::nullopt : std::optional(*found);
}

std::optional<QString> GameDataDocument::value(const QString& section, const QString& key) const
{
    const std::optional<int> line = keyLine(section, key);
    if (!line || !m_lines[*line].hasValue)
        return std::nullopt;
    return IniDocument::stripQuotes(m_lines[*line].value).left(1023);
}

} // namespace qf::editing
