#pragma once

#include "platform/FileDialog.h"

#include <QPointer>
#include <QWidget>

#include <functional>

namespace qf {

/// The control's open-file dialog as a QFileDialog over the given window.
class QtFileDialog : public FileDialog {
public:
    /// @param parent The window the dialog is modal to.
    /// @param startFolder Where the dialog opens, asked each time (the game's
    ///        folder); an empty or missing folder leaves the choice to Qt.
    explicit QtFileDialog(QWidget* parent, std::function<QString()> startFolder = {})
        : m_parent(parent), m_startFolder(std::move(startFolder))
    {
    }

    /// Shows a QFileDialog and waits for it.
    /// @param request Filter, initial name, title and flags.
    /// @return The chosen file; flags 0 after Cancel.
    /// @throws qf::CancelError Cancel, when the request asks for that.
    FileDialogResult showOpen(const FileDialogRequest& request) override;

    /// "Applications (*.exe)|*.exe" as Qt's name filters, patterns matched
    /// without regard to case as on the system the names come from.
    /// @param filter Pairs of description and pattern. @return The filters.
    static QStringList nameFilters(const QString& filter);

private:
    QPointer<QWidget> m_parent;
    std::function<QString()> m_startFolder;
};

} // namespace qf
