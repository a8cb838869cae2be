#include "LineChanges.h"

#include "platform/IniDocument.h"
#include "platform/TextEdits.h"

#include <algorithm>

namespace qf::editing {

void LineChanges::setValue(int line, const QString& value)
{
    m_changes[line].value = value;
}

void LineChanges::renumber(int line, qsizetype digitsBegin, qsizetype digitsLength, int entry)
{
    // Names start with "Control": up to the number, characters and bytes agree.
    Change& change = m_changes[line];
    const qsizetype begin = m_doc.lines()[line].nameBegin + digitsBegin;
    change.digits = QByteArray::number(entry);
    change.digitsBegin = begin;
    change.digitsEnd = begin + digitsLength;
}

void LineChanges::removeLine(int line)
{
    m_changes[line].removed = true;
}

void LineChanges::insertAfter(int line, const QStringList& texts)
{
    (line < 0 ? m_atEnd : m_changes[line].after) += texts;
}

QByteArray LineChanges::result() const
{
    const QByteArray& bytes = m_doc.bytes();
    const QByteArray& eol = m_doc.lineEnd();
    const auto& lines = m_doc.lines();
    TextEdits<QByteArray> edits(bytes);
    // New lines go after a line's end; a last line without one gets one first.
    const auto insertAt = [&](qsizetype at, bool needsEol, const QStringList& texts) {
        QByteArray text;
        for (const QString& t : texts)
            text += (needsEol ? eol : QByteArray()) + m_doc.encode(t) + (needsEol ? "" : eol);
        edits.insert(at, text);
    };

    std::vector<std::pair<qsizetype, qsizetype>> removals;
    for (const auto& [index, change] : m_changes) {
        const GameDataDocument::Line& line = lines[index];
        if (change.removed) {
            // The last line without a line end takes the one before it along.
            const bool last = line.next == line.end && index > 0;
            removals.push_back({last ? lines[index - 1].end : line.begin, line.next});
            continue;
        }
        if (change.digits)
            edits.replace(change.digitsBegin, change.digitsEnd, *change.digits);
        if (change.value) {
            const QString raw = line.value;
            const bool quoted = raw.size() >= 2 && IniDocument::stripQuotes(raw) != raw;
            const QString quote = quoted ? raw.left(1) : QString();
            const QByteArray value = m_doc.encode(quote + *change.value + quote);
            if (line.hasValue)
                edits.replace(line.valueBegin, line.valueEnd, value);
            else
                edits.insert(line.nameEnd, "=" + value);
        }
        if (!change.after.isEmpty())
            insertAt(line.next, line.next == line.end, change.after);
    }
    std::sort(removals.begin(), removals.end());
    for (size_t i = 0; i < removals.size(); ++i) {
        auto [begin, end] = removals[i];
        while (i + 1 < removals.size() && removals[i + 1].first <= end)
            end = std::max(end, removals[++i].second);
        edits.replace(begin, end, {});
    }
    if (!m_atEnd.isEmpty()) {
        const bool needsEol = !bytes.isEmpty() && !bytes.endsWith('\n') && !bytes.endsWith('\r');
        insertAt(bytes.size(), needsEol, m_atEnd);
    }
    return edits.result();
}

} // namespace qf::editing
