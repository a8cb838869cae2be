#pragma once

#include "toolkit/Widget.h"

namespace qf {

class TextBox : public Widget {
public:
    using Widget::Widget;

    WidgetKind kind() const override { return WidgetKind::TextBox; }

    const QString& text() const { return m_text; }
    void setText(const QString& text);
    bool isLocked() const { return m_locked; }
    void setLocked(bool locked);

    // Raised when the text changes, whether the user typed it or code set it.
    Event<> change;

private:
    QString m_text;
    bool m_locked = false;
};

} // namespace qf
