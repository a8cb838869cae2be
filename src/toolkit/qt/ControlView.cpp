#include "toolkit/qt/ControlView.h"

#include "control/qForms.h"
#include "toolkit/qt/QtFileDialog.h"
#include "toolkit/qt/QtMessageBox.h"
#include "toolkit/qt/WidgetDescriptions.h"

#include <QTimer>

namespace qf {

ControlView::ControlView(qForms& control, QWidget* parent)
    : QWidget(parent), m_control(&control), m_scale(logicalDpiX())
{
    ControlWidgets& w = control.widgets();
    setFixedSize(m_scale.pixels(ControlWidgets::ClientWidth),
                 m_scale.pixels(ControlWidgets::ClientHeight));
    // The layout's twips were measured for an 8.25 pt font.
    QFont small = font();
    small.setPointSizeF(8.25);
    setFont(small);

    // Containers before what lies in them; the order also stacks them.
    for (Widget* model : std::initializer_list<Widget*>{
             &w.frame, &w.lblPath, &w.txtPath, &w.cmdBrowse, &w.chkModCheck, &w.comModSelect,
             &w.lblModName, &w.lblCLP, &w.txtCLP, &w.lblSelectConfig, &w.lstConfig, &w.cmdEdit,
             &w.frameStatus, &w.lblStatus, &w.Temp, &w.lstFiles, &w.lstAVA})
        bind(*model);
    bindArray(w.Frame1);
    bindArray(w.Line1);
    bindArray(w.Label1);
    bindArray(w.Check1);
    bindArray(w.Option1);
    bindArray(w.Combo1);
    bindArray(w.Text1);

    m_fixedFocus = {viewOf(w.txtPath),      viewOf(w.cmdBrowse), viewOf(w.chkModCheck),
                    viewOf(w.comModSelect), viewOf(w.txtCLP),    viewOf(w.lstConfig),
                    viewOf(w.cmdEdit)};

    // Dialogs open over this view unless the host brought its own; Browse
    // starts in the game's folder.
    if (!control.hasFileDialog())
        control.setFileDialog(std::make_shared<QtFileDialog>(this, [this]() -> QString {
            if (!m_control)
                return {};
            const QString folder = m_control->qpGamePath();
            return folder.isEmpty() ? m_control->widgets().txtPath.text() : folder;
        }));
    if (!control.hasMessageBox())
        control.setMessageBox(std::make_shared<QtMessageBox>(this));

    connect(&control, &QObject::destroyed, this, [this] { controlDestroyed(); });
    describe();
}

ControlView::~ControlView()
{
    if (m_control)
        for (auto& disconnect : m_disconnectArrays)
            disconnect();
    m_bindings.clear();
}

QWidget* ControlView::viewOf(const Widget& model) const
{
    const auto found = m_bindings.find(&model);
    return found == m_bindings.end() ? nullptr : found->second->view();
}

QWidget* ControlView::containerView(const Container* container) const
{
    if (const auto* frame = dynamic_cast<const Frame*>(container))
        if (QWidget* view = viewOf(*frame))
            return view;
    return const_cast<ControlView*>(this);
}

void ControlView::bind(Widget& model)
{
    auto binding = WidgetBinding::create(model, containerView(model.container()), m_scale);
    // A frame is a drawn box: it stays below the widgets placed over it.
    if (model.kind() == WidgetKind::Frame)
        binding->view()->lower();
    binding->setObserver([this](Property property) {
        if (property != Property::Value && property != Property::Text &&
            property != Property::ListIndex)
            describeSoon();
    });
    m_bindings[&model] = std::move(binding);
    m_bindOrder.push_back(&model);
    describeSoon();
}

void ControlView::unbind(const Widget& model)
{
    m_bindings.erase(&model);
    std::erase(m_bindOrder, &model);
}

QList<QWidget*> ControlView::focusChain() const
{
    QList<QWidget*> chain(m_fixedFocus.begin(), m_fixedFocus.end());
    for (const Widget* model : m_bindOrder) {
        QWidget* view = viewOf(*model);
        if (view && view->focusPolicy() != Qt::NoFocus && !chain.contains(view))
            chain << view;
    }
    return chain;
}

void ControlView::describeSoon()
{
    if (m_describeQueued)
        return;
    m_describeQueued = true;
    QTimer::singleShot(0, this, [this] { describe(); });
}

void ControlView::describe()
{
    m_describeQueued = false;
    if (!m_control)
        return;
    std::vector<ShownWidget> shown;
    shown.reserve(m_bindOrder.size());
    for (const Widget* model : m_bindOrder)
        if (QWidget* view = viewOf(*model))
            shown.push_back({model, view});
    describeWidgets(shown);
    const QList<QWidget*> chain = focusChain();
    for (qsizetype i = 1; i < chain.size(); ++i)
        setTabOrder(chain.at(i - 1), chain.at(i));
}

template <typename T> void ControlView::bindArray(WidgetArray<T>& array)
{
    array.forEach([this](T& element) { bind(element); });
    const int loaded = array.loaded.connect([this, &array](int index) { bind(array.at(index)); });
    const int unloading =
        array.unloading.connect([this, &array](int index) { unbind(array.at(index)); });
    m_disconnectArrays.push_back([&array, loaded, unloading] {
        array.loaded.disconnect(loaded);
        array.unloading.disconnect(unloading);
    });
}

void ControlView::controlDestroyed()
{
    // The models are gone already: forget them without touching them.
    for (auto& [model, binding] : m_bindings)
        binding->detach();
    m_bindings.clear();
    m_bindOrder.clear();
    m_disconnectArrays.clear();
}

} // namespace qf
