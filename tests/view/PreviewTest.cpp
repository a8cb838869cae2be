#include "EntryWidget.h"
#include "GamePage.h"
#include "LauncherConfig.h"
#include "LauncherWindow.h"
#include "PreviewWindow.h"
#include "control/qForms.h"
#include "platform/IniFileSettingsStore.h"
#include "toolkit/qt/ControlView.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QFrame>
#include <QLabel>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

namespace {

QString hostFolder()
{
    return QFileInfo(QStringLiteral(QFORMS_LAUNCHER_PATH)).path() + QStringLiteral("/host");
}

int runPreview(const QStringList& args, QString* errors = nullptr)
{
    QProcess cli;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    cli.setProcessEnvironment(environment);
    cli.start(QStringLiteral(QFORMS_CLI_PATH), QStringList{QStringLiteral("preview")} + args);
    EXPECT_TRUE(cli.waitForFinished(60000));
    if (errors)
        *errors = QString::fromUtf8(cli.readAllStandardError());
    return cli.exitStatus() == QProcess::NormalExit ? cli.exitCode() : -1;
}

QString copyHost(const QTemporaryDir& dir)
{
    const QString host = dir.filePath(QStringLiteral("host"));
    QProcess::execute(QStringLiteral("cp"), {QStringLiteral("-r"), hostFolder(), host});
    return host;
}

// What an editor does on save: write a new file, rename it over the old one.
void saveByRename(const QString& path, const QByteArray& from, const QByteArray& to)
{
    QFile old(path);
    ASSERT_TRUE(old.open(QIODevice::ReadOnly));
    QByteArray text = old.readAll();
    old.close();
    ASSERT_TRUE(text.contains(from));
    text.replace(from, to);
    QFile fresh(path + QStringLiteral(".new"));
    ASSERT_TRUE(fresh.open(QIODevice::WriteOnly));
    fresh.write(text);
    fresh.close();
    ASSERT_EQ(::rename(qPrintable(fresh.fileName()), qPrintable(path)), 0);
}

} // namespace

TEST(Preview, DrawsTheSamePixelsAsTheLaunchersPageAndRefusesWhatCannotRun)
{
    QTemporaryDir dir;
    const QString emberfall = hostFolder() + QStringLiteral("/Data/emberfall.qgd");
    const QString image = dir.filePath(QStringLiteral("page.png"));
    QString errors;
    ASSERT_EQ(runPreview({emberfall, QStringLiteral("-o"), image}, &errors), 0)
        << errors.toStdString();

    QTemporaryDir config;
    LauncherWindow window(hostFolder(),
                          readLauncherConfig(hostFolder() + QStringLiteral("/launcher.ini")),
                          std::make_shared<qf::IniFileSettingsStore>(config.path()));
    window.show();
    window.showGame(0);
    const QImage launcher = window.page(0)->findChild<qf::ControlView*>()->grab().toImage();
    const QImage preview(image);
    ASSERT_EQ(preview.size(), launcher.size());
    EXPECT_TRUE(preview.convertToFormat(QImage::Format_ARGB32) ==
                launcher.convertToFormat(QImage::Format_ARGB32));

    const QString doubled = dir.filePath(QStringLiteral("doubled.png"));
    ASSERT_EQ(runPreview({emberfall, QStringLiteral("--scale"), QStringLiteral("2"),
                          QStringLiteral("--language"), QStringLiteral("1"), QStringLiteral("-o"),
                          doubled}),
              0);
    EXPECT_EQ(QImage(doubled).size(), launcher.size() * 2);

    // A file in no Data folder. (A host without language texts is fine: the
    // library brings its own.)
    const QString loose = dir.filePath(QStringLiteral("loose.qgd"));
    QFile::copy(emberfall, loose);
    const QStringList cannotRun[] = {
        {dir.filePath(QStringLiteral("missing.qgd")), QStringLiteral("--app-path"), hostFolder(),
         QStringLiteral("-o"), image},
        {loose, QStringLiteral("-o"), image},
        {emberfall, QStringLiteral("--scale"), QStringLiteral("x"), QStringLiteral("-o"), image},
        {emberfall},
        {emberfall, QStringLiteral("-o"), dir.filePath(QStringLiteral("no/such/folder/page.png"))},
    };
    for (const QStringList& args : cannotRun)
        EXPECT_EQ(runPreview(args), 2) << args.join(u' ').toStdString();
}

TEST(PreviewWindow, RebuildsWhenTheFileIsRenamedOverAndFramesTheWidgetOfAFinding)
{
    QTemporaryDir dir;
    const QString host = copyHost(dir);
    const QString file = host + QStringLiteral("/Data/emberfall.qgd");
    int lints = 0;
    const auto lint = [&](const QString& path) {
        ++lints;
        return qf::lint::Findings{
            {path, 40, 1, qf::lint::Severity::Warning, QStringLiteral("m"), QStringLiteral("c"),
             15},
            {path, 0, 0, qf::lint::Severity::Note, QStringLiteral("m"), QStringLiteral("c"), 0}};
    };
    qf::preview::PreviewWindow window({file, host, 0}, lint);
    window.show();
    window.move(40, 30);
    window.resize(1100, 420);
    const QRect placed = window.geometry();
    QSignalSpy rebuilt(&window, &qf::preview::PreviewWindow::rebuilt);

    const auto caption = [&] {
        const qf::ControlWidgets& w = window.page()->control().widgets();
        auto* view = window.page()->findChild<qf::ControlView*>();
        return qobject_cast<QLabel*>(view->viewOf(w.Label1.at(2)))->text();
    };
    // Twice: the first rename takes the file out of the watcher.
    QByteArray before = "Control15Caption=212";
    for (const char* text : {"Volume", "Loudness"}) {
        const QByteArray after = QByteArray("Control15Caption=") + text;
        saveByRename(file, before, after);
        before = after;
        const QString shown = QString::fromLatin1(text).toLower();
        ASSERT_TRUE(QTest::qWaitFor([&] { return caption() == shown; }, 5000))
            << caption().toStdString();
    }
    EXPECT_EQ(window.geometry(), placed);
    EXPECT_EQ(lints, 1 + rebuilt.size());

    // Entry 15 is the page's second label.
    ASSERT_TRUE(window.showFinding(0));
    auto* view = window.page()->findChild<qf::ControlView*>();
    const QWidget* label = view->viewOf(window.page()->control().widgets().Label1.at(2));
    EXPECT_TRUE(window.highlight()->geometry().contains(
        QRect(label->mapTo(view, QPoint(0, 0)), label->size())));
    EXPECT_FALSE(window.showFinding(1));
    EXPECT_EQ(window.highlight(), nullptr);
}

TEST(EntryWidget, CountsEntriesOfEachKindInEntryOrder)
{
    qForms control;
    control.setAppPath(hostFolder());
    control.setQpQGD(QStringLiteral("emberfall.qgd"));
    control.qInitCustomControls();
    const qf::ControlWidgets& w = control.widgets();
    const QString file = hostFolder() + QStringLiteral("/Data/emberfall.qgd");
    const struct {
        int entry;
        const qf::Widget* widget;
    } cases[] = {{1, &w.Frame1.at(1)},  {3, &w.Option1.at(2)}, {8, &w.Label1.at(1)},
                 {10, &w.Frame1.at(2)}, {17, &w.Check1.at(9)}, {18, &w.Line1.at(1)},
                 {21, &w.Text1.at(2)},  {0, nullptr},          {22, nullptr}};
    for (const auto& c : cases)
        EXPECT_EQ(qf::preview::entryWidget(file, c.entry, w), c.widget) << c.entry;
}
