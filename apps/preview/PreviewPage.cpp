#include "PreviewPage.h"

#include "platform/MessageBox.h"

#include "GamePage.h"
#include "ScratchSettingsStore.h"
#include "control/qForms.h"
#include "platform/ProfileReader.h"
#include "view/ControlView.h"

#include <QDir>
#include <QFileInfo>
#include <QTextStream>

namespace qf::preview {

QString defaultAppPath(const QString& gameDataPath)
{
    QDir folder = QFileInfo(gameDataPath).absoluteDir();
    do {
        if (folder.dirName().compare(QLatin1String("Data"), Qt::CaseInsensitive) == 0)
            return QFileInfo(folder.absolutePath()).path();
    } while (folder.cdUp());
    return {};
}

namespace {

// Nobody sits at the preview of an image: what the page would say goes to stderr.
class StderrMessageBox : public MessageBox {
public:
    void show(const QString& text, int, const QString& title) override
    {
        QTextStream(stderr) << title << ": " << text << '\n';
    }
};

// qpQGD names the file relative to AppPath/Data.
QString gameDataName(const PageSource& source)
{
    return QDir(source.appPath + QStringLiteral("/Data"))
        .relativeFilePath(QFileInfo(source.gameDataPath).absoluteFilePath());
}

} // namespace

GameEntry previewGame(const PageSource& source)
{
    const QString name = gameDataName(source);
    for (const GameEntry& game :
         readLauncherConfig(source.appPath + QStringLiteral("/launcher.ini")).games)
        if (game.gameData.compare(name, Qt::CaseInsensitive) == 0)
            return game;
    GameEntry game;
    game.name = QFileInfo(source.gameDataPath).completeBaseName();
    game.gameData = name;
    game.versionType = QStringLiteral("0");
    return game;
}

PageSource parsePageArguments(const QString& command, const QStringList& args,
                              const OtherArgument& other)
{
    PageSource source;
    QStringList files;
    bool appPathGiven = false;
    for (int i = 0; i < args.size(); ++i) {
        const QString& arg = args.at(i);
        const auto value = [&]() -> QString {
            if (++i >= args.size())
                throw QStringLiteral("%1 needs a value").arg(arg);
            return args.at(i);
        };
        bool ok = true;
        if (other && other(arg, value)) {
            continue;
        } else if (arg == u"--app-path") {
            source.appPath = value();
            appPathGiven = true;
        } else if (arg == u"--language") {
            source.language = value().toInt(&ok);
            ok = ok && source.language >= 0 && source.language <= 32767;
        } else if (arg.startsWith(u'-') && arg.size() > 1) {
            throw QStringLiteral("unknown option %1").arg(arg);
        } else {
            files.append(arg);
        }
        if (!ok)
            throw QStringLiteral("%1: not a value it takes: %2").arg(arg, args.at(i));
    }
    if (files.size() != 1)
        throw QStringLiteral("%1 takes one game data file").arg(command);
    source.gameDataPath = QFileInfo(files.first()).absoluteFilePath();
    if (!appPathGiven) {
        source.appPath = defaultAppPath(source.gameDataPath);
        if (source.appPath.isEmpty())
            throw QStringLiteral("%1 is in no Data folder: give --app-path").arg(files.first());
    }
    source.appPath = QFileInfo(source.appPath).absoluteFilePath();
    return source;
}

QStringList watchedPaths(const PageSource& source)
{
    const QDir languages(source.appPath + QStringLiteral("/Data/Languages"));
    QStringList paths{source.gameDataPath, QFileInfo(source.gameDataPath).absolutePath(),
                      languages.absolutePath()};
    for (const QFileInfo& file :
         languages.entryInfoList({QStringLiteral("*.ini")}, QDir::Files, QDir::Name))
        paths.append(file.absoluteFilePath());
    return paths;
}

QString checkSource(const PageSource& source)
{
    if (!loadProfile(source.gameDataPath))
        return QStringLiteral("cannot read %1").arg(source.gameDataPath);
    if (!QFileInfo(source.appPath).isDir())
        return QStringLiteral("no host folder %1").arg(source.appPath);
    // The launcher would show a message box for missing texts: say it here.
    try {
        qForms probe;
        probe.setAppPath(source.appPath);
        probe.setQpLanguageIndex(qint16(source.language));
    } catch (const std::exception& error) {
        return QStringLiteral("language %1: %2")
            .arg(source.language)
            .arg(QString::fromUtf8(error.what()));
    }
    return {};
}

std::unique_ptr<GamePage> buildPage(const PageSource& source, QWidget* parent)
{
    PageServices services;
    services.store = std::make_shared<ScratchSettingsStore>();
    services.messages = std::make_shared<StderrMessageBox>();
    auto page = std::make_unique<GamePage>(previewGame(source), source.appPath, services, parent);
    page->open(source.language);
    return page;
}

QString launchLine(const GamePage& page)
{
    return page.launch({QString(), page.control().qpGameApplication()}).text();
}

ControlView* controlView(const GamePage& page)
{
    return page.findChild<ControlView*>();
}

QImage renderPage(const GamePage& page, qreal scale)
{
    ControlView* view = controlView(page);
    QImage image((QSizeF(view->size()) * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    view->render(&image);
    return image;
}

} // namespace qf::preview
