#include "platform/LibraryFolder.h"

#include <QFile>
#include <QFileInfo>

#include <dlfcn.h>

namespace qf {

QString libraryFolder()
{
    // The address of a function of this library names the file it was loaded from.
    Dl_info info{};
    if (::dladdr(reinterpret_cast<const void*>(&libraryFolder), &info) == 0 || !info.dli_fname)
        return {};
    return QFileInfo(QFile::decodeName(info.dli_fname)).absolutePath();
}

} // namespace qf
