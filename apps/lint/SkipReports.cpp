#include "LintContext.h"
#include "Suggest.h"

#include "gamedata/GameDataKeys.h"
#include "gamedata/ValueSyntax.h"
#include "platform/Errors.h"

#include <QRegularExpression>

namespace qf::lint {

namespace {

namespace gd = gamedata;

const QStringList& ruleKeywords()
{
    static const QStringList words = {
        QStringLiteral("ifonthenoff"),      QStringLiteral("ifoffthenon"),
        QStringLiteral("ifonthenon"),       QStringLiteral("ifoffthenoff"),
        QStringLiteral("ifonthendisable"),  QStringLiteral("ifonthenenable"),
        QStringLiteral("ifoffthendisable"), QStringLiteral("ifoffthenenable")};
    return words;
}

// The reasons the builder gave for each pair key, said in one finding.
using PairSteps = std::map<std::pair<int, QString>, QStringList>;

void builderStep(LintContext& lint, const SkippedStep& step, int language, PairSteps& pairSteps)
{
    const int entry = step.entry;
    const QString key = entryKeyName(entry, step.key);
    const QString said = QStringLiteral("%1: %2").arg(key, step.reason);
    if (step.key == gd::Type) {
        if (step.value.isEmpty()) {
            const auto first = lint.firstKeys.find(entry);
            const QString message =
                QStringLiteral("entry %1 has no %2; it builds nothing").arg(entry).arg(key);
            if (first == lint.firstKeys.end())
                lint.add(Severity::Warning, QStringLiteral("entries-missing-type"), message, entry,
                         key);
            else
                lint.addAt(Severity::Warning, QStringLiteral("entries-missing-type"), message,
                           entry, lint.path, first->second);
            return;
        }
        const QString suggestion = closest(step.value, kindWords());
        lint.add(Severity::Error, QStringLiteral("entries-unknown-kind"),
                 QStringLiteral("%1: \"%2\" is not a kind%3")
                     .arg(key, step.value,
                          suggestion.isEmpty()
                              ? QStringLiteral("; the entry builds nothing")
                              : QStringLiteral("; did you mean %1?").arg(suggestion)),
                 entry, key, true);
        return;
    }
    if (step.key == gd::Location || step.key == gd::Size || step.key == gd::XLocation ||
        step.key == gd::YLocation) {
        pairSteps[{entry, step.key}].append(step.reason);
        return;
    }
    if (step.key == gd::Visible || step.key == gd::Locked) {
        lint.add(Severity::Warning, QStringLiteral("values-boolean"), said, entry, key, true);
        return;
    }
    if (step.key == gd::Width) {
        lint.add(Severity::Warning, QStringLiteral("values-width"), said, entry, key, true);
        return;
    }
    if (step.key == gd::Caption) {
        if (lint.kinds[entry] == gd::KindCombo) {
            const bool tail = step.reason.contains(QLatin1String("after the last"));
            lint.add(
                Severity::Warning,
                tail ? QStringLiteral("values-item-list") : QStringLiteral("values-selection"),
                tail
                    ? said + QStringLiteral("; close every entry with \";;\"")
                    : QStringLiteral("%1: the selection names no entry (%2)").arg(key, step.reason),
                entry, key, true);
            return;
        }
        lint.add(Severity::Error, QStringLiteral("values-caption-text"),
                 QStringLiteral("%1: text %2 is missing in language %3 (%4)")
                     .arg(key, step.value)
                     .arg(language)
                     .arg(step.reason),
                 entry, key, true);
    }
}

// A widget the author hides needs no place.
bool isHidden(const LintContext& lint, int entry)
{
    const std::optional<QString> visible = lint.entryValue(entry, gd::Visible);
    if (!visible)
        return false;
    try {
        return !syntax::toBoolean(*visible);
    } catch (const Error&) {
        return false;
    }
}

void reportPairs(LintContext& lint, const PairSteps& pairSteps)
{
    for (const auto& [where, reasons] : pairSteps) {
        const auto& [entry, suffix] = where;
        const QString key = entryKeyName(entry, suffix);
        const std::optional<QString> value = lint.entryValue(entry, suffix);
        if (!value && isHidden(lint, entry))
            continue;
        // "no \"x\" in the value: the left stays 120" -> what happened, and what stays.
        QStringList causes, effects;
        for (const QString& reason : reasons) {
            const qsizetype split = reason.lastIndexOf(QLatin1String(": the "));
            causes.append(reason.left(split));
            effects.append(reason.mid(split + 2));
        }
        causes.removeDuplicates();
        const QString cause = value ? QStringLiteral("\"%1\": %2").arg(*value, causes.join(u"; "))
                                    : QStringLiteral("missing");
        lint.add(Severity::Warning, QStringLiteral("values-pair"),
                 QStringLiteral("%1: %2; %3").arg(key, cause, effects.join(u", ")), entry, key,
                 true);
    }
}

// What is wrong with the target word of a rule ("checkbx2"), in the author's
// terms; empty when the word is one the rules read.
QString targetProblem(const QString& tag)
{
    const qsizetype separator = tag.indexOf(QLatin1String(";;"));
    if (separator < 0)
        return {};
    const QString word = tag.left(separator).toLower();
    qsizetype digits = 0;
    while (digits < word.size() && word[word.size() - 1 - digits].isDigit())
        ++digits;
    const QString letters = word.left(word.size() - digits);
    const QString number = word.right(digits);
    static const QStringList targets = {QStringLiteral("checkbox"), QStringLiteral("option"),
                                        QStringLiteral("combo")};
    if (targets.contains(letters)) {
        if (!number.isEmpty())
            return {};
        return QStringLiteral("the target \"%1\" has no number; write %1<n>, n counting the "
                              "%2s of the page from 1")
            .arg(letters, letters == targets[0]   ? QStringLiteral("check boxe")
                          : letters == targets[1] ? QStringLiteral("option button")
                                                  : QStringLiteral("combo"));
    }
    const QString suggestion = closest(letters, targets);
    if (suggestion.isEmpty())
        return {};
    return QStringLiteral("the target \"%1\" is misspelled; write %2%3")
        .arg(word, suggestion, number.isEmpty() ? QStringLiteral("<n>") : number);
}

void ruleStep(LintContext& lint, const SkippedStep& step)
{
    static const QRegularExpression widget(QStringLiteral("^(Check1|Option1)\\((\\d+)\\)$"));
    const QRegularExpressionMatch match = widget.match(step.key);
    if (!match.hasMatch())
        return;
    const QString kind = match.captured(1) == u"Check1" ? gd::KindCheckBox : gd::KindOptionButton;
    const int entry = lint.entryOf(kind, match.captured(2).toInt());
    const QString key = entryKeyName(entry, gd::VisualFunction);
    if (const QString problem = targetProblem(step.value); !problem.isEmpty()) {
        lint.add(Severity::Error, QStringLiteral("rules-target"),
                 QStringLiteral("%1: \"%2\": %3").arg(key, step.value, problem), entry, key,
                 true);
        return;
    }
    QString check = QStringLiteral("rules-syntax");
    QString message = QStringLiteral("%1: \"%2\": %3").arg(key, step.value, step.reason);
    static const QRegularExpression missing(
        QStringLiteral("^there is no (Check1|Option1|Combo1)\\((-?\\d+)\\)"));
    if (const QRegularExpressionMatch none = missing.match(step.reason); none.hasMatch()) {
        const QString array = none.captured(1);
        const QString targetKind = array == u"Check1"    ? gd::KindCheckBox
                                   : array == u"Option1" ? gd::KindOptionButton
                                                         : gd::KindCombo;
        const int index = none.captured(2).toInt();
        const int count = lint.countOf(targetKind);
        lint.add(Severity::Error, QStringLiteral("rules-target"),
                 QStringLiteral("%1: \"%2\": the rule names %3, but there are only %4: the "
                                "rule does nothing")
                     .arg(key, step.value, widgetInWords(targetKind, index))
                     .arg(count),
                 entry, key, true);
        return;
    }
    if (step.reason.contains(QLatin1String("which a combo does not have")))
        check = QStringLiteral("rules-combo-value");
    else if (step.reason.contains(QLatin1String("not a number")))
        check = QStringLiteral("rules-target");
    else if (step.reason.contains(QLatin1String("is not a rule keyword"))) {
        const QString keyword = step.value.mid(step.value.indexOf(QLatin1String(";;")) + 2);
        for (const QString& candidate : ruleKeywords()) {
            if (keyword.startsWith(candidate) && keyword.size() > candidate.size()) {
                message = QStringLiteral("%1: \"%2\": text after the keyword \"%3\"; the rule "
                                         "never fires")
                              .arg(key, step.value, candidate);
                lint.add(Severity::Error, check, message, entry, key, true);
                return;
            }
        }
        const QString suggestion = closest(keyword, ruleKeywords());
        if (!suggestion.isEmpty())
            message += QStringLiteral("; did you mean %1?").arg(suggestion);
    }
    lint.add(Severity::Error, check, message, entry, key, true);
}

} // namespace

void reportSkippedSteps(LintContext& lint, const std::vector<SkippedStep>& steps, int language)
{
    PairSteps pairSteps;
    for (const SkippedStep& step : steps) {
        // Without a key, loading fails before the default is tried.
        const bool hasKey =
            !lint.entryValue(step.entry, gd::ControlKey).value_or(QString()).isEmpty();
        if (step.routine == u"qInitCustomControls" && step.entry > 0) {
            builderStep(lint, step, language, pairSteps);
        } else if (step.routine == u"Check1_Click" || step.routine == u"Option1_Click") {
            ruleStep(lint, step);
        } else if (step.routine == u"qLoadSettings" && step.key == gd::ControlDefaultValue &&
                   hasKey) {
            const QString key = entryKeyName(step.entry, gd::ControlDefaultValue);
            lint.add(Severity::Error, QStringLiteral("storage-default"),
                     QStringLiteral("%1: \"%2\" cannot be taken by the widget (%3); it keeps "
                                    "its state")
                         .arg(key, step.value, step.reason),
                     step.entry, key, true);
        }
    }
    reportPairs(lint, pairSteps);
}

} // namespace qf::lint
