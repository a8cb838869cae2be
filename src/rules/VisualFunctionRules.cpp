#include "context/ControlContext.h"
#include "gamedata/ValueSyntax.h"
#include "rules/Rules.h"
#include "rules/VisualFunctionRule.h"

#include <optional>

namespace qf::rules {

namespace {

// Rules can name each other in a circle (two option buttons that select each
// other); past this depth the chain is cut with an error instead of running
// out of stack.
constexpr int MaxRuleDepth = 256;

class DepthGuard {
public:
    explicit DepthGuard(int& depth) : m_depth(depth)
    {
        if (++m_depth > MaxRuleDepth) {
            --m_depth;
            throw Error(QStringLiteral("The visual function rules call each other without end"));
        }
    }
    ~DepthGuard() { --m_depth; }

private:
    int& m_depth;
};

// isOn is empty for a greyed check box, which fires no rule.
void applyVisualFunction(ControlContext& context, const QString& tag, std::optional<bool> isOn)
{
    const auto rule = VisualFunctionRule::parse(tag);
    if (!rule || !isOn)
        return;
    if (*isOn != (rule->when == VisualFunctionRule::When::On))
        return;

    // An index that is not a number, or names no widget, makes the click do
    // nothing; index 0 is the hidden template, which the rule then changes.
    int index;
    try {
        index = syntax::toInt16(rule->indexText);
    } catch (const Error&) {
        return;
    }
    auto& w = context.widgets;
    using Action = VisualFunctionRule::Action;
    using Target = VisualFunctionRule::Target;

    const DepthGuard guard(context.ruleDepth);
    switch (rule->target) {
    case Target::CheckBox:
        if (!w.Check1.exists(index))
            return;
        if (rule->action == Action::Check || rule->action == Action::Uncheck)
            w.Check1.at(index).setValue(rule->action == Action::Check ? CheckBox::Checked
                                                                      : CheckBox::Unchecked);
        else
            w.Check1.at(index).setEnabled(rule->action == Action::Enable);
        break;
    case Target::OptionButton:
        if (!w.Option1.exists(index))
            return;
        if (rule->action == Action::Check || rule->action == Action::Uncheck)
            w.Option1.at(index).setValue(rule->action == Action::Check);
        else
            w.Option1.at(index).setEnabled(rule->action == Action::Enable);
        break;
    case Target::Combo:
        if (w.Combo1.exists(index))
            w.Combo1.at(index).setEnabled(rule->action == Action::Enable);
        break;
    }
}

} // namespace

void Check1_Click(ControlContext& context, qint16 Index)
{
    const CheckBox& box = context.widgets.Check1.at(Index);
    // A greyed box is neither on nor off and fires nothing.
    std::optional<bool> isOn;
    if (box.value() == CheckBox::Checked)
        isOn = true;
    else if (box.value() == CheckBox::Unchecked)
        isOn = false;
    applyVisualFunction(context, box.tag(), isOn);
}

void Option1_Click(ControlContext& context, qint16 Index)
{
    const OptionButton& button = context.widgets.Option1.at(Index);
    applyVisualFunction(context, button.tag(), button.value());
}

} // namespace qf::rules
