#include "HostFolder.h"
#include "LauncherWindow.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QMessageBox>
#include <QTimer>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("qforms-launcher"));
    QApplication::setApplicationDisplayName(QStringLiteral("Quillmarsh 2"));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Sample game launcher with the qForms options control"));
    parser.addHelpOption();
    const QCommandLineOption screenshot(QStringLiteral("screenshot"),
                                        QStringLiteral("Save a picture of the window to <file> and quit."),
                                        QStringLiteral("file"));
    parser.addOption(screenshot);
    parser.process(app);

    const QString hostFolder = findHostFolder();
    if (hostFolder.isEmpty()) {
        QMessageBox::critical(nullptr, QStringLiteral("Quillmarsh 2"),
                              QApplication::translate("main", "The sample host folder is missing. "
                                                              "Build or install the launcher again."));
        return 1;
    }
    LauncherWindow window(hostFolder);
    window.show();
    if (parser.isSet(screenshot)) {
        QTimer::singleShot(300, &window, [&] {
            const bool saved = window.grab().save(parser.value(screenshot));
            QApplication::exit(saved ? 0 : 1);
        });
    }
    return app.exec();
}
