#include "Lint.h"

#include "LayoutChecks.h"
#include "LintContext.h"
#include "Suggest.h"

#include "LauncherConfig.h"

#include "control/qForms.h"
#include "gamedata/GameDataKeys.h"
#include "platform/Errors.h"
#include "platform/IniFileSettingsStore.h"
#include "platform/MessageBox.h"
#include "platform/Paths.h"
#include "platform/ProfileReader.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QSet>
#include <QTemporaryDir>

namespace qf::lint {

namespace {

namespace gd = gamedata;

class SilentMessageBox : public MessageBox {
public:
    void show(const QString&, int, const QString&) override {}
};

// The host folder above the file's "Data" folder, and the file's name below it.
std::pair<QString, QString> locate(const QString& qgdPath, const QString& appPath)
{
    const QString file = QFileInfo(qgdPath).absoluteFilePath();
    QString app = appPath;
    if (app.isEmpty()) {
        QDir dir = QFileInfo(file).absoluteDir();
        while (dir.dirName().compare(QLatin1String("Data"), Qt::CaseInsensitive) != 0) {
            if (!dir.cdUp())
                throw Error(QStringLiteral("%1: no \"Data\" folder above it; name the host "
                                           "folder with --app-path")
                                .arg(qgdPath));
        }
        dir.cdUp();
        app = dir.absolutePath();
    }
    const QString data = paths::resolve(QDir(app).absolutePath() + QStringLiteral("/Data"));
    const QString relative = QDir(data).relativeFilePath(paths::resolve(file));
    if (relative.startsWith(QLatin1String("..")))
        throw Error(QStringLiteral("%1 is not below %2/Data").arg(qgdPath, app));
    return {QDir(app).absolutePath(), relative};
}

QList<int> languagesOf(const QString& appPath)
{
    QList<int> languages;
    try {
        for (const QString& name : paths::listFiles(appPath + QStringLiteral("/Data/Languages"),
                                                    QStringLiteral("*.ini"))) {
            bool isNumber = false;
            const int index = QFileInfo(name).completeBaseName().toInt(&isNumber);
            if (isNumber)
                languages.append(index);
        }
    } catch (const Error&) {
    }
    std::sort(languages.begin(), languages.end());
    // Without files of the host's own, the library's texts of language 0 apply.
    return languages.isEmpty() ? QList<int>{0} : languages;
}

// Clicks every check box on and off and every option button on, so that
// every rule runs once in each state it reacts to. A chain of rules that
// calls itself without end fails the click.
void clickEveryRuleWidget(LintContext& lint, qForms& control)
{
    ControlWidgets& w = control.widgets();
    const auto loop = [&](const QString& kind, int element) {
        const int entry = lint.entryOf(kind, element);
        const QString key = entryKeyName(entry, gd::VisualFunction);
        lint.add(
            Severity::Error, QStringLiteral("rules-loop"),
            QStringLiteral("%1: the rules this widget starts call each other without end").arg(key),
            entry, key, true);
    };
    for (int element = 1; element <= w.Check1.upperBound(); ++element) {
        if (!w.Check1.exists(element) || w.Check1.at(element).tag().isEmpty())
            continue;
        try {
            w.Check1.at(element).setValue(CheckBox::Checked);
            w.Check1.at(element).setValue(CheckBox::Unchecked);
        } catch (const Error&) {
            loop(gd::KindCheckBox, element);
        }
    }
    for (int element = 1; element <= w.Option1.upperBound(); ++element) {
        if (!w.Option1.exists(element) || w.Option1.at(element).tag().isEmpty())
            continue;
        try {
            w.Option1.at(element).setValue(true);
        } catch (const Error&) {
            loop(gd::KindOptionButton, element);
        }
    }
}

// One run of the control's routines in one language, as a launcher would
// make them: build, restore the defaults, click, save.
void runControl(LintContext& lint, int language, bool first)
{
    QTemporaryDir scratch;
    auto observer = std::make_shared<RecordingObserver>();
    qForms control;
    control.setSettingsStore(std::make_shared<IniFileSettingsStore>(scratch.path()));
    control.setMessageBox(std::make_shared<SilentMessageBox>());
    control.setAppPath(lint.appPath);
    control.setQpGameName(lint.gameName.isEmpty() ? QStringLiteral("qforms lint") : lint.gameName);
    control.setQpQGD(lint.qgdName);
    try {
        control.setQpLanguageIndex(qint16(language));
    } catch (const Error&) {
        // Cannot happen with the library's texts behind the host's: language 0
        // holds every fixed caption.
    }
    control.setSkipObserver(observer);
    control.qInitCustomControls();
    if (first) {
        for (const RecordingObserver::Built& built : observer->built) {
            lint.elements[built.entry] = built.element;
            lint.entriesByElement[{built.kind, built.element}] = built.entry;
        }
    }
    control.qLoadSettings();
    checkLayout(lint, control, language, first);
    if (first)
        clickEveryRuleWidget(lint, control);
    control.qSaveSettings();
    reportSkippedSteps(lint, observer->steps, language);
}

// Same place, check and message: said once, whichever language said it.
// Findings of one place keep the order they were found in.
void sortAndDeduplicate(Findings& findings)
{
    // Paths in name order, compared once each rather than at every step of the sort.
    QMap<QString, int> pathOrder;
    for (const Finding& f : findings)
        pathOrder.insert(f.path, 0);
    int order = 0;
    for (int& o : pathOrder)
        o = order++;
    std::vector<std::pair<std::tuple<int, int, int>, size_t>> places;
    places.reserve(findings.size());
    for (size_t i = 0; i < findings.size(); ++i)
        places.push_back(
            {{pathOrder.value(findings[i].path), findings[i].line, findings[i].column}, i});
    std::stable_sort(places.begin(), places.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    Findings kept;
    kept.reserve(findings.size());
    QSet<std::pair<QString, QString>> saidHere; // check and message, at the current place
    for (size_t p = 0; p < places.size(); ++p) {
        if (p == 0 || places[p].first != places[p - 1].first)
            saidHere.clear();
        Finding& f = findings[places[p].second];
        if (!saidHere.contains({f.check, f.message})) {
            saidHere.insert({f.check, f.message});
            kept.push_back(std::move(f));
        }
    }
    findings = std::move(kept);
}

// What the host's launcher.ini says about this file's game, and whether it
// knows the game the lint was asked to check.
void readHost(LintContext& lint)
{
    const QString file = lint.appPath + QStringLiteral("/launcher.ini");
    if (!paths::isFile(file))
        return;
    const LauncherConfig config = readLauncherConfig(file);
    QStringList names;
    for (const GameEntry& game : config.games) {
        names.append(game.name);
        if (!lint.hostGroups && game.gameData.compare(lint.qgdName, Qt::CaseInsensitive) == 0)
            lint.hostGroups = LintContext::HostGroups{game.name, game.modSelection,
                                                      game.commandLineParameters, game.configs};
    }
    if (lint.gameName.isEmpty() || names.contains(lint.gameName, Qt::CaseInsensitive))
        return;
    const QString suggestion = closest(lint.gameName, names);
    lint.addAt(Severity::Warning, QStringLiteral("ava-game"),
               QStringLiteral("--game %1: launcher.ini has no such game%2")
                   .arg(lint.gameName, suggestion.isEmpty()
                                           ? QStringLiteral(" (it has %1)").arg(names.join(u", "))
                                           : QStringLiteral("; did you mean %1?").arg(suggestion)),
               0, file, std::nullopt);
}

QString relativeToWorkingFolder(const QString& path)
{
    if (QFileInfo(path).isRelative())
        return path;
    const QString relative = QDir::current().relativeFilePath(path);
    return relative.startsWith(QLatin1String("..")) ? path : relative;
}

} // namespace

Findings lintFile(const QString& qgdPath, const Options& options)
{
    if (!paths::isFile(qgdPath))
        throw Error(QStringLiteral("%1: no such file").arg(qgdPath));
    // One state of the files, read once: the routines read each value anew.
    const ProfileSnapshot snapshot;
    LintContext lint;
    lint.path = qgdPath;
    std::tie(lint.appPath, lint.qgdName) = locate(qgdPath, options.appPath);
    lint.gameName = options.gameName;
    lint.document = loadProfile(qgdPath);
    if (!lint.document)
        throw Error(QStringLiteral("%1: cannot be read").arg(qgdPath));

    readHost(lint);
    checkCount(lint);
    for (int entry = 1; entry <= lint.count; ++entry)
        lint.kinds[entry] = lint.entryValue(entry, gd::Type).value_or(QString()).toLower();
    checkKeys(lint);
    checkValues(lint);
    checkGameApplication(lint);
    checkGameLists(lint);

    const QList<int> languages =
        options.languages.isEmpty() ? languagesOf(lint.appPath) : options.languages;
    for (qsizetype i = 0; i < languages.size(); ++i)
        runControl(lint, languages[i], i == 0);
    checkStorage(lint);
    checkRoutes(lint);

    QHash<QString, QString> relative; // a handful of paths, many findings
    for (Finding& finding : lint.findings) {
        auto known = relative.find(finding.path);
        if (known == relative.end())
            known = relative.insert(finding.path, relativeToWorkingFolder(finding.path));
        finding.path = *known;
    }
    sortAndDeduplicate(lint.findings);
    return lint.findings;
}

QString formatText(const Finding& finding)
{
    static const char* const names[] = {"error", "warning", "note"};
    return QStringLiteral("%1:%2:%3: %4: %5 [%6]")
        .arg(finding.path)
        .arg(finding.line)
        .arg(finding.column)
        .arg(QLatin1String(names[int(finding.severity)]), finding.message, finding.check);
}

QByteArray formatJson(const Findings& findings)
{
    static const char* const names[] = {"error", "warning", "note"};
    QJsonArray array;
    for (const Finding& f : findings) {
        array.append(
            QJsonObject{{QStringLiteral("path"), f.path},
                        {QStringLiteral("line"), f.line},
                        {QStringLiteral("column"), f.column},
                        {QStringLiteral("severity"), QLatin1String(names[int(f.severity)])},
                        {QStringLiteral("message"), f.message},
                        {QStringLiteral("check"), f.check},
                        {QStringLiteral("entry"), f.entry}});
    }
    return QJsonDocument(array).toJson(QJsonDocument::Indented);
}

} // namespace qf::lint
