#pragma once

#include <QHash>
#include <QString>
#include <QStringView>

#include <QList>

#include <optional>
#include <vector>

namespace qf {

/// A hash of the text that is equal for texts that QString::compare() finds
/// equal without regard to case.
/// @param text The text. @param seed As qHash() takes it.
/// @return The hash.
size_t caseInsensitiveHash(QStringView text, size_t seed);

/// A parsed INI file, read and looked up the way the Windows profile functions
/// do it (GetPrivateProfileString):
/// - lines end at "\r\n", "\n" or a lone "\r"; blanks (tab, line feed, vertical
///   tab, form feed, carriage return, ^Z, space) around a line are ignored;
/// - "[name]" starts a section; the name runs to the last "]" on the line and is
///   trimmed; text after that "]" is ignored; a line starting with "[" without
///   any "]" is an ordinary key line;
/// - "key=value" splits at the first "="; blanks around key and value go; a line
///   without "=" is a key without a value, which lookups treat as missing;
///   a line starting with ";" is stored like any other line, so a comment never
///   matches a real key name;
/// - keys before the first section header belong to a section with an empty
///   name;
/// - a NUL character ends the name or value it is in, as in the C strings the
///   Windows functions keep; the rest of its line is ignored, the next line is
///   read as usual;
/// - names compare without regard to case, and the first section of a name and
///   the first key of a name within it win: later duplicates are never found.
class IniDocument {
public:
    /// Where a name or value starts in the file: 1-based line and column, the
    /// column counted in characters (code points).
    struct Position {
        int line = 0;   ///< 1-based line.
        int column = 0; ///< 1-based column, in code points.
        /// @return Whether line and column are equal.
        bool operator==(const Position&) const = default;
    };

    /// A key line as written, for tools that report on the file itself. The
    /// views look into the document, which must outlive them.
    struct KeyLine {
        QStringView name;                      ///< The key name, trimmed.
        std::optional<QStringView> value;      ///< nullopt for a line without "=".
        Position namePosition;                 ///< Where the name starts.
        std::optional<Position> valuePosition; ///< Where the value starts.
    };

    /// A section header and the key lines under it, in file order.
    struct SectionLines {
        QStringView name;                     ///< The section name, trimmed.
        std::optional<Position> namePosition; ///< nullopt for the lines before any header.
        QList<KeyLine> keys;                  ///< In file order.
    };

    /// Keeps the text: names and values are looked up in place, so a file of
    /// 300,000 keys costs no allocation per key.
    /// @param text The whole file. @return The document.
    static IniDocument parse(QString text);

    /// The value as written in the file, blanks trimmed, quotes kept; nullopt
    /// when the section or key is missing or the key line has no "=". Blanks
    /// around the section and key names looked up are ignored.
    /// @param section The section name. @param key The key name.
    /// @return The value, or nullopt.
    std::optional<QString> rawValue(QStringView section, QStringView key) const;

    /// rawValue() as a view into the document, which must outlive it.
    /// @param section The section name. @param key The key name.
    /// @return The value, or nullopt.
    std::optional<QStringView> rawView(QStringView section, QStringView key) const;

    /// rawValue() with one pair of surrounding quotes removed (stripQuotes).
    /// @param section The section name. @param key The key name.
    /// @return The value, or nullopt.
    std::optional<QString> value(QStringView section, QStringView key) const;

    /// Removes a pair of double or single quotes that starts and ends the text;
    /// text like "a' or a lone " stays as it is.
    /// @param text A value. @return The value without its quotes.
    static QString stripQuotes(const QString& text);

    /// Where the name of the section header that lookups find, or of the key
    /// line that lookups find, starts; nullopt when there is none. A key line
    /// without "=" has a position but no value position.
    /// @param section The section name. @return Where its name starts, or nullopt.
    std::optional<Position> sectionPosition(QStringView section) const;
    /// @param section The section name. @param key The key name.
    /// @return Where the key's name starts, or nullopt.
    std::optional<Position> keyPosition(QStringView section, QStringView key) const;
    /// @param section The section name. @param key The key name.
    /// @return Where the key's value starts, or nullopt.
    std::optional<Position> valuePosition(QStringView section, QStringView key) const;

    /// Every section header and key line, including the duplicates lookups never
    /// find; the nameless section before the first header only when it has keys.
    /// @return The sections in file order.
    QList<SectionLines> lines() const;

private:
    // A key of a section, its name compared without regard to case.
    struct KeyRef {
        qsizetype section = 0;
        QStringView name;
        friend bool operator==(const KeyRef& a, const KeyRef& b)
        {
            // Names are mostly looked up as they are written: that compare is
            // cheap; names that end in different letters are not compared further.
            if (a.section != b.section)
                return false;
            if (a.name == b.name)
                return true;
            const char16_t x = a.name.isEmpty() ? 0 : a.name.back().unicode();
            const char16_t y = b.name.isEmpty() ? 0 : b.name.back().unicode();
            if (x < 0x80 && y < 0x80 && (x | 0x20) != (y | 0x20))
                return false;
            return a.name.compare(b.name, Qt::CaseInsensitive) == 0;
        }
        friend size_t qHash(const KeyRef& key, size_t seed)
        {
            return caseInsensitiveHash(key.name, seed ^ size_t(key.section));
        }
    };
    struct Value {
        QStringView text;
        qint32 line = 0;      // index into m_lines
        bool present = false; // false for a key line without "="
    };
    // A header or key line: where it is, and for a key line its value.
    struct Line {
        QStringView name;
        QStringView value;
        qint32 lineNumber = 0;
        qint32 header = 0; // index into m_headers of its section
        bool present = false;
        bool found = false; // the line lookups of its name find
    };

    std::optional<qsizetype> findSection(QStringView section) const;
    const Line* findKey(QStringView section, QStringView key) const;
    const Line* nearLastFound(qsizetype header, QStringView key) const;
    Position positionOf(const Line& line, QStringView text) const;

    QString m_text;
    quint64 m_id = 0; // tells this document from every other one parsed
    // Section name (under section -1) -> header of its first occurrence.
    QHash<KeyRef, qsizetype> m_sections;
    // Key name under that header -> value of its first line.
    QHash<KeyRef, Value> m_keys;
    // Header lines in file order; the first one stands for the lines before
    // any header and has no line of its own.
    std::vector<Line> m_headers;
    // Key lines in file order, duplicates and those of repeated sections too.
    std::vector<Line> m_lines;
};

/// @param c A character.
/// @return Whether it is one of the blanks the Windows profile functions trim
///         around lines, names and values.
bool isProfileBlank(QChar c);

} // namespace qf
