#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

#include <optional>
#include <utility>
#include <vector>

// The INI files of QSettings (IniFormat), read and written without QSettings,
// so that a host that uses QSettings on the same file sees our values and we
// see its.
namespace qf::settingsini {

// The key under which QSettings finds section/key: "section/key", or "key" for
// an empty section. QSettings takes "/" (and on Windows "\") for a group
// separator, so section and key reach it with "%", "/" and "\" written as %25,
// %2F and %5C; names without these pass unchanged. A section spelt "general" in
// any letter case other than "General" has its first letter written the same
// way (%67 for "g"), because QSettings files all of them under one INI section
// "[%General]". Throws qf::InvalidValueError for an empty key.
QString settingsKey(const QString& section, const QString& key);

// One settings file as its bytes: the values by settings key, and where each
// line is, so that a merge changes only the lines of the keys it sets and keeps
// everything else (other keys, comments, lines QSettings would drop) as it was.
class Document {
public:
    Document() = default;
    explicit Document(QByteArray bytes);

    const QByteArray& bytes() const { return m_bytes; }

    // The value as text, as QSettings reads it (a list joined with ", ");
    // nullopt when the key is missing.
    std::optional<QString> value(const QString& settingsKey) const;

    // The file with the values set. A key already in the file gets its new value
    // in its own line; the other keys join the end of their section, or of a new
    // section at the end of the file.
    QByteArray merged(const std::vector<std::pair<QString, QString>>& values) const;

private:
    struct ValueSpan {
        qsizetype begin;
        qsizetype end;
    };

    QByteArray m_bytes;
    // The last line of each key, which is the one QSettings reads.
    QHash<QString, ValueSpan> m_values;
    // Where a new line of a section goes: the end of the section's last line.
    QHash<QString, qsizetype> m_sectionEnds;
};

} // namespace qf::settingsini
