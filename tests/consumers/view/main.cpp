#include "control/qForms.h"
#include "view/ControlView.h"
#include "view/QtFileDialog.h"
#include "view/QtMessageBox.h"

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QTemporaryDir>

#include <cstdio>

// Shows a one-entry game page and checks that its widgets and captions are on
// screen.
int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QTemporaryDir host;
    QDir(host.path()).mkpath(QStringLiteral("Data"));
    QFile qgd(host.filePath(QStringLiteral("Data/game.qgd")));
    if (!qgd.open(QIODevice::WriteOnly))
        return 1;
    qgd.write("[Custom Controls]\nCount=1\nControl1Type=checkbox\nControl1Caption=Sound\n"
              "Control1Location=120x120\nControl1Size=255x2400\nControl1ControlKey=Sound\n");
    qgd.close();

    // The README's embedding example, with no language files in the host.
    QWidget page;
    auto* control = new qForms(&page);
    control->setAppPath(host.path());
    control->setQpGameName(QStringLiteral("Consumer Game"));
    control->setQpQGD(QStringLiteral("game.qgd"));
    control->setQpGameApplication(QStringLiteral("game.exe"));
    control->setQpGameBase(QStringLiteral("base"));
    control->setQpVersionType(QStringLiteral("2"));
    control->setQpUseConfigs(true);
    control->setQpLanguageIndex(0);
    auto* view = new qf::ControlView(*control, &page);
    control->qInitCustomControls();
    control->qLoadSettings();
    control->qSaveSettings();

    bool sound = false;
    for (const QCheckBox* box : view->findChildren<QCheckBox*>())
        sound |= box->text() == QStringLiteral("sound");
    bool folder = false;
    for (const QLabel* label : view->findChildren<QLabel*>()) {
        std::printf("%s\n", qPrintable(label->text()));
        folder |= label->text() == QStringLiteral("Consumer Game: folder or program");
    }
    return sound && folder ? 0 : 1;
}
