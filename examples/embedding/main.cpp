// A launcher page that embeds the control for one game.
// Run: qforms-embedding-example HOST_FOLDER [--screenshot FILE]
#include "control/qForms.h"
#include "view/ControlView.h"

#include <QApplication>
#include <QDebug>
#include <QDialogButtonBox>
#include <QTimer>
#include <QVBoxLayout>

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QWidget page;
    auto* layout = new QVBoxLayout(&page);

    auto* control = new qForms(&page);             // one per game page
    control->setAppPath(app.arguments().value(1)); // has Data/ below it
    control->setQpGameName("Emberfall");           // first: captions and config list use it
    control->setQpQGD("emberfall.qgd");            // Data/emberfall.qgd
    control->setQpGameApplication("emberfall.exe");
    control->setQpGameBase("base");
    control->setQpVersionType("2"); // version from the program's resource
    control->setQpUseConfigs(true);
    control->setQpLanguageIndex(0);                    // last: captions in this language
    auto* view = new qf::ControlView(*control, &page); // the widgets on screen
    layout->addWidget(view);                           // the view asks for its design size

    QObject::connect(control, &qForms::StatusChange, [control] {
        qInfo() << control->qpGameStatusColour() << control->qpGameStatus();
    });
    QObject::connect(control, &qForms::settingsSaveFailed, [](const QString& message) {
        qWarning() << message; // show it to the player
    });
    control->qInitCustomControls();
    control->qLoadSettings(); // the stored folder: runs the game check

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    layout->addWidget(buttons);
    QObject::connect(buttons, &QDialogButtonBox::accepted, [&] {
        control->qSaveSettings(); // when the player accepts
        app.quit();
    });
    QObject::connect(buttons, &QDialogButtonBox::rejected, &app, &QApplication::quit);
    page.show();

    const qsizetype shot = app.arguments().indexOf("--screenshot");
    if (shot > 0)
        QTimer::singleShot(0, [&] {
            page.grab().save(app.arguments().value(shot + 1));
            app.quit();
        });
    return app.exec();
}
