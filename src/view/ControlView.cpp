#include "view/ControlView.h"

#include "control/qForms.h"
#include "toolkit/UnloadBatch.h"
#include "view/QtFileDialog.h"
#include "view/QtMessageBox.h"
#include "view/WidgetDescriptions.h"

#include <QTimer>

#include <QHash>
#include <QSet>

namespace qf {

ControlView::ControlView(qForms& control, QWidget* parent)
    : QWidget(parent), m_control(&control), m_scale(logicalDpiX())
{
    ControlWidgets& w = control.widgets();
    setFixedSize(sizeHint());
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
    m_batchEnded = UnloadBatch::ended().connect([this] { takeDownPending(); });
    describe();
}

ControlView::~ControlView()
{
    UnloadBatch::ended().disconnect(m_batchEnded);
    if (m_control)
        for (auto& disconnect : m_disconnectArrays)
            disconnect();
    std::vector<std::unique_ptr<WidgetBinding>> all = std::move(m_pending);
    for (auto& [model, binding] : m_bindings)
        all.push_back(std::move(binding));
    m_bindings.clear();
    takeDown(std::move(all));
}

QSize ControlView::sizeHint() const
{
    return {m_scale.pixels(ControlWidgets::ClientWidth),
            m_scale.pixels(ControlWidgets::ClientHeight)};
}

QSize ControlView::minimumSizeHint() const
{
    return sizeHint();
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
    QWidget* parent = containerView(model.container());
    // A frame is a drawn box: it stays below the widgets placed over it.
    const bool frame = model.kind() == WidgetKind::Frame;
    const bool loadedFrame = frame && model.index() > 0;
    auto binding =
        WidgetBinding::create(model, loadedFrame ? framesLayer(parent) : parent, m_scale);
    if (frame && !loadedFrame)
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

QWidget* ControlView::framesLayer(QWidget* parent)
{
    // Loaded frames go into a layer of their own below everything else in
    // their container rather than each being lowered through all its siblings.
    QPointer<QWidget>& layer = m_frameLayers[parent];
    if (!layer) {
        layer = new QWidget(parent);
        layer->setObjectName(QStringLiteral("frames"));
        layer->setGeometry(0, 0, QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
        layer->lower();
        layer->show();
    }
    return layer;
}

void ControlView::unbind(const Widget& model)
{
    const auto found = m_bindings.find(&model);
    if (found == m_bindings.end())
        return;
    if (UnloadBatch::active()) {
        found->second->stopListening();
        m_pending.push_back(std::move(found->second));
    }
    m_bindings.erase(found);
}

void ControlView::takeDownPending()
{
    takeDown(std::move(m_pending));
    m_pending.clear();
}

void ControlView::takeDown(std::vector<std::unique_ptr<WidgetBinding>> bindings)
{
    // Qt finds a widget in its parent's child list from the front and closes
    // the gap by moving what follows, so only taking the first child is cheap.
    // The widgets go in the order of that list, after the few that stay were
    // raised (in their order, so their stacking is kept) behind them: taking
    // down n widgets then costs n steps, not n squared.
    QHash<const QObject*, std::unique_ptr<WidgetBinding>*> byView;
    byView.reserve(qsizetype(bindings.size()));
    QSet<const QObject*> seenParents;
    std::vector<QPointer<QObject>> parents;
    for (auto& binding : bindings) {
        QWidget* view = binding->view();
        if (!view)
            continue;
        byView.insert(view, &binding);
        if (!seenParents.contains(view->parent())) {
            seenParents.insert(view->parent());
            parents.emplace_back(view->parent());
        }
    }
    for (const QPointer<QObject>& parent : parents) {
        if (!parent)
            continue; // taken down with its own parent, children and all
        const QObjectList children = parent->children();
        std::vector<QWidget*> staying;
        qsizetype going = 0;
        for (QObject* child : children) {
            if (byView.contains(child))
                ++going;
            else if (child->isWidgetType())
                staying.push_back(static_cast<QWidget*>(child));
        }
        if (qsizetype(staying.size()) < going)
            for (QWidget* widget : staying)
                widget->raise();
        for (const QObject* child : children) {
            const auto found = byView.constFind(child);
            if (found != byView.cend())
                (*found)->reset();
        }
    }
    // What is left lost its widget with an ancestor's.
    bindings.clear();
}

QList<QWidget*> ControlView::focusChain() const
{
    QList<QWidget*> chain(m_fixedFocus.begin(), m_fixedFocus.end());
    QSet<const QWidget*> inChain(chain.begin(), chain.end());
    for (const Widget* model : m_bindOrder) {
        // Models unbound since the last compaction are gone: look them up, never touch them.
        const auto found = m_bindings.find(model);
        QWidget* view = found == m_bindings.end() ? nullptr : found->second->view();
        if (view && view->focusPolicy() != Qt::NoFocus && !inChain.contains(view)) {
            inChain.insert(view);
            chain << view;
        }
    }
    return chain;
}

// Unbinding leaves its model in m_bindOrder, since erasing there one at a
// time would make clearing many widgets quadratic; this drops them at once.
void ControlView::compactBindOrder()
{
    QSet<const Widget*> kept;
    std::erase_if(m_bindOrder, [&](const Widget* model) {
        if (!m_bindings.contains(model) || kept.contains(model))
            return true;
        kept.insert(model);
        return false;
    });
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
    compactBindOrder();
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
    std::vector<std::unique_ptr<WidgetBinding>> all = std::move(m_pending);
    m_pending.clear();
    for (auto& [model, binding] : m_bindings) {
        binding->detach();
        all.push_back(std::move(binding));
    }
    m_bindings.clear();
    m_bindOrder.clear();
    m_disconnectArrays.clear();
    takeDown(std::move(all));
}

} // namespace qf
