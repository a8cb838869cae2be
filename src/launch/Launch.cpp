#include "launch/Launch.h"

#include "context/DataPaths.h"
#include "context/SettingsKeys.h"
#include "control/qForms.h"
#include "platform/Paths.h"
#include "platform/PeVersionResource.h"
#include "platform/ProfileReader.h"

#include <QFileInfo>
#include <QHash>
#include <QProcess>
#include <QRegularExpression>
#include <QtEndian>

namespace qf::launch {

namespace {

struct Skip {
    QString message;
};

QString folded(const QString& text)
{
    return text.trimmed().toCaseFolded();
}

// The words a route's template makes with the values filled in.
class Expander {
public:
    Expander(const QHash<QString, QString>& values, const QString& configPath)
        : m_values(values), m_configPath(configPath)
    {
    }

    QStringList words(const Route& route, const QString& own, const QList<Word>& words) const
    {
        QStringList result;
        for (const Word& word : words) {
            if (word.size() == 1 && word.first().placeholder &&
                folded(word.first().text) == u"words") {
                result += QProcess::splitCommand(own);
                continue;
            }
            QString text;
            for (const Piece& piece : word)
                text += piece.placeholder ? fill(route, own, piece.text) : piece.text;
            result.append(text);
        }
        return result;
    }

private:
    QString fill(const Route& route, const QString& own, const QString& name) const
    {
        const QString key = folded(name);
        if (key == u"value")
            return own;
        if (key == u"path") {
            if (folded(route.key) != folded(settings::ConfigName))
                throw Skip{QStringLiteral("{path} is the config file's path: only the route "
                                          "of \"Config Name\" has it")};
            return m_configPath;
        }
        const auto found = m_values.constFind(key);
        if (found == m_values.constEnd())
            throw Skip{QStringLiteral("{%1} names no option of this page").arg(name)};
        return *found;
    }

