#pragma once

#include "toolkit/Widget.h"

#include <QStringList>

namespace qf {

/// Lists the files of one folder that match a fixed pattern, without regard to
/// letter case, ordered by name without regard to case.
class FileList : public Widget {
public:
    /// An empty list.
    /// @param name As for Widget. @param container As for Widget.
    /// @param pattern The files listed, e.g. "*.cfg".
    FileList(QString name, Container* container, QString pattern);

    /// @return WidgetKind::FileList.
    WidgetKind kind() const override { return WidgetKind::FileList; }

    /// @return The pattern given at construction.
    const QString& pattern() const { return m_pattern; }
    /// @return The folder as it was set; empty before the first.
    const QString& path() const { return m_path; }
    /// Lists the folder anew and selects nothing.
    /// @param folder The folder, "\\" or "/" separated, letter case resolved.
    /// @throws qf::PathError The folder does not exist; the list keeps its old
    ///         folder and files.
    void setPath(const QString& folder);
    /// @return The number of files listed.
    int listCount() const { return int(m_files.size()); }
    /// @return The names of the files listed, in list order.
    const QStringList& files() const { return m_files; }
    /// @return The selected file's index; -1 for none.
    int listIndex() const { return m_listIndex; }
    /// Selects a file. @param index 0 to listCount() - 1; -1 selects nothing.
    /// @throws qf::InvalidValueError The index is outside the list.
    void setListIndex(int index);
    /// @return Name of the selected file; empty when none is selected.
    QString fileName() const;

private:
    QString m_pattern;
    QString m_path;
    QStringList m_files;
    int m_listIndex = -1;
};

} // namespace qf
