#include "LintContext.h"

#include "gamedata/GameData.h"
#include "gamedata/GameDataKeys.h"
#include "gamedata/ValueSyntax.h"
#include "platform/Errors.h"

#include <QRegularExpression>

#include <cmath>

namespace qf::lint {

namespace {

namespace gd = gamedata;

// Zero sizes hide a widget without any error; negative ones the builder
// reports itself.
void checkSize(LintContext& lint, int entry, const QString& kind)
{
    const std::optional<QString> size = lint.entryValue(entry, gd::Size);
    if (!size || kind == gd::KindCombo)
        return;
    const syntax::PairValue pair = syntax::splitPair(size->toLower());
    const auto isZero = [](const QString& text) {
        try {
            return syntax::toSingle(text) == 0;
        } catch (const Error&) {
            return false;
        }
    };
    const bool zeroHeight = pair.first && isZero(*pair.first);
    const bool zeroWidth = isZero(pair.second);
    if (zeroHeight || zeroWidth)
        lint.add(Severity::Warning, QStringLiteral("values-size"),
                 QStringLiteral("%1: a %2 of 0 leaves nothing to see")
                     .arg(entryKeyName(entry, gd::Size),
                          zeroWidth ? QStringLiteral("width") : QStringLiteral("height")),
                 entry, entryKeyName(entry, gd::Size), true);
}

void checkLineWidth(LintContext& lint, int entry)
{
    const std::optional<QString> width = lint.entryValue(entry, gd::Width);
    if (!width)
        return;
    try {
        const double number = syntax::parseNumber(*width);
        const qint16 rounded = syntax::toInt16(*width);
        if (number != std::floor(number) && rounded >= 1)
            lint.add(Severity::Warning, QStringLiteral("values-width"),
                     QStringLiteral("%1: %2 is not a whole number; the line is %3 pixels wide")
                         .arg(entryKeyName(entry, gd::Width), *width)
                         .arg(rounded),
                     entry, entryKeyName(entry, gd::Width), true);
    } catch (const Error&) {
        // The builder reports what it cannot convert.
    }
}

void checkItemList(LintContext& lint, int entry)
{
    const std::optional<QString> caption = lint.entryValue(entry, gd::Caption);
    if (!caption)
        return;
    const QString key = entryKeyName(entry, gd::Caption);
    static const QRegularExpression run(QStringLiteral(";{3,}"));
    const QRegularExpressionMatch found = run.match(*caption);
    if (found.hasMatch())
        lint.add(Severity::Warning, QStringLiteral("values-item-list"),
                 QStringLiteral("%1: a run of %2 semicolons repeats the entry before it %3 "
                                "more time(s)")
                     .arg(key)
                     .arg(found.capturedLength())
                     .arg(found.capturedLength() - 2),
                 entry, key, true);
    const std::vector<syntax::ItemListStep> steps = syntax::parseItemList(caption->toLower());
    bool emptyReported = false;
    bool semicolonReported = false;
    for (size_t i = 0; i < steps.size(); ++i) {
        const QString& text = steps[i].text;
        if (steps[i].kind == syntax::ItemListStep::Kind::Append && text.isEmpty() && i > 0 &&
            !emptyReported) {
            emptyReported = true;
            lint.add(Severity::Warning, QStringLiteral("values-item-list"),
                     QStringLiteral("%1: entry %2 of the list is empty").arg(key).arg(i + 1), entry,
                     key, true);
        }
        if ((text.startsWith(u';') || text.endsWith(u';')) && !semicolonReported &&
            !found.hasMatch()) {
            semicolonReported = true;
            lint.add(Severity::Warning, QStringLiteral("values-item-list"),
                     QStringLiteral("%1: \"%2\" starts or ends with \";\", which joins the "
                                    "\";;\" beside it")
                         .arg(key, text),
                     entry, key, true);
        }
    }
}

} // namespace

void checkValues(LintContext& lint)
{
    for (const auto& [entry, kind] : lint.kinds) {
        checkSize(lint, entry, kind);
        if (kind == gd::KindLine)
            checkLineWidth(lint, entry);
        if (kind == gd::KindCombo)
            checkItemList(lint, entry);
    }
}

} // namespace qf::lint