    const QHash<QString, QString>& m_values;
    const QString& m_configPath;
};

QString shellQuoted(const QString& text)
{
    static const QRegularExpression plain(QStringLiteral("^[A-Za-z0-9_@%+=:,./-]+$"));
    if (plain.match(text).hasMatch())
        return text;
    return u'\'' + QString(text).replace(u'\'', QStringLiteral("'\\''")) + u'\'';
}

} // namespace

QString LaunchDescription::text() const
{
    QStringList parts;
    for (const EnvironmentChange& change : environment)
        parts << change.name + u'=' + shellQuoted(change.value);
    parts << shellQuoted(program);
    for (const QString& argument : arguments)
        parts << shellQuoted(argument);
    return parts.join(u' ');
}

QMap<QString, QString> launchValues(const qForms& control)
{
    QMap<QString, QString> values = control.optionValues();
    if (control.qpUseModSelection()) {
        values.insert(settings::ModName, control.chosenMod());
        values.insert(settings::LoadModAlways,
                      QString::number(control.widgets().chkModCheck.value()));
    }
    if (control.qpUseAdditionalCommandLineParameters())
        values.insert(settings::CommandLineParameters, control.additionalParameters());
    if (control.qpUseConfigs())
        values.insert(settings::ConfigName, control.chosenConfig());
    return values;
}

LaunchDescription describeLaunch(const LaunchRoutes& routes, const QMap<QString, QString>& values,
                                 const QString& gameProgram, const QString& gameFolder,
                                 const QString& configPath, const LaunchOptions& options)
{
    LaunchDescription launch;
    launch.gameProgram = gameProgram;
    launch.windowsProgram = paths::isFile(gameProgram) ? isWindowsProgram(gameProgram)
                                                       : datapaths::namesProgram(gameProgram);
    launch.workingFolder = !gameFolder.isEmpty() && paths::isDirectory(gameFolder)
                               ? paths::resolve(gameFolder)
                               : QFileInfo(gameProgram).path();
    if (gameProgram.isEmpty())
        launch.workingFolder.clear();

    QHash<QString, QString> byKey;
    for (auto value = values.begin(); value != values.end(); ++value)
        byKey.insert(folded(value.key()), value.value());
    const QString config = launch.windowsProgram ? winePath(configPath) : configPath;
    const Expander expander(byKey, config);

    QStringList wrapper;
    QStringList wine;
    for (const Route& route : routes.routes) {
        const auto own = byKey.constFind(folded(route.key));
        if (own == byKey.constEnd())
            continue;
        const QString value = *own;
        const auto matches = [&](const Route& other) {
            return other.state && folded(other.key) == folded(route.key) &&
                   folded(*other.state) == folded(value);
        };
        if (route.state ? !matches(route)
                        : value.isEmpty() ||
                              std::any_of(routes.routes.begin(), routes.routes.end(), matches))
            continue;
        // A route applies whole or not at all.
        QStringList arguments;
        QStringList wrapperWords;
        QStringList wineWords;
        QList<EnvironmentChange> environment;
        try {
            for (const Action& action : route.actions) {
                const QStringList words = expander.words(route, value, action.words);
                switch (action.kind) {
                case ActionKind::Arguments:
                    arguments += words;
                    break;
                case ActionKind::Environment:
                    environment.append({action.name, words.join(QString())});
                    break;
                case ActionKind::Wrapper:
                    wrapperWords += words;
                    break;
                case ActionKind::Wine:
                    if (launch.windowsProgram)
                        wineWords += words;
                    break;
                }
            }
        } catch (const Skip& skip) {
            launch.skipped.append({route.position, route.key, skip.message});
            continue;
        }
        launch.arguments += arguments;
        wrapper += wrapperWords;
        wine += wineWords;
        for (const EnvironmentChange& change : environment) {
            auto same = std::find_if(launch.environment.begin(), launch.environment.end(),
                                     [&](const auto& had) { return had.name == change.name; });
            if (same != launch.environment.end())
                same->value = change.value;
            else
                launch.environment.append(change);
        }
    }

    QStringList command = wrapper;
    if (launch.windowsProgram)
        command << (options.windowsRunner.isEmpty() ? QStringLiteral("wine")
                                                    : options.windowsRunner)
                << wine;
    command << gameProgram;
    launch.program = command.takeFirst();
    launch.arguments = command + launch.arguments;
    return launch;
}

LaunchDescription describeLaunch(const qForms& control, const LaunchOptions& options)
{
    const ProfileSnapshot oneLook; // the routes and the values from one state of the file
    LaunchRoutes routes;
    if (const auto document = loadProfile(datapaths::dataPath(control.AppPath(), control.qpQGD())))
        routes = parseLaunchRoutes(*document);
    QString configPath;
    if (const QString config = control.chosenConfig(); !config.isEmpty())
        configPath = paths::resolve(control.widgets().lstConfig.path() + u'/' + config);
    const QString program =
        control.programPath().isEmpty() ? options.programIfNoneChosen : control.programPath();
    LaunchDescription launch = describeLaunch(routes, launchValues(control), program,
                                              control.qpGamePath(), configPath, options);
    launch.skipped = routes.problems + launch.skipped;
    return launch;
}

bool isWindowsProgram(const QString& path)
{
    pe::FileSource source(path);
    if (!source.isOpen())
        return false;
    char mz[2];
    char offset[4];
    if (!source.read(0, mz, 2) || mz[0] != 'M' || mz[1] != 'Z' || !source.read(0x3C, offset, 4))
        return false;
    char signature[4];
    return source.read(qFromLittleEndian<quint32>(offset), signature, 4) &&
           QByteArrayView(signature, 4) == QByteArrayView("PE\0\0", 4);
}

QString winePath(const QString& path)
{
    if (path.isEmpty())
        return path;
    return QStringLiteral("Z:") + QString(QFileInfo(path).absoluteFilePath()).replace(u'/', u'\\');
}

} // namespace qf::launch
