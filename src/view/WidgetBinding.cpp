#include "view/WidgetBinding.h"

#include "toolkit/CheckBox.h"
#include "toolkit/ComboBox.h"
#include "toolkit/CommandButton.h"
#include "toolkit/FileList.h"
#include "toolkit/Frame.h"
#include "toolkit/Label.h"
#include "toolkit/Line.h"
#include "toolkit/OptionButton.h"
#include "toolkit/TextBox.h"
#include "view/Accessibility.h"
#include "view/LineWidget.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QtDebug>

namespace qf {

namespace {

QColor fromBgr(quint32 bgr)
{
    return QColor(int(bgr & 0xFF), int((bgr >> 8) & 0xFF), int((bgr >> 16) & 0xFF));
}

class LabelBinding : public WidgetBinding {
public:
    LabelBinding(Label& model, QWidget* parent, TwipScale scale)
        : WidgetBinding(model, new QLabel(parent), scale), m_label(model)
    {
        auto* label = widget();
        label->setWordWrap(true);
        label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
        label->setTextFormat(Qt::PlainText);
        if (model.look().backColor) {
            label->setAutoFillBackground(true);
            QPalette palette = label->palette();
            palette.setColor(QPalette::Window, fromBgr(*model.look().backColor));
            label->setPalette(palette);
        }
        if (model.look().bold) {
            QFont font = label->font();
            font.setBold(true);
            label->setFont(font);
        }
        showAll();
    }

protected:
    QLabel* widget() const { return static_cast<QLabel*>(view()); }
    void show(Property property) override
    {
        if (property == Property::Caption)
            widget()->setText(m_label.caption());
        else if (property == Property::ForeColor && m_label.foreColor()) {
            QPalette palette = widget()->palette();
            palette.setColor(QPalette::WindowText, fromBgr(*m_label.foreColor()));
            widget()->setPalette(palette);
        } else
            WidgetBinding::show(property);
    }

private:
    Label& m_label;
};

class TextBoxBinding : public WidgetBinding {
public:
    TextBoxBinding(TextBox& model, QWidget* parent, TwipScale scale)
        : WidgetBinding(model, new QLineEdit(parent), scale), m_text(model)
    {
        QObject::connect(widget(), &QLineEdit::textEdited, widget(),
                         [this](const QString& text) { fromUser([&] { m_text.setText(text); }); });
        showAll();
    }

protected:
    QLineEdit* widget() const { return static_cast<QLineEdit*>(view()); }
    void show(Property property) override
    {
        if (property == Property::Text) {
            if (widget()->text() != m_text.text())
                widget()->setText(m_text.text());
        } else if (property == Property::Locked)
            widget()->setReadOnly(m_text.isLocked());
        else
            WidgetBinding::show(property);
    }

private:
    TextBox& m_text;
};

class CommandButtonBinding : public WidgetBinding {
public:
    CommandButtonBinding(CommandButton& model, QWidget* parent, TwipScale scale)
        : WidgetBinding(model, new QPushButton(parent), scale), m_button(model)
    {
        QObject::connect(widget(), &QPushButton::clicked, widget(),
                         [this] { fromUser([&] { m_button.press(); }); });
        showAll();
    }

protected:
    QPushButton* widget() const { return static_cast<QPushButton*>(view()); }
    void show(Property property) override
    {
        if (property == Property::Caption)
            widget()->setText(m_button.caption());
        else
            WidgetBinding::show(property);
    }

private:
    CommandButton& m_button;
};

// Check boxes and option buttons: the model decides what a click does and the
// button only reports it, then shows the value the model holds.
template <typename Model, typename Button> class ToggleBinding : public WidgetBinding {
public:
    ToggleBinding(Model& model, QWidget* parent, TwipScale scale)
        : WidgetBinding(model, new Button(parent), scale), m_model(model)
    {
        // The model keeps the option groups; Qt's own grouping would disagree.
        widget()->setAutoExclusive(false);
        QObject::connect(widget(), &Button::clicked, widget(), [this] {
            fromUser([&] { m_model.userClick(); });
            show(Property::Value);
        });
        showAll();
    }

protected:
    Button* widget() const { return static_cast<Button*>(view()); }
    void show(Property property) override
    {
        switch (property) {
        case Property::Value: {
            const QSignalBlocker blocker(widget());
            showValue(*widget(), m_model);
            break;
        }
        case Property::Caption:
            widget()->setText(m_model.caption());
            break;
        case Property::Enabled:
            widget()->setEnabled(m_model.isEnabled());
            break;
        default:
            WidgetBinding::show(property);
        }
    }

private:
    static void showValue(QCheckBox& box, const CheckBox& model)
    {
        box.setTristate(model.value() == CheckBox::Greyed);
        box.setCheckState(model.value() == CheckBox::Checked  ? Qt::Checked
                          : model.value() == CheckBox::Greyed ? Qt::PartiallyChecked
                                                              : Qt::Unchecked);
    }
    static void showValue(QRadioButton& button, const OptionButton& model)
    {
        button.setChecked(model.value());
    }

    Model& m_model;
};

using CheckBoxBinding = ToggleBinding<CheckBox, QCheckBox>;
using OptionButtonBinding = ToggleBinding<OptionButton, OptionButtonView>;

class ComboBoxBinding : public WidgetBinding {
public:
    ComboBoxBinding(ComboBox& model, QWidget* parent, TwipScale scale)
        : WidgetBinding(model, new QComboBox(parent), scale), m_combo(model)
    {
        QObject::connect(widget(), &QComboBox::activated, widget(),
                         [this](int index) { fromUser([&] { m_combo.setListIndex(index); }); });
        showAll();
    }

protected:
    QComboBox* widget() const { return static_cast<QComboBox*>(view()); }
    void show(Property property) override
    {
        const QSignalBlocker blocker(widget());
        switch (property) {
        case Property::List:
            widget()->clear();
            widget()->addItems(m_combo.items());
            [[fallthrough]];
        case Property::ListIndex:
            widget()->setCurrentIndex(m_combo.listIndex());
            break;
        case Property::Enabled:
            widget()->setEnabled(m_combo.isEnabled());
            break;
        default:
            WidgetBinding::show(property);
        }
    }

private:
    ComboBox& m_combo;
};

class FrameBinding : public WidgetBinding {
public:
    FrameBinding(Frame& model, QWidget* parent, TwipScale scale)
        : WidgetBinding(model, new QGroupBox(parent), scale), m_frame(model)
    {
        showAll();
    }

protected:
    QGroupBox* widget() const { return static_cast<QGroupBox*>(view()); }
    void show(Property property) override
    {
        if (property == Property::Caption)
            widget()->setTitle(m_frame.caption());
        else
            WidgetBinding::show(property);
    }

private:
    Frame& m_frame;
};

class LineBinding : public WidgetBinding {
public:
    LineBinding(Line& model, QWidget* parent, TwipScale scale)
        : WidgetBinding(model, new LineWidget(parent), scale), m_line(model)
    {
        showAll();
    }

protected:
    void show(Property property) override
    {
        switch (property) {
        case Property::X1:
        case Property::Y1:
        case Property::X2:
        case Property::Y2:
        case Property::BorderWidth:
            static_cast<LineWidget*>(view())->setLine(
                QPoint(scale().pixels(m_line.x1()), scale().pixels(m_line.y1())),
                QPoint(scale().pixels(m_line.x2()), scale().pixels(m_line.y2())),
                m_line.borderWidth());
            break;
        case Property::Left:
        case Property::Top:
        case Property::Width:
        case Property::Height:
            break; // a line is placed by its ends
        default:
            WidgetBinding::show(property);
        }
    }

private:
    Line& m_line;
};

class FileListBinding : public WidgetBinding {
public:
    FileListBinding(FileList& model, QWidget* parent, TwipScale scale)
        : WidgetBinding(model, new QListWidget(parent), scale), m_list(model)
    {
        QObject::connect(widget(), &QListWidget::currentRowChanged, widget(),
                         [this](int row) { fromUser([&] { m_list.setListIndex(row); }); });
        showAll();
    }

protected:
    QListWidget* widget() const { return static_cast<QListWidget*>(view()); }
    void show(Property property) override
    {
        const QSignalBlocker blocker(widget());
        switch (property) {
        case Property::List:
            widget()->clear();
            widget()->addItems(m_list.files());
            [[fallthrough]];
        case Property::ListIndex:
            widget()->setCurrentRow(m_list.listIndex());
            break;
        default:
            WidgetBinding::show(property);
        }
    }

private:
    FileList& m_list;
};

} // namespace

std::unique_ptr<WidgetBinding> WidgetBinding::create(Widget& model, QWidget* parent,
                                                     TwipScale scale)
{
    switch (model.kind()) {
    case WidgetKind::Label:
        return std::make_unique<LabelBinding>(static_cast<Label&>(model), parent, scale);
    case WidgetKind::TextBox:
        return std::make_unique<TextBoxBinding>(static_cast<TextBox&>(model), parent, scale);
    case WidgetKind::CommandButton:
        return std::make_unique<CommandButtonBinding>(static_cast<CommandButton&>(model), parent,
                                                      scale);
    case WidgetKind::CheckBox:
        return std::make_unique<CheckBoxBinding>(static_cast<CheckBox&>(model), parent, scale);
    case WidgetKind::OptionButton:
        return std::make_unique<OptionButtonBinding>(static_cast<OptionButton&>(model), parent,
                                                     scale);
    case WidgetKind::ComboBox:
        return std::make_unique<ComboBoxBinding>(static_cast<ComboBox&>(model), parent, scale);
    case WidgetKind::Frame:
        return std::make_unique<FrameBinding>(static_cast<Frame&>(model), parent, scale);
    case WidgetKind::Line:
        return std::make_unique<LineBinding>(static_cast<Line&>(model), parent, scale);
    case WidgetKind::FileList:
        return std::make_unique<FileListBinding>(static_cast<FileList&>(model), parent, scale);
    }
    return nullptr;
}

WidgetBinding::WidgetBinding(Widget& model, QWidget* view, TwipScale scale)
    : m_model(model), m_view(view), m_scale(scale)
{
    view->setObjectName(model.index() >= 0
                            ? QStringLiteral("%1(%2)").arg(model.name()).arg(model.index())
                            : model.name());
    m_connection = model.changed.connect([this](Property property) {
        if (m_view)
            show(property);
        if (m_observer)
            m_observer(property);
    });
}

WidgetBinding::~WidgetBinding()
{
    stopListening();
    delete m_view.data();
}

void WidgetBinding::stopListening()
{
    if (m_attached)
        m_model.changed.disconnect(m_connection);
    m_attached = false;
}

void WidgetBinding::show(Property property)
{
    switch (property) {
    case Property::Left:
    case Property::Top:
    case Property::Width:
    case Property::Height:
        m_view->setGeometry(
            m_scale.rect(m_model.left(), m_model.top(), m_model.width(), m_model.height()));
        break;
    case Property::Visible:
        m_view->setVisible(m_model.isVisible());
        break;
    default:
        break;
    }
}

void WidgetBinding::showAll()
{
    for (Property property :
         {Property::Left, Property::Visible, Property::Caption, Property::ForeColor, Property::Text,
          Property::Locked, Property::Value, Property::Enabled, Property::List, Property::X1})
        show(property);
}

void WidgetBinding::fromUser(const std::function<void()>& input)
{
    try {
        input();
    } catch (const std::exception& error) {
        qWarning("qForms: %s", error.what());
        showAll();
    }
}

} // namespace qf
