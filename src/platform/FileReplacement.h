#pragma once

#include <QByteArrayView>
#include <QString>

struct stat;

namespace qf {

// Replaces the file's contents with bytes so that, whatever happens meanwhile
// (a full disk, a killed process, a power loss), the file holds either the old
// bytes or all the new ones: a temporary file beside it is written, flushed to
// the disk, renamed over it, and the rename flushed with the folder. A file
// that is a symbolic link has its target replaced; the permissions of the old
// file are kept. Returns 0, or the errno of the step that failed; any step
// before the rename leaves the old file as it was. written, when given, gets
// the status of the new file as written, which the rename does not change.
int replaceFileContents(const QString& path, QByteArrayView bytes, struct stat* written = nullptr);

// Removes the temporary files that replacements of the file left when their
// process was killed before the rename: "<name>.qforms-save-<random>.tmp"
// beside it, a name nothing else uses. Call it only where no other
// replacement of the file can be running, under the file's lock. Returns how
// many it removed.
int removeStaleReplacements(const QString& path);

} // namespace qf
