#pragma once

#include <QHash>
#include <QString>
#include <QStringView>

#include <optional>

namespace qf {

// A hash of the text that is equal for texts that QString::compare() finds
// equal without regard to case.
size_t caseInsensitiveHash(QStringView text, size_t seed);

// A parsed INI file, read and looked up the way the Windows profile functions
// do it (GetPrivateProfileString):
// - lines end at "\r\n", "\n" or a lone "\r"; blanks (tab, line feed, vertical
//   tab, form feed, carriage return, ^Z, space) around a line are ignored;
// - "[name]" starts a section; the name runs to the last "]" on the line and is
//   trimmed; text after that "]" is ignored; a line starting with "[" without
//   any "]" is an ordinary key line;
// - "key=value" splits at the first "="; blanks around key and value go; a line
//   without "=" is a key without a value, which lookups treat as missing;
//   a line starting with ";" is stored like any other line, so a comment never
//   matches a real key name;
// - keys before the first section header belong to a section with an empty
//   name;
// - a NUL character ends the name or value it is in, as in the C strings the
//   Windows functions keep; the rest of its line is ignored, the next line is
//   read as usual;
// - names compare without regard to case, and the first section of a name and
//   the first key of a name within it win: later duplicates are never found.
class IniDocument {
public:
    // Keeps the text: names and values are looked up in place, so a file of
    // 300,000 keys costs no allocation per key.
    static IniDocument parse(QString text);

    // The value as written in the file, blanks trimmed, quotes kept; nullopt
    // when the section or key is missing or the key line has no "=". Blanks
    // around the section and key names looked up are ignored.
    std::optional<QString> rawValue(QStringView section, QStringView key) const;

    // rawValue() with one pair of surrounding quotes removed (stripQuotes).
    std::optional<QString> value(QStringView section, QStringView key) const;

    // Removes a pair of double or single quotes that starts and ends the text;
    // text like "a' or a lone " stays as it is.
    static QString stripQuotes(const QString& text);

private:
    // A key of a section, its name compared without regard to case.
    struct KeyRef {
        qsizetype section = 0;
        QStringView name;
        friend bool operator==(const KeyRef& a, const KeyRef& b)
        {
            return a.section == b.section && a.name.compare(b.name, Qt::CaseInsensitive) == 0;
        }
        friend size_t qHash(const KeyRef& key, size_t seed)
        {
            return caseInsensitiveHash(key.name, seed ^ size_t(key.section));
        }
    };
    struct Value {
        QStringView text;
        bool present = false; // false for a key line without "="
    };

    QString m_text;
    // Section name (under section -1) -> number of its first occurrence.
    QHash<KeyRef, qsizetype> m_sections;
    // Key name under that number -> value of its first line.
    QHash<KeyRef, Value> m_keys;
};

// The blanks the Windows profile functions trim around lines, names and values.
bool isProfileBlank(QChar c);

} // namespace qf
