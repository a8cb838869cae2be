#pragma once

#include "platform/MessageBox.h"

#include <QPointer>
#include <QWidget>

namespace qf {

/// The control's messages as a QMessageBox over the given window.
class QtMessageBox : public MessageBox {
public:
    /// @param parent The window the message is modal to.
    explicit QtMessageBox(QWidget* parent) : m_parent(parent) {}

    /// Shows a QMessageBox and waits for it.
    /// @param text The message. @param style Buttons plus icon, as MessageBox::show().
    /// @param title The window's title.
    void show(const QString& text, int style, const QString& title) override;

private:
    QPointer<QWidget> m_parent;
};

} // namespace qf
