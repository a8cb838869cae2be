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

// isOn is empty for a greyed check box, which fires no rule. `widget` names
// the clicked element ("Check1(2)") for the skip reports.
void applyVisualFunction(ControlContext& context, const QString& widget, const QString& tag,
                         std::optional<bool> isOn)
{
    const StepSite site{0, widget, tag};
    QString whyNot;
    const auto rule = VisualFunctionRule::parse(tag, context.skipObserver() ? &whyNot : nullptr);
    if (!rule && !whyNot.isEmpty())
        context.reportSkip(site, whyNot);
    if (!rule || !isOn)
        return;
    if (*isOn != (rule->when == VisualFunctionRule::When::On))
        return;

    // An index that is not a number, or names no widget, makes the click do
    // nothing; index 0 is the hidden template, which the rule then changes.
    int index;
    try {
        index = syntax::toInt16(rule->indexText);
    } catch (const Error& error) {
        context.reportSkip(site, error.message() + QStringLiteral(": the rule does nothing"));
        return;
    }
    const auto noTarget = [&](const char* array) {
        context.reportSkip(site, QStringLiteral("there is no %1(%2): the rule does nothing")
                                     .arg(QLatin1String(array))
                                     .arg(index));
    };
    auto& w = context.widgets;
    using Action = VisualFunctionRule::Action;
    using Target = VisualFunctionRule::Target;

    const DepthGuard guard(context.ruleDepth);
    switch (rule->target) {
    case Target::CheckBox:
        if (!w.Check1.exists(index))
            return noTarget("Check1");
        if (rule->action == Action::Check || rule->action == Action::Uncheck)
            w.Check1.at(index).setValue(rule->action == Action::Check ? CheckBox::Checked
                                                                      : CheckBox::Unchecked);
        else
            w.Check1.at(index).setEnabled(rule->action == Action::Enable);
        break;
    case Target::OptionButton:
        if (!w.Option1.exists(index))
            return noTarget("Option1");
        if (rule->action == Action::Check || rule->action == Action::Uncheck)
            w.Option1.at(index).setValue(rule->action == Action::Check);
        else
            w.Option1.at(index).setEnabled(rule->action == Action::Enable);
        break;
    case Target::Combo:
        if (!w.Combo1.exists(index))
            return noTarget("Combo1");
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
    applyVisualFunction(context, QStringLiteral("Check1(%1)").arg(Index), box.tag(), isOn);
}

void Option1_Click(ControlContext& context, qint16 Index)
{
    const OptionButton& button = context.widgets.Option1.at(Index);
    applyVisualFunction(context, QStringLiteral("Option1(%1)").arg(Index), button.tag(),
                        button.value());
}

} // namespace qf::rules
