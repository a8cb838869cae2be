#include "Suggest.h"

#include <algorithm>
#include <vector>

namespace qf::lint {

namespace {

// Edits (insert, delete, replace, swap of neighbours) from a to b.
int distance(const QString& a, const QString& b)
{
    const qsizetype n = a.size(), m = b.size();
    std::vector<std::vector<int>> d(n + 1, std::vector<int>(m + 1));
    for (qsizetype i = 0; i <= n; ++i)
        d[i][0] = int(i);
    for (qsizetype j = 0; j <= m; ++j)
        d[0][j] = int(j);
    for (qsizetype i = 1; i <= n; ++i) {
        for (qsizetype j = 1; j <= m; ++j) {
            const int cost = a[i - 1] == b[j - 1] ? 0 : 1;
            d[i][j] = std::min({d[i - 1][j] + 1, d[i][j - 1] + 1, d[i - 1][j - 1] + cost});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                d[i][j] = std::min(d[i][j], d[i - 2][j - 2] + 1);
        }
    }
    return d[n][m];
}

} // namespace

QString closest(const QString& word, const QStringList& candidates)
{
    const QString lowered = word.toLower();
    QString best;
    int bestDistance = int(std::max<qsizetype>(1, lowered.size() / 3)) + 1;
    for (const QString& candidate : candidates) {
        const int d = distance(lowered, candidate.toLower());
        if (d < bestDistance) {
            bestDistance = d;
            best = candidate;
        }
    }
    return best;
}

} // namespace qf::lint
