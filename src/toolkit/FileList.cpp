#include "toolkit/FileList.h"

#include "platform/Errors.h"
#include "platform/Paths.h"

namespace qf {

FileList::FileList(QString name, Container* container, QString pattern)
    : Widget(std::move(name), container), m_pattern(std::move(pattern))
{
}

void FileList::setPath(const QString& folder)
{
    QStringList files = paths::listFiles(folder, m_pattern);
    m_path = folder;
    m_files = std::move(files);
    m_listIndex = -1;
    changed.raise(Property::Path);
    changed.raise(Property::List);
}

void FileList::setListIndex(int index)
{
    if (index < -1 || index >= listCount())
        throw InvalidValueError(QStringLiteral("List index %1 is outside the list of %2 files")
                                    .arg(index)
                                    .arg(listCount()));
    assign(m_listIndex, index, Property::ListIndex);
}

QString FileList::fileName() const
{
    return m_listIndex >= 0 ? m_files.at(m_listIndex) : QString();
}

} // namespace qf
