#pragma once

#include <QString>

namespace qf {

/// What the control sets on its open-file dialog before showing it.
struct FileDialogRequest {
    /// Pairs of description and pattern, separated by "|": "Applications (*.exe)|*.exe".
    QString filter;
    /// The file name the dialog starts with.
    QString fileName;
    QString title; ///< The dialog's title.
    /// 4 hides the read-only check box.
    int flags = 0;
    /// Cancel then ends the dialog with qf::CancelError instead of a normal return.
    bool cancelError = false;
};

/// What the user chose.
struct FileDialogResult {
    QString fileName; ///< The full path of the chosen file.
    int flags = 0;    ///< The request's flags; 0 after Cancel.
};

/// The modal open-file dialog. Hosts and tests may substitute their own; the
/// Qt view installs one that shows a QFileDialog.
class FileDialog {
public:
    virtual ~FileDialog() = default;

    /// Shows the dialog and waits for it.
    /// @param request Filter, initial name, title and flags.
    /// @return The chosen file; flags 0 after Cancel.
    /// @throws qf::CancelError Cancel, when the request asks for that.
    virtual FileDialogResult showOpen(const FileDialogRequest& request) = 0;
};

} // namespace qf
