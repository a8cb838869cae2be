#pragma once

#include "platform/FileDialog.h"

#include <QPointer>
#include <QWidget>

#include <functional>

namespace qf {

// The control's open-file dialog as a QFileDialog over the given window.
class QtFileDialog : public FileDialog {
public:
    // startFolder: where the dialog opens, asked each time (the game's folder);
    // an empty or missing folder leaves the choice to Qt.
    explicit QtFileDialog(QWidget* parent, std::function<QString()> startFolder = {})
        : m_parent(parent), m_startFolder(std::move(startFolder))
    {
    }

    FileDialogResult showOpen(const FileDialogRequest& request) override;

    // "Applications (*.exe)|*.exe" as Qt's name filters, patterns matched
    // without regard to case as on the system the names come from.
    static QStringList nameFilters(const QString& filter);

private:
    QPointer<QWidget> m_parent;
    std::function<QString()> m_startFolder;
};

} // namespace qf
