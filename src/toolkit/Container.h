#pragma once

#include <QString>

namespace qf {

class OptionButton;

/// Something widgets lie in: the control's client area or a frame. Option
/// buttons of one container form one group.
class Container {
public:
    /// An empty container. @param containerName Its name.
    explicit Container(QString containerName) : m_containerName(std::move(containerName)) {}
    /// A container of the same name with no option selected. @param other The one copied.
    Container(const Container& other) : m_containerName(other.m_containerName) {}
    Container& operator=(const Container&) = delete;
    virtual ~Container() = default;

    /// @return The name given at construction.
    const QString& containerName() const { return m_containerName; }
    /// @return The selected option button of the group; null for none.
    OptionButton* selectedOption() const { return m_selectedOption; }

private:
    friend class OptionButton;
    QString m_containerName;
    OptionButton* m_selectedOption = nullptr;
};

} // namespace qf
