#pragma once

#include "toolkit/Widget.h"

#include <QStringList>

namespace qf {

/// A drop-down list: only listed entries can be chosen.
class ComboBox : public Widget {
public:
    using Widget::Widget;

    /// @return WidgetKind::ComboBox.
    WidgetKind kind() const override { return WidgetKind::ComboBox; }

    /// @return The selected entry's text; empty when none is selected.
    QString text() const;
    /// Selects the first entry equal to the text, as setListIndex() does.
    /// @param text The entry's text.
    /// @throws qf::InvalidValueError The text is not listed; the selection stays.
    void setText(const QString& text);
    /// @return The selected entry's index; -1 for none.
    int listIndex() const { return m_listIndex; }
    /// Selects an entry. Raises #click every time it is set, changed or not.
    /// @param index 0 to listCount() - 1; -1 selects nothing.
    /// @throws qf::InvalidValueError The index is outside the list.
    void setListIndex(int index);
    /// @return The number of entries.
    int listCount() const { return int(m_items.size()); }
    /// @return The entries in list order.
    const QStringList& items() const { return m_items; }
    /// @return Whether the user can choose.
    bool isEnabled() const { return m_enabled; }
    /// Lets the user choose or not. @param enabled True to let them.
    void setEnabled(bool enabled) { assign(m_enabled, enabled, Property::Enabled); }

    /// Removes every entry and selects nothing; raises no #click.
    void clear();
    /// Appends an entry; the selection stays. @param item Its text.
    void addItem(const QString& item);

    /// Raised by every setListIndex() (the user's choice included).
    Event<> click;

private:
    QStringList m_items;
    int m_listIndex = -1;
    bool m_enabled = true;
};

} // namespace qf
