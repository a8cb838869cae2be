#include "platform/IniDocument.h"

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
    for (qsizetype i = 0; i < text.size();) {
        hash ^= foldedAt(text, i);
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
    IniDocument doc;
    doc.m_text = std::move(text);
    const QStringView all(doc.m_text);
    // Every line holds at most one key; spare buckets cost little, rehashing
    // a large file costs much.
    const qsizetype lineFeeds = all.count(u'\n');
    doc.m_keys.reserve((lineFeeds > 0 ? lineFeeds : all.count(u'\r')) + 1);

    constexpr qsizetype Skipped = -2;
    qsizetype current = 0;
    doc.m_sections.insert(KeyRef{SectionNames, {}}, current);

    qsizetype pos = 0;
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
        pos = end + 1;
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
                // Keys of a repeated section are never found, so they are not kept.
                const qsizetype count = doc.m_sections.size();
                qsizetype& number =
                    doc.m_sections[KeyRef{SectionNames, cut(trimmed(line.sliced(1, close - 1)))}];
                if (doc.m_sections.size() == count) {
                    current = Skipped;
                } else {
                    number = count;
                    current = count;
                }
                continue;
            }
            // Without "]" the line is read as a key line, as Windows does.
        }
        if (current == Skipped)
            continue;

        const qsizetype equals = line.indexOf(u'=');
        KeyRef key{current, cut(line)};
        Value value;
        if (equals >= 0) {
            key.name = cut(trimmed(line.first(equals)));
            value = {cut(trimmed(line.sliced(equals + 1))), true};
        }
        // The first line of a key name wins, even one without "=".
        const qsizetype count = doc.m_keys.size();
        Value& slot = doc.m_keys[key];
        if (doc.m_keys.size() != count)
            slot = value;
    }
    return doc;
}

std::optional<QString> IniDocument::rawValue(QStringView section, QStringView key) const
{
    const auto sectionIt = m_sections.constFind(KeyRef{SectionNames, trimmed(section)});
    if (sectionIt == m_sections.cend())
        return std::nullopt;
    const auto keyIt = m_keys.constFind(KeyRef{*sectionIt, trimmed(key)});
    if (keyIt == m_keys.cend() || !keyIt->present)
        return std::nullopt;
    return keyIt->text.toString();
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
