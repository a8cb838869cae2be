#include "toolkit/ComboBox.h"

#include "platform/Errors.h"

namespace qf {

QString ComboBox::text() const
{
    return m_listIndex >= 0 ? m_items.at(m_listIndex) : QString();
}

void ComboBox::setText(const QString& text)
{
    const qsizetype found = m_items.indexOf(text);
    if (found < 0)
        throw InvalidValueError(
            QStringLiteral("\"%1\" is not in the list of %2").arg(text, name()));
    setListIndex(int(found));
}

void ComboBox::setListIndex(int index)
{
    if (index < -1 || index >= listCount())
        throw InvalidValueError(QStringLiteral("List index %1 is outside the list of %2 entries")
                                    .arg(index)
                                    .arg(listCount()));
    m_listIndex = index;
    changed.raise(Property::ListIndex);
    click.raise();
}

void ComboBox::clear()
{
    if (m_items.isEmpty() && m_listIndex == -1)
        return;
    m_items.clear();
    m_listIndex = -1;
    changed.raise(Property::List);
}

void ComboBox::addItem(const QString& item)
{
    m_items.append(item);
    changed.raise(Property::List);
}

} // namespace qf
