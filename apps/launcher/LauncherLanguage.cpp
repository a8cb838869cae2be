#include "LauncherLanguage.h"

#include <QCoreApplication>
#include <QTranslator>

const QList<LauncherLanguage>& launcherLanguages()
{
    static const QList<LauncherLanguage> languages{
        {0, QStringLiteral("English"), QString()},
        {1, QStringLiteral("Deutsch"), QStringLiteral("de")},
    };
    return languages;
}

bool isLauncherLanguage(int index)
{
    for (const LauncherLanguage& language : launcherLanguages())
        if (language.index == index)
            return true;
    return false;
}

void applyLauncherLanguage(int index)
{
    static QTranslator translator;
    static int applied = 0;
    if (index == applied)
        return;
    QCoreApplication::removeTranslator(&translator);
    applied = index;
    for (const LauncherLanguage& language : launcherLanguages()) {
        if (language.index == index && !language.translation.isEmpty() &&
            translator.load(QStringLiteral(":/i18n/qforms-launcher_") + language.translation))
            QCoreApplication::installTranslator(&translator);
    }
}
