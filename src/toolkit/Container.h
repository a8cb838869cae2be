#pragma once

#include <QString>

namespace qf {

class OptionButton;

// Something widgets lie in: the control's client area or a frame. Option
// buttons of one container form one group.
class Container {
public:
    explicit Container(QString containerName) : m_containerName(std::move(containerName)) {}
    Container(const Container& other) : m_containerName(other.m_containerName) {}
    Container& operator=(const Container&) = delete;
    virtual ~Container() = default;

    const QString& containerName() const { return m_containerName; }
    OptionButton* selectedOption() const { return m_selectedOption; }

private:
    friend class OptionButton;
    QString m_containerName;
    OptionButton* m_selectedOption = nullptr;
};

} // namespace qf
