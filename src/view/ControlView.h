#pragma once

#include "toolkit/WidgetArray.h"
#include "view/WidgetBinding.h"

#include <QPointer>
#include <QWidget>

#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

class qForms;

namespace qf {

class Container;

/// The control on screen: one QWidget per widget model of a qForms instance,
/// fixed widgets and loaded array elements alike, kept in step with the models.
/// Destroy the view before the control, or let the control go first: both work.
class ControlView : public QWidget {
    Q_OBJECT
public:
    /// Shows the control's widgets and follows every later change of them.
    /// Installs a qf::QtFileDialog and a qf::QtMessageBox over itself unless
    /// the host set its own.
    /// @param control The control shown. @param parent The page.
    explicit ControlView(qForms& control, QWidget* parent = nullptr);
    ~ControlView() override;

    /// @param model A widget model of the control.
    /// @return The QWidget that shows it; nullptr for a model without one.
    QWidget* viewOf(const Widget& model) const;
    /// The control's design size (6735 x 4215 twips) at the screen's DPI: what
    /// a layout gives it, and the least, since its widgets sit where the game
    /// data file put them.
    /// @return That size in pixels.
    QSize sizeHint() const override;
    /// @return sizeHint(): the view shows nothing whole in less.
    QSize minimumSizeHint() const override;
    /// @return The screen's twips-to-pixels scale the view was made with.
    const TwipScale& scale() const { return m_scale; }
    /// The widgets that take the keyboard, in the order Tab visits them: the
    /// fixed widgets in their documented order, then the options in the order
    /// of their entries.
    /// @return Those widgets.
    QList<QWidget*> focusChain() const;
    /// Names the widgets for screen readers and gives cut captions a tooltip;
    /// runs by itself soon after the captions or the widgets change.
    void describe();

private:
    void bind(Widget& model);
    void unbind(const Widget& model);
    template <typename T> void bindArray(WidgetArray<T>& array);
    QWidget* containerView(const Container* container) const;
    QWidget* framesLayer(QWidget* parent);
    void controlDestroyed();
    void takeDownPending();
    static void takeDown(std::vector<std::unique_ptr<WidgetBinding>> bindings);
    void describeSoon();
    void compactBindOrder();

    QPointer<qForms> m_control;
    TwipScale m_scale;
    std::unordered_map<const Widget*, std::unique_ptr<WidgetBinding>> m_bindings;
    std::vector<std::function<void()>> m_disconnectArrays;
    // Per container, the layer below its other widgets that holds its loaded frames.
    std::unordered_map<const QWidget*, QPointer<QWidget>> m_frameLayers;
    // Bindings of elements unloaded in a running UnloadBatch.
    std::vector<std::unique_ptr<WidgetBinding>> m_pending;
    int m_batchEnded = 0;
    // Every bound model in the order it was bound: entries in their order.
    std::vector<const Widget*> m_bindOrder;
    std::vector<QWidget*> m_fixedFocus;
    bool m_describeQueued = false;
};

} // namespace qf
