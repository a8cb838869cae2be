#pragma once

#include "platform/Errors.h"
#include "toolkit/Event.h"

#include <QString>

#include <memory>
#include <vector>

namespace qf {

/// Widgets of one kind under one name. Element 0 is the template from the
/// layout; loading element n makes a hidden copy of it (container, position,
/// size, look). Indexes are 16-bit, so at most 32767.
/// @tparam T The widget class.
template <typename T> class WidgetArray {
public:
    /// The highest index an element can have.
    static constexpr int MaxIndex = 32767;

    /// An array of the template alone. @param templateWidget Element 0.
    explicit WidgetArray(std::unique_ptr<T> templateWidget)
    {
        templateWidget->m_index = 0;
        connectClick(*templateWidget, 0);
        m_elements.push_back(std::move(templateWidget));
        m_count = 1;
    }
    WidgetArray(const WidgetArray&) = delete;
    WidgetArray& operator=(const WidgetArray&) = delete;

    ~WidgetArray()
    {
        // Later elements first, so no element outlives the template it was copied from.
        while (!m_elements.empty())
            m_elements.pop_back();
    }

    /// @return The template's name, which every element shares.
    const QString& name() const { return m_elements.front()->name(); }
    /// @return Element 0.
    T& templateWidget() const { return *m_elements.front(); }

    /// @param index Any number. @return Whether that element is loaded.
    bool exists(int index) const
    {
        return index >= 0 && index < int(m_elements.size()) && m_elements[index];
    }

    /// @param index A loaded element's index. @return The element.
    /// @throws qf::MissingElementError No element of that index is loaded.
    T& at(int index) const
    {
        if (!exists(index))
            throw MissingElementError(
                QStringLiteral("%1(%2) does not exist").arg(name()).arg(index));
        return *m_elements[index];
    }
    /// at(). @param index A loaded element's index. @return The element.
    T& operator[](int index) const { return at(index); }

    /// Loads a hidden copy of the template and raises #loaded.
    /// @param index 1 to MaxIndex. @return The new element.
    /// @throws qf::InvalidValueError The index is outside 1 to MaxIndex.
    /// @throws qf::ElementExistsError The element is loaded already.
    T& load(int index)
    {
        if (index < 1 || index > MaxIndex)
            throw InvalidValueError(QStringLiteral("%1(%2): an element index is 1 to %3")
                                        .arg(name())
                                        .arg(index)
                                        .arg(MaxIndex));
        if (exists(index))
            throw ElementExistsError(
                QStringLiteral("%1(%2) is loaded already").arg(name()).arg(index));
        if (index >= int(m_elements.size()))
            m_elements.resize(index + 1);
        auto element = std::make_unique<T>(templateWidget());
        element->m_index = index;
        element->m_visible = false;
        T& added = *element;
        m_elements[index] = std::move(element);
        ++m_count;
        connectClick(added, index);
        loaded.raise(index);
        return added;
    }

    /// Raises #unloading, then destroys the element.
    /// @param index A loaded element other than 0.
    /// @throws qf::InvalidValueError The index is 0.
    /// @throws qf::MissingElementError No element of that index is loaded.
    void unload(int index)
    {
        if (index == 0)
            throw InvalidValueError(
                QStringLiteral("The template %1(0) cannot be unloaded").arg(name()));
        at(index);
        unloading.raise(index);
        m_elements[index].reset();
        --m_count;
        while (m_elements.size() > 1 && !m_elements.back())
            m_elements.pop_back();
    }

    /// @return Number of elements, the template included.
    int count() const { return m_count; }
    /// @return Highest index in use.
    int upperBound() const { return int(m_elements.size()) - 1; }

    /// Calls a function for each loaded element, the template first, by index.
    /// @param visit Takes a T&.
    template <typename F> void forEach(F&& visit) const
    {
        for (const auto& element : m_elements)
            if (element)
                visit(*element);
    }

    /// Raised after element n was loaded, with n.
    Event<int> loaded;
    /// Raised before element n is unloaded, with n.
    Event<int> unloading;
    /// Click of a loaded element, with its index (check boxes, option buttons, combos).
    Event<int> click;

private:
    void connectClick(T& element, int index)
    {
        if constexpr (requires { element.click; })
            element.click.connect([this, index] { click.raise(index); });
    }

    std::vector<std::unique_ptr<T>> m_elements;
    int m_count = 0;
};

} // namespace qf
