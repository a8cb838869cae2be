#pragma once

#include <QString>

#include <optional>

namespace qf {

// A visual function rule as a check box or option button carries it in its Tag:
// target word, target index, ";;", keyword ("combo3;;ifonthendisable").
struct VisualFunctionRule {
    enum class Target { CheckBox, OptionButton, Combo };
    enum class When { On, Off };
    enum class Action { Uncheck, Check, Disable, Enable };

    Target target;
    QString indexText;
    When when;
    Action action;

    // The rule in a Tag; none for an empty Tag, an unknown target word, a Tag
    // without ";;" or with an index missing before it, and a keyword that is
    // not one for the target's kind.
    // whyNot, when given, receives the reason for none (empty for an empty Tag).
    static std::optional<VisualFunctionRule> parse(const QString& tag, QString* whyNot = nullptr);
};

} // namespace qf
