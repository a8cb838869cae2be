#pragma once

#include <QByteArray>

#include <vector>

namespace qf::editing {

// Undo and redo of a file's edits, as snapshots of its bytes: restoring one
// gives back exactly the file that was there.
class EditHistory {
public:
    explicit EditHistory(QByteArray original) { m_states.push_back(std::move(original)); }

    const QByteArray& current() const { return m_states[m_current]; }
    // The file after an edit; what could be redone is dropped.
    void record(QByteArray bytes)
    {
        m_states.resize(m_current + 1);
        m_states.push_back(std::move(bytes));
        ++m_current;
    }
    bool canUndo() const { return m_current > 0; }
    bool canRedo() const { return m_current + 1 < m_states.size(); }
    const QByteArray& undo() { return m_states[canUndo() ? --m_current : m_current]; }
    const QByteArray& redo() { return m_states[canRedo() ? ++m_current : m_current]; }

private:
    std::vector<QByteArray> m_states;
    size_t m_current = 0;
};

} // namespace qf::editing
