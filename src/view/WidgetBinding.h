#pragma once

#include "toolkit/Widget.h"
#include "view/Twips.h"

#include <QPointer>
#include <QWidget>

#include <functional>
#include <memory>

namespace qf {

/// Mirrors one widget model in one QWidget: every model change is shown at
/// once, and the user's input goes back through the model's setters, which
/// raise the model's events. No logic of its own.
class WidgetBinding {
public:
    /// Makes the QWidget for a model and binds it.
    /// @param model The model. @param parent The QWidget of its container.
    /// @param scale Twips to pixels. @return The binding, which owns the QWidget.
    static std::unique_ptr<WidgetBinding> create(Widget& model, QWidget* parent, TwipScale scale);

    WidgetBinding(const WidgetBinding&) = delete;
    WidgetBinding& operator=(const WidgetBinding&) = delete;
    virtual ~WidgetBinding();

    /// @return The QWidget; null once Qt destroyed it.
    QWidget* view() const { return m_view; }
    /// @return The model.
    Widget& model() const { return m_model; }
    /// The model is going away on its own; stop listening without touching it.
    void detach() { m_attached = false; }
    /// Stops listening to the model while it is still there, so that the
    /// binding may outlive it.
    void stopListening();
    /// Told after the view showed a changed property of the model.
    /// @param observer Called with the property.
    void setObserver(std::function<void(Property)> observer) { m_observer = std::move(observer); }

protected:
    /// @param model The model. @param view Its QWidget. @param scale Twips to pixels.
    WidgetBinding(Widget& model, QWidget* view, TwipScale scale);

    /// Shows the model's current value of one property.
    /// @param property The property.
    virtual void show(Property property);
    /// Shows every property of the model.
    void showAll();
    /// @return Twips to pixels.
    const TwipScale& scale() const { return m_scale; }
    /// Runs the user's input; what the model refuses is reported, and the view
    /// is set back to what the model holds.
    /// @param input Calls the model's setters.
    void fromUser(const std::function<void()>& input);

private:
    Widget& m_model;
    QPointer<QWidget> m_view;
    TwipScale m_scale;
    std::function<void(Property)> m_observer;
    int m_connection = 0;
    bool m_attached = true;
};

} // namespace qf
