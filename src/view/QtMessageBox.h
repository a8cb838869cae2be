#pragma once

#include "platform/MessageBox.h"

#include <QPointer>
#include <QWidget>

namespace qf {

// The control's messages as a QMessageBox over the given window.
class QtMessageBox : public MessageBox {
public:
    explicit QtMessageBox(QWidget* parent) : m_parent(parent) {}

    void show(const QString& text, int style, const QString& title) override;

private:
    QPointer<QWidget> m_parent;
};

} // namespace qf
