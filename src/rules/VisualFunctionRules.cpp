#include "control/qForms.h"
#include "gamedata/ValueSyntax.h"
#include "rules/VisualFunctionRule.h"

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
            throw qf::Error(
                QStringLiteral("The visual function rules call each other without end"));
        }
    }
    ~DepthGuard() { --m_depth; }

private:
    int& m_depth;
};

} // namespace

void qForms::applyVisualFunction(const QString& tag, std::optional<bool> isOn)
{
    const auto rule = qf::VisualFunctionRule::parse(tag);
    if (!rule || !isOn)
        return;
    if (*isOn != (rule->when == qf::VisualFunctionRule::When::On))
        return;

    // An index that is not a number, or names no widget, makes the click do
    // nothing; index 0 is the hidden template, which the rule then changes.
    int index;
    try {
        index = qf::syntax::toInt16(rule->indexText);
    } catch (const qf::Error&) {
        return;
    }
    auto& w = *m_widgets;
    using Action = qf::VisualFunctionRule::Action;
    using Target = qf::VisualFunctionRule::Target;

    const DepthGuard guard(m_ruleDepth);
    switch (rule->target) {
    case Target::CheckBox:
        if (!w.Check1.exists(index))
            return;
        if (rule->action == Action::Check || rule->action == Action::Uncheck)
            w.Check1.at(index).setValue(rule->action == Action::Check ? qf::CheckBox::Checked
                                                                      : qf::CheckBox::Unchecked);
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

void qForms::Check1_Click(qint16 Index)
{
    const qf::CheckBox& box = m_widgets->Check1.at(Index);
    // A greyed box is neither on nor off and fires nothing.
    std::optional<bool> isOn;
    if (box.value() == qf::CheckBox::Checked)
        isOn = true;
    else if (box.value() == qf::CheckBox::Unchecked)
        isOn = false;
    applyVisualFunction(box.tag(), isOn);
}

void qForms::Option1_Click(qint16 Index)
{
    const qf::OptionButton& button = m_widgets->Option1.at(Index);
    applyVisualFunction(button.tag(), button.value());
}
