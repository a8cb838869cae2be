#include "view/QtFileDialog.h"

#include "platform/Errors.h"
#include "platform/Paths.h"

#include <QFileDialog>
#include <QFileInfo>

namespace qf {

namespace {

// "*.exe" as "*.[eE][xX][eE]": QFileDialog matches case-sensitively here.
QString anyCase(const QString& pattern)
{
    QString result;
    for (const QChar c : pattern) {
        if (c.isLetter() && c.toLower() != c.toUpper())
            result += QLatin1Char('[') + c.toLower() + c.toUpper() + QLatin1Char(']');
        else
            result += c;
    }
    return result;
}

} // namespace

QStringList QtFileDialog::nameFilters(const QString& filter)
{
    const QStringList parts = filter.split(QLatin1Char('|'));
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QStringList patterns = parts.at(i + 1).split(QLatin1Char(';'), Qt::SkipEmptyParts);
        for (QString& pattern : patterns)
            pattern = anyCase(pattern.trimmed());
        filters << parts.at(i) + QStringLiteral(" (") + patterns.join(QLatin1Char(' ')) +
                       QLatin1Char(')');
    }
    return filters;
}

FileDialogResult QtFileDialog::showOpen(const FileDialogRequest& request)
{
    QFileDialog dialog(m_parent, request.title);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setNameFilters(nameFilters(request.filter));
    if (m_startFolder) {
        // A program path in the folder box stands for its folder.
        QString folder = paths::resolve(m_startFolder());
        if (paths::isFile(folder))
            folder = QFileInfo(folder).path();
        if (!folder.isEmpty() && paths::isDirectory(folder))
            dialog.setDirectory(folder);
    }
    dialog.selectFile(request.fileName);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        if (request.cancelError)
            throw CancelError(QStringLiteral("The file dialog was cancelled"));
        return {request.fileName, 0};
    }
    return {dialog.selectedFiles().constFirst(), request.flags};
}

} // namespace qf
