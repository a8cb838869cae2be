#pragma once

#include "toolkit/Widget.h"

namespace qf {

/// A one-line text the user can edit.
class TextBox : public Widget {
public:
    using Widget::Widget;

    /// @return WidgetKind::TextBox.
    WidgetKind kind() const override { return WidgetKind::TextBox; }

    /// @return The text.
    const QString& text() const { return m_text; }
    /// Sets the text; raises #change when it differs. @param text The text.
    void setText(const QString& text);
    /// @return Whether the user cannot edit it.
    bool isLocked() const { return m_locked; }
    /// Keeps the user from editing it, or not. @param locked True to lock.
    void setLocked(bool locked);

    /// Raised when the text changes, whether the user typed it or code set it.
    Event<> change;

private:
    QString m_text;
    bool m_locked = false;
};

} // namespace qf
