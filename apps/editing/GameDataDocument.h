#pragma once

#include "platform/Errors.h"

#include <QByteArray>
#include <QHash>
#include <QString>

#include <optional>
#include <vector>

namespace qf::editing {

// An edit that cannot be made as asked; the file stays as it was.
class EditError : public Error {
    using Error::Error;
};

// The bytes of a game data file and its lines as the profile reader sees them,
// each with its byte range, so that edits touch only the lines they change.
class GameDataDocument {
public:
    enum class Encoding { Utf8, Windows1252 };

    struct Line {
        enum class Kind { Blank, Header, Key };
        Kind kind = Kind::Blank;
        qsizetype begin = 0; // first byte of the line
        qsizetype end = 0;   // end of its text, before the line end
        qsizetype next = 0;  // start of the next line
        int section = -1;    // the header line's index; -1 before any header
        QString name;        // section or key name, trimmed
        qsizetype nameBegin = 0, nameEnd = 0;
        bool hasValue = false; // a key line with "="
        QString value;         // trimmed, quotes kept
        qsizetype valueBegin = 0, valueEnd = 0;
    };

    // Throws EditError for a file the editor cannot write back byte for byte
    // (UTF-16).
    static GameDataDocument parse(QByteArray bytes);

    const QByteArray& bytes() const { return m_bytes; }
    const std::vector<Line>& lines() const { return m_lines; }
    Encoding encoding() const { return m_encoding; }
    // The file's own line end, for the lines an edit writes.
    const QByteArray& lineEnd() const { return m_lineEnd; }

    // Text in the file's encoding; throws EditError for a character it cannot hold.
    QByteArray encode(const QString& text) const;

    // The header line of the first section of that name, which lookups read.
    std::optional<int> section(const QString& name) const;
    // The key lines of that section in file order.
    std::vector<int> keyLines(int header) const;
    // The first line of the key in the section: the one lookups find.
    std::optional<int> keyLine(const QString& section, const QString& key) const;
    // The value as the control reads it: quotes stripped, 1023 characters at most.
    std::optional<QString> value(const QString& section, const QString& key) const;

private:
    QByteArray m_bytes;
    std::vector<Line> m_lines;
    Encoding m_encoding = Encoding::Utf8;
    QByteArray m_lineEnd = "\n";
    // Looked up by every read of a key: the first header of each case-folded
    // name, and the first key line of each name under such a header.
    QHash<QString, int> m_firstSection;
    QHash<QString, int> m_firstKey; // "<header>\n<case-folded name>"
};

} // namespace qf::editing
