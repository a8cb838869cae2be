#include "view/Accessibility.h"

#include <QAccessibleWidget>
#include <QGroupBox>
#include <QKeySequence>

namespace qf {

namespace {

QString withoutMnemonics(QString text)
{
    for (qsizetype i = text.indexOf(QLatin1Char('&')); i >= 0 && i < text.size();
         i = text.indexOf(QLatin1Char('&'), i + 1))
        text.remove(i, 1); // "&&" leaves one
    return text;
}

class OptionButtonAccessible : public QAccessibleWidget {
public:
    explicit OptionButtonAccessible(OptionButtonView* button)
        : QAccessibleWidget(button, QAccessible::RadioButton)
    {
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.checkable = true;
        state.checked = button()->isChecked();
        state.pressed = button()->isDown();
        return state;
    }

    QString text(QAccessible::Text t) const override
    {
        if (t == QAccessible::Name && button()->accessibleName().isEmpty())
            return withoutMnemonics(button()->text());
        if (t == QAccessible::Accelerator)
            return QKeySequence::mnemonic(button()->text()).toString(QKeySequence::NativeText);
        return QAccessibleWidget::text(t);
    }

    QList<std::pair<QAccessibleInterface*, QAccessible::Relation>>
    relations(QAccessible::Relation match) const override
    {
        auto relations = QAccessibleWidget::relations(match);
        const auto* frame = qobject_cast<QGroupBox*>(button()->groupFrame());
        if ((match & QAccessible::Label) && frame && !frame->title().isEmpty())
            relations.append({QAccessible::queryAccessibleInterface(button()->groupFrame()),
                              QAccessible::Label});
        return relations;
    }

    QStringList actionNames() const override
    {
        QStringList names;
        if (button()->isEnabled())
            names << toggleAction();
        return names + QAccessibleWidget::actionNames();
    }

    void doAction(const QString& action) override
    {
        if (action == toggleAction() || action == pressAction()) {
            if (button()->isEnabled())
                button()->click();
        } else
            QAccessibleWidget::doAction(action);
    }

private:
    OptionButtonView* button() const { return static_cast<OptionButtonView*>(widget()); }
};

QAccessibleInterface* createInterface(const QString& className, QObject* object)
{
    if (className == QLatin1String(OptionButtonView::staticMetaObject.className()))
        return new OptionButtonAccessible(static_cast<OptionButtonView*>(object));
    return nullptr;
}

} // namespace

OptionButtonView::OptionButtonView(QWidget* parent) : QRadioButton(parent)
{
    static const bool installed = [] {
        QAccessible::installFactory(createInterface);
        return true;
    }();
    Q_UNUSED(installed);
    setAutoExclusive(false);
}

} // namespace qf
