#include "dialogs/ApplicationNames.h"

#include <QStringList>

namespace qf {

namespace {

// The part after the last "\", or without one after the last "/".
QString fileNameOf(const QString& name)
{
    const qsizetype backslash = name.lastIndexOf(u'\\');
    if (backslash >= 0)
        return name.mid(backslash + 1);
    return name.mid(name.lastIndexOf(u'/') + 1);
}

} // namespace

QString applicationNameList(const QString& gameApplication)
{
    const QLatin1String separator(";;");
    if (!gameApplication.contains(separator))
        return fileNameOf(gameApplication);

    // Only names closed by ";;" count; text after the last one is not a name.
    QStringList names = gameApplication.split(separator);
    names.removeLast();
    QString list;
    for (const QString& name : names) {
        // Empty names before the first real one add nothing.
        if (list.isEmpty())
            list = fileNameOf(name);
        else
            list += QStringLiteral("; ") + fileNameOf(name);
    }
    return list;
}

} // namespace qf
