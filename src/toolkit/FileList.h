#pragma once

#include "toolkit/Widget.h"

#include <QStringList>

namespace qf {

// Lists the files of one folder that match a fixed pattern, without regard to
// letter case, ordered by name without regard to case.
class FileList : public Widget {
public:
    FileList(QString name, Container* container, QString pattern);

    WidgetKind kind() const override { return WidgetKind::FileList; }

    const QString& pattern() const { return m_pattern; }
    // The folder as it was set; empty before the first.
    const QString& path() const { return m_path; }
    // Lists the folder anew and selects nothing. A folder that does not exist
    // throws qf::PathError and the list keeps its old folder and files.
    void setPath(const QString& folder);
    int listCount() const { return int(m_files.size()); }
    const QStringList& files() const { return m_files; }
    int listIndex() const { return m_listIndex; }
    // -1 selects nothing.
    void setListIndex(int index);
    // Name of the selected file; empty when none is selected.
    QString fileName() const;

private:
    QString m_pattern;
    QString m_path;
    QStringList m_files;
    int m_listIndex = -1;
};

} // namespace qf
