#include "rules/VisualFunctionRule.h"

#include <array>

namespace qf {

namespace {

struct Keyword {
    QLatin1String text;
    VisualFunctionRule::When when;
    VisualFunctionRule::Action action;
    bool appliesToCombo;
};

using When = VisualFunctionRule::When;
using Action = VisualFunctionRule::Action;

constexpr std::array<Keyword, 8> Keywords = {{
    {QLatin1String("ifonthenoff"), When::On, Action::Uncheck, false},
    {QLatin1String("ifoffthenon"), When::Off, Action::Check, false},
    {QLatin1String("ifonthenon"), When::On, Action::Check, false},
    {QLatin1String("ifoffthenoff"), When::Off, Action::Uncheck, false},
    {QLatin1String("ifonthendisable"), When::On, Action::Disable, true},
    {QLatin1String("ifonthenenable"), When::On, Action::Enable, true},
    {QLatin1String("ifoffthendisable"), When::Off, Action::Disable, true},
    {QLatin1String("ifoffthenenable"), When::Off, Action::Enable, true},
}};

} // namespace

std::optional<VisualFunctionRule> VisualFunctionRule::parse(const QString& tag, QString* whyNot)
{
    const auto none = [&](const QString& reason) -> std::optional<VisualFunctionRule> {
        if (whyNot)
            *whyNot = reason;
        return std::nullopt;
    };
    if (tag.isEmpty())
        return none({});
    const qsizetype separator = tag.indexOf(QLatin1String(";;"));
    // Without ";;" there is no index to read; the click then does nothing.
    if (separator < 0)
        return none(QStringLiteral("no \";;\" between target and keyword: the rule never fires"));
    // The whole rest is the keyword, so a second rule behind it matches none.
    const QString keyword = tag.mid(separator + 2);

    // The kind is told by the first five characters; the index starts after
    // the full target word.
    const QString kind = tag.left(5).toLower();
    Target target;
    qsizetype wordLength;
    if (kind == QLatin1String("check")) {
        target = Target::CheckBox;
        wordLength = 8;
    } else if (kind == QLatin1String("optio")) {
        target = Target::OptionButton;
        wordLength = 6;
    } else if (kind == QLatin1String("combo")) {
        target = Target::Combo;
        wordLength = 5;
    } else {
        return none(QStringLiteral("the target is not a check box, option button or combo: "
                                   "the rule never fires"));
    }
    if (separator < wordLength)
        return none(QStringLiteral("no target index before \";;\": the rule never fires"));

    for (const Keyword& candidate : Keywords) {
        if (keyword != candidate.text)
            continue;
        if (target == Target::Combo && !candidate.appliesToCombo)
            return none(QStringLiteral("\"%1\" sets a value, which a combo does not have: the "
                                       "rule does nothing")
                            .arg(keyword));
        return VisualFunctionRule{target, tag.mid(wordLength, separator - wordLength),
                                  candidate.when, candidate.action};
    }
    return none(QStringLiteral("\"%1\" is not a rule keyword: the rule never fires").arg(keyword));
}

} // namespace qf
