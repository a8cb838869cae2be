#pragma once

#include <QString>

#include <vector>

namespace qf::lint {

enum class Severity { Error, Warning, Note };

// One thing the lint has to say about a game data file (or a file it names),
// placed like a compiler's diagnostic. line and column count from 1; 0 when
// the finding is about the whole file.
struct Finding {
    QString path;
    int line = 0;
    int column = 0;
    Severity severity = Severity::Warning;
    QString message;
    QString check; // the check's name, e.g. "entries-unknown-key"
    // The custom control entry the finding is about, 0 for none; lets a
    // preview point at the widget.
    int entry = 0;

    bool operator==(const Finding&) const = default;
};

using Findings = std::vector<Finding>;

} // namespace qf::lint
