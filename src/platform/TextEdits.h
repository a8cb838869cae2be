#pragma once

#include <QtGlobal>

#include <algorithm>
#include <vector>

namespace qf {

// Changes to a text that keep every byte (or character) they do not touch:
// replacements of ranges of the original and insertions at its positions, all
// given in the original's offsets, applied at once. The INI documents of the
// settings store and of the game data editor both write through it, so a
// person's comments, blank lines, order and spelling survive their edits.
template <typename Text> class TextEdits {
public:
    explicit TextEdits(const Text& original) : m_original(original) {}

    // Replaces [begin, end) of the original; ranges must not overlap.
    void replace(qsizetype begin, qsizetype end, const Text& with)
    {
        m_edits.push_back({begin, end, with, m_edits.size()});
    }
    // Inserts before the original's position `at`; several insertions at one
    // position keep the order they were made in.
    void insert(qsizetype at, const Text& text) { replace(at, at, text); }

    bool isEmpty() const { return m_edits.empty(); }

    Text result() const
    {
        std::vector<Edit> edits = m_edits;
        std::sort(edits.begin(), edits.end(), [](const Edit& a, const Edit& b) {
            return a.begin != b.begin ? a.begin < b.begin : a.sequence < b.sequence;
        });
        Text out;
        qsizetype copied = 0;
        for (const Edit& edit : edits) {
            out += m_original.sliced(copied, edit.begin - copied);
            out += edit.with;
            copied = edit.end;
        }
        out += m_original.sliced(copied);
        return out;
    }

private:
    struct Edit {
        qsizetype begin;
        qsizetype end;
        Text with;
        size_t sequence;
    };
    const Text& m_original;
    std::vector<Edit> m_edits;
};

} // namespace qf
