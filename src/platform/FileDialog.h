#pragma once

#include <QString>

namespace qf {

// What the control sets on its open-file dialog before showing it.
struct FileDialogRequest {
    // Pairs of description and pattern, separated by "|": "Applications (*.exe)|*.exe".
    QString filter;
    // The initial file name; after showing, the full path of the chosen file.
    QString fileName;
    QString title;
    // 4 hides the read-only check box.
    int flags = 0;
    // Cancel then ends the dialog with qf::CancelError instead of a normal return.
    bool cancelError = false;
};

struct FileDialogResult {
    QString fileName;
    int flags = 0;
};

// The modal open-file dialog. Hosts and tests may substitute their own; the
// Qt view installs one that shows a QFileDialog.
class FileDialog {
public:
    virtual ~FileDialog() = default;

    // Shows the dialog and waits for it. Cancel throws qf::CancelError when the
    // request asks for that, else returns with flags 0.
    virtual FileDialogResult showOpen(const FileDialogRequest& request) = 0;
};

} // namespace qf
