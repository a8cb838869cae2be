#pragma once

#include "platform/FileDialog.h"

#include <QPointer>
#include <QWidget>

namespace qf {

// The control's open-file dialog as a QFileDialog over the given window.
class QtFileDialog : public FileDialog {
public:
    explicit QtFileDialog(QWidget* parent) : m_parent(parent) {}

    FileDialogResult showOpen(const FileDialogRequest& request) override;

    // "Applications (*.exe)|*.exe" as Qt's name filters, patterns matched
    // without regard to case as on the system the names come from.
    static QStringList nameFilters(const QString& filter);

private:
    QPointer<QWidget> m_parent;
};

} // namespace qf
