#include "HostFolder.h"
#include "LauncherWindow.h"

#include <QApplication>
#include <QMessageBox>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("qforms-launcher"));
    QApplication::setApplicationDisplayName(QStringLiteral("Quillmarsh 2"));

    const QString hostFolder = findHostFolder();
    if (hostFolder.isEmpty()) {
        QMessageBox::critical(nullptr, QStringLiteral("Quillmarsh 2"),
                              QApplication::translate("main", "The sample host folder is missing. "
                                                              "Build or install the launcher again."));
        return 1;
    }
    LauncherWindow window(hostFolder);
    window.show();
    return app.exec();
}
