#include "PropertyEditors.h"

#include "gamedata/GameDataKeys.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

namespace qf::designer {

namespace gd = gamedata;

namespace {

const QStringList ValueKeywords = {QStringLiteral("ifonthenoff"), QStringLiteral("ifoffthenon"),
                                   QStringLiteral("ifonthenon"), QStringLiteral("ifoffthenoff")};
const QStringList EnableKeywords = {
    QStringLiteral("ifonthendisable"), QStringLiteral("ifonthenenable"),
    QStringLiteral("ifoffthendisable"), QStringLiteral("ifoffthenenable")};

QWidget* lineEditor(const QString& value, Commit commit, QWidget* parent)
{
    auto* edit = new QLineEdit(value, parent);
    QObject::connect(edit, &QLineEdit::editingFinished, edit, [edit, value, commit] {
        if (edit->text() != value)
            commit(edit->text());
    });
    return edit;
}

std::optional<bool> booleanOf(const QString& value)
{
    const QString lowered = value.trimmed().toLower();
    if (lowered == u"true" || lowered == u"false")
        return lowered == u"true";
    bool ok = false;
    const double number = lowered.toDouble(&ok);
    return ok ? std::optional(number != 0) : std::nullopt;
}

// A value written as a number stays a number.
QWidget* booleanEditor(const QString& value, bool byDefault, Commit commit, QWidget* parent)
{
    const std::optional<bool> on = value.isEmpty() ? std::optional(byDefault) : booleanOf(value);
    if (!on)
        return lineEditor(value, commit, parent);
    auto* box = new QCheckBox(parent);
    box->setChecked(*on);
    bool ok = false;
    value.toDouble(&ok);
    const bool numeric = ok || (value.isEmpty() && !byDefault);
    QObject::connect(box, &QCheckBox::toggled, box, [numeric, commit](bool checked) {
        commit(numeric   ? QString::number(int(checked))
               : checked ? QStringLiteral("True")
                         : QStringLiteral("False"));
    });
    return box;
}

QWidget* indexEditor(const QString& value, Commit commit, QWidget* parent)
{
    bool ok = false;
    const int index = value.trimmed().toInt(&ok);
    if (!ok || index < 1)
        return lineEditor(value, commit, parent);
    auto* spin = new QSpinBox(parent);
    spin->setRange(1, 32767);
    spin->setValue(index);
    QObject::connect(spin, &QSpinBox::editingFinished, spin, [spin, index, commit] {
        if (spin->value() != index)
            commit(QString::number(spin->value()));
    });
    return spin;
}

// The list's entries, and a checked one for the selection entry "(text)".
QWidget* itemListEditor(const QString& value, Commit commit, QWidget* parent)
{
    QStringList entries = value.split(QStringLiteral(";;"));
    entries.removeLast(); // text after the last ";;" is not read
    QStringList items;
    QString chosen;
    for (const QString& entry : std::as_const(entries)) {
        if (entry.startsWith(u'('))
            chosen = entry.mid(1, entry.size() - 2);
        else
            items.append(entry);
    }
    // A selection that names no entry, or text the list would drop, stays text.
    if ((!chosen.isEmpty() && !items.contains(chosen)) || !value.endsWith(QStringLiteral(";;")))
        if (!value.isEmpty())
            return lineEditor(value, commit, parent);

    auto* editor = new QWidget(parent);
    auto* layout = new QVBoxLayout(editor);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* list = new QListWidget(editor);
    list->setMaximumHeight(120);
    list->setToolTip(QObject::tr("Double-click to rename; tick the item the combo starts on"));
    for (const QString& item : std::as_const(items)) {
        auto* row = new QListWidgetItem(item, list);
        row->setFlags(row->flags() | Qt::ItemIsEditable | Qt::ItemIsUserCheckable);
        row->setCheckState(item == chosen && !chosen.isEmpty() ? Qt::Checked : Qt::Unchecked);
    }
    layout->addWidget(list);
    const auto write = [list, commit] {
        QString text, selection;
        for (int i = 0; i < list->count(); ++i) {
            text += list->item(i)->text() + QStringLiteral(";;");
            if (list->item(i)->checkState() == Qt::Checked)
                selection = list->item(i)->text();
        }
        if (!selection.isEmpty())
            text += QStringLiteral("(%1);;").arg(selection);
        commit(text);
    };
    // One item is the chosen one: ticking another unticks it.
    QObject::connect(list, &QListWidget::itemChanged, list,
                     [list, write](QListWidgetItem* changed) {
                         if (changed->checkState() == Qt::Checked) {
                             const QSignalBlocker quiet(list);
                             for (int i = 0; i < list->count(); ++i)
                                 if (list->item(i) != changed)
                                     list->item(i)->setCheckState(Qt::Unchecked);
                         }
                         write();
                     });
    auto* buttons = new QHBoxLayout;
    const auto button = [&](const QString& label, auto action) {
        auto* b = new QPushButton(label, editor);
        QObject::connect(b, &QPushButton::clicked, list, action);
        buttons->addWidget(b);
    };
    button(QObject::tr("Add"), [list, write] {
        list->blockSignals(true);
        auto* row = new QListWidgetItem(QObject::tr("item %1").arg(list->count() + 1), list);
        row->setFlags(row->flags() | Qt::ItemIsEditable | Qt::ItemIsUserCheckable);
        row->setCheckState(Qt::Unchecked);
        list->blockSignals(false);
        write();
    });
    button(QObject::tr("Remove"), [list, write] {
        if (QListWidgetItem* row = list->currentItem()) {
            delete row;
            write();
        }
    });
    const auto shift = [list, write](int by) {
        const int row = list->currentRow();
        if (row < 0 || row + by < 0 || row + by >= list->count())
            return;
        const QSignalBlocker quiet(list);
        list->insertItem(row + by, list->takeItem(row));
        write();
    };
    button(QObject::tr("Up"), [shift] { shift(-1); });
    button(QObject::tr("Down"), [shift] { shift(1); });
    layout->addLayout(buttons);
    return editor;
}

QString ruleWord(const QString& kind)
{
    return kind == gd::KindOptionButton ? QStringLiteral("option") : kind;
}

// Targets are the page's check boxes, option buttons and combos; the keywords
// are those the chosen target's kind takes.
QWidget* ruleEditor(const QString& value, const editing::PageEntries& page, Commit commit,
                    QWidget* parent)
{
    const std::optional<editing::RuleTarget> current = editing::parseRuleTarget(value);
    const QString keyword = value.toLower().section(QStringLiteral(";;"), 1);
    auto* editor = new QWidget(parent);
    auto* layout = new QHBoxLayout(editor);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* targets = new QComboBox(editor);
    targets->setObjectName(QStringLiteral("ruleTarget"));
    targets->addItem(QObject::tr("(no rule)"));
    for (const auto& [entry, widget] : page.widgets) {
        if (widget.kind != gd::KindCheckBox && widget.kind != gd::KindOptionButton &&
            widget.kind != gd::KindCombo)
            continue;
        const QString rule = ruleWord(widget.kind) + QString::number(widget.element);
        targets->addItem(QObject::tr("%1 (entry %2)").arg(rule).arg(entry),
                         QStringList{rule, widget.kind});
        if (current && current->widget == widget)
            targets->setCurrentIndex(targets->count() - 1);
    }
    if (!value.isEmpty() && targets->currentIndex() == 0) {
        delete editor;
        return lineEditor(value, commit, parent);
    }
    auto* keywords = new QComboBox(editor);
    keywords->setObjectName(QStringLiteral("ruleKeyword"));
    layout->addWidget(targets, 1);
    layout->addWidget(keywords, 1);
    const auto fillKeywords = [targets, keywords](const QString& keep) {
        const QSignalBlocker quiet(keywords);
        keywords->clear();
        const QStringList data = targets->currentData().toStringList();
        if (data.isEmpty())
            return;
        if (data[1] != gd::KindCombo)
            keywords->addItems(ValueKeywords);
        keywords->addItems(EnableKeywords);
        keywords->setCurrentIndex(std::max(0, keywords->findText(keep)));
    };
    fillKeywords(keyword);
    keywords->setEnabled(targets->currentIndex() > 0);
    const auto write = [targets, keywords, commit] {
        const QStringList data = targets->currentData().toStringList();
        commit(data.isEmpty() ? QString()
                              : data[0] + QStringLiteral(";;") + keywords->currentText());
    };
    QObject::connect(targets, &QComboBox::currentIndexChanged, editor,
                     [keywords, fillKeywords, write] {
                         fillKeywords(keywords->currentText());
                         write();
                     });
    QObject::connect(keywords, &QComboBox::currentIndexChanged, editor, write);
    return editor;
}

} // namespace

QWidget* keyEditor(const QString& suffix, const QString& kind, const QString& value,
                   const editing::PageEntries& page, Commit commit, QWidget* parent)
{
    const QString unquoted = value.size() >= 2 && value.startsWith(u'"') && value.endsWith(u'"')
                                 ? value.mid(1, value.size() - 2)
                                 : QString();
    // Quoted values are edited as written: the special editors would drop the quotes.
    if (!unquoted.isNull())
        return lineEditor(value, commit, parent);
    if (suffix == gd::Visible && kind == gd::KindCheckBox)
        return booleanEditor(value, true, commit, parent);
    if (suffix == gd::Locked && kind == gd::KindText)
        return booleanEditor(value, false, commit, parent);
    if (suffix == gd::Index)
        return indexEditor(value, commit, parent);
    if (suffix == gd::Caption && kind == gd::KindCombo)
        return itemListEditor(value, commit, parent);
    if (suffix == gd::VisualFunction && (kind == gd::KindCheckBox || kind == gd::KindOptionButton))
        return ruleEditor(value, page, commit, parent);
    return lineEditor(value, commit, parent);
}

} // namespace qf::designer
