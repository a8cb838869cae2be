#include "control/qForms.h"
#include "launch/Launch.h"
// The default services a host may also use directly.
#include "platform/DesktopProgramStarter.h"
#include "platform/IniFileSettingsStore.h"
#include "platform/IniLanguageTextProvider.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstdio>

// Builds a game page from a one-entry game data file and prints what the
// control shows: the captions must come from the library's own texts.
int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QTemporaryDir host;
    QDir(host.path()).mkpath(QStringLiteral("Data"));
    QFile qgd(host.filePath(QStringLiteral("Data/game.qgd")));
    if (!qgd.open(QIODevice::WriteOnly))
        return 1;
    qgd.write("[Custom Controls]\nCount=1\nControl1Type=checkbox\nControl1Caption=Sound\n"
              "Control1ControlKey=Sound\n[Launch]\nSound[0]=-nosound\n");
    qgd.close();

    qForms control;
    control.setAppPath(host.path());
    control.setQpGameName(QStringLiteral("Consumer Game"));
    control.setQpQGD(QStringLiteral("game.qgd"));
    control.setQpLanguageIndex(1);
    control.qInitCustomControls();
    control.widgets().txtPath.setText(host.filePath(QStringLiteral("missing")));
    const QString status = control.qpGameStatus();
    std::printf("%s|%s\n", qPrintable(status), qPrintable(control.qpGameStatusColour()));
    if (status != QStringLiteral(" Consumer Game wurde in diesem Ordner nicht gefunden."))
        return 1;
    if (control.qpGameStatusColour() != QStringLiteral("red"))
        return 1;
    // The option values and the launch they give, through the installed headers.
    if (control.optionValues().value(QStringLiteral("Sound")) != QStringLiteral("0"))
        return 1;
    const qf::launch::LaunchDescription launch =
        qf::launch::describeLaunch(control, {QString(), QStringLiteral("game")});
    return launch.arguments == QStringList{QStringLiteral("-nosound")} ? 0 : 1;
}
