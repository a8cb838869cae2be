#pragma once

#include <QString>
#include <QStringList>

namespace qf::lint {

// The candidate closest to `word` (letter case ignored), when it is close
// enough to be a likely slip: at most a third of its letters differ. Empty
// when none is.
QString closest(const QString& word, const QStringList& candidates);

} // namespace qf::lint
