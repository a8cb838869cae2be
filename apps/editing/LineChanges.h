#pragma once

#include "GameDataDocument.h"

#include <QStringList>

#include <map>
#include <optional>
#include <vector>

namespace qf::editing {

// The changes of one edit, line by line, written at once through TextEdits so
// that every byte of the lines they leave alone stays as it was.
class LineChanges {
public:
    explicit LineChanges(const GameDataDocument& doc) : m_doc(doc) {}

    // The value of a key line, keeping quotes that the value had.
    void setValue(int line, const QString& value);
    // The entry number in a key name, the rest of the name as written.
    void renumber(int line, qsizetype digitsBegin, qsizetype digitsLength, int entry);
    void removeLine(int line);
    bool isRemoved(int line) const { return m_changes.count(line) && m_changes.at(line).removed; }
    // New lines after a line (-1: at the end of the file), in the order given.
    void insertAfter(int line, const QStringList& texts);

    QByteArray result() const;

private:
    struct Change {
        bool removed = false;
        std::optional<QByteArray> digits; // replaces [digitsBegin, digitsEnd)
        qsizetype digitsBegin = 0, digitsEnd = 0;
        std::optional<QString> value;
        QStringList after;
    };
    const GameDataDocument& m_doc;
    std::map<int, Change> m_changes;
    QStringList m_atEnd;
};

} // namespace qf::editing
