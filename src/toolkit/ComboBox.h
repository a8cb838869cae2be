#pragma once

#include "toolkit/Widget.h"

#include <QStringList>

namespace qf {

// A drop-down list: only listed entries can be chosen.
class ComboBox : public Widget {
public:
    using Widget::Widget;

    WidgetKind kind() const override { return WidgetKind::ComboBox; }

    // The selected entry's text; empty when none is selected.
    QString text() const;
    // Selects the first entry equal to the text; a text that is not listed is
    // rejected and the selection stays.
    void setText(const QString& text);
    int listIndex() const { return m_listIndex; }
    // -1 selects nothing. Raises Click every time it is set, changed or not.
    void setListIndex(int index);
    int listCount() const { return int(m_items.size()); }
    const QStringList& items() const { return m_items; }
    bool isEnabled() const { return m_enabled; }
    void setEnabled(bool enabled) { assign(m_enabled, enabled, Property::Enabled); }

    void clear();
    void addItem(const QString& item);

    Event<> click;

private:
    QStringList m_items;
    int m_listIndex = -1;
    bool m_enabled = true;
};

} // namespace qf
