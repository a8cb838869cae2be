#include "launch/Launch.h"
#include "PeImage.h"
#include "context/SettingsKeys.h"
#include "support/HostedControl.h"
#include "support/SettingsSaveCheck.h"

#include <QFile>
#include <QSettings>

using namespace Qt::Literals::StringLiterals;
namespace launch = qf::launch;

namespace {

// One option of each valued kind and a route of every kind for them.
const QByteArray Page =
    "[Custom Controls]\nCount=4\nControl1Type=checkbox\nControl1ControlKey=Box\n"
    "Control1ControlDefaultValue=1\nControl2Type=combo\nControl2ControlKey=Pick\n"
    "Control2Caption=a;;b c;;(a);;\nControl3Type=text\nControl3ControlKey=Name\n"
    "Control3ControlDefaultValue=x\nControl4Type=option button\nControl4ControlKey=Opt\n"
    "Control4ControlDefaultValue=True\n"
    "[Launch]\nNobody[1]=-nobody\nBox[1]=-box\nPick[b c]=--pick \"b and c\"\nPick=--pick={value}\n"
    "Name=--name {value};; env:PLAYER=the {value};; wrap:nice -n  5;; "
    "wine:explorer /desktop=x,{value}\nName[]=--anonymous\nOpt[false]=\n"
    "Opt=-opt {NAME}{{{value}}}\nCommand Line Parameters={words} --end\n"
    "Config Name=+exec {path}\n";

class LaunchTest : public HostedControl {
protected:
    LaunchTest()
    {
        host.write(u"Data/game.qgd"_s, Page);
        host.write(u"Data/Arena/Configs/my game.cfg"_s, "");
        control.setComponentFolder(host.path());
        control.setQpUseAdditionalCommandLineParameters(true);
        control.setQpUseConfigs(true);
        control.setQpGameApplication(u"game.exe"_s);
        control.qInitCustomControls();
        control.qLoadSettings();
    }

    // A game folder holding the program, a Windows one or a script.
    QString install(bool windows)
    {
        const QString folder = host.filePath(u"games/Arena $1"_s);
        QDir().mkpath(folder);
        QFile::remove(folder + u"/game.exe"_s);
        if (windows)
            EXPECT_TRUE(qf::PeImage().write(folder + u"/game.exe"_s));
        else
            host.write(u"games/Arena $1/game.exe"_s, "#!/bin/sh\n");
        w.txtPath.setText(folder);
        return folder;
    }
};

} // namespace

TEST_F(LaunchTest, OptionValuesAreWhatTheSaveStoresOnEverySamplePage)
{
    const std::pair<QString, QString> samples[] = {{u"emberfall.qgd"_s, u"Ember"_s},
                                                   {u"stonewake.qgd"_s, u"Stonewake"_s},
                                                   {u"hollowreach.qgd"_s, u"Hollow Reach"_s}};
    for (const auto& [file, name] : samples) {
        SCOPED_TRACE(file.toStdString());
        qForms sample;
        sample.setSettingsStore(store);
        sample.setAppPath(QFORMS_SOURCE_DIR u"/data/host"_s);
        sample.setQpGameName(name);
        sample.setQpQGD(file);
        EXPECT_TRUE(sample.optionValues().isEmpty()) << "nothing before the build";
        sample.qInitCustomControls();
        sample.qLoadSettings();
        // Change one of each kind, so defaults alone cannot pass.
        qf::ControlWidgets& widgets = sample.widgets();
        widgets.Check1.at(1).setValue(widgets.Check1.at(1).value() == 1 ? 0 : 1);
        if (widgets.Combo1.exists(1))
            widgets.Combo1.at(1).setListIndex(0);
        if (widgets.Text1.exists(1))
            widgets.Text1.at(1).setText(u"Ann \"the\" $HOME"_s);

        const QMap<QString, QString> values = sample.optionValues();
        sample.qSaveSettings();
        QSettings file(store->fileName(qf::settings::Application), QSettings::IniFormat);
        file.beginGroup(name);
        QMap<QString, QString> stored;
        for (const QString& key : file.childKeys())
            if (key != qf::settings::Path && key != qf::settings::ConfigName)
                stored.insert(key, file.value(key).toString());
        EXPECT_EQ(values, stored);
        EXPECT_GE(values.size(), 4);
    }
}

TEST_F(LaunchTest, EachRouteKindGivesItsWordsHostileTextStaysOneWordAndABrokenRouteIsSkipped)
{
    const QString folder = install(false);
    launch::LaunchDescription described = launch::describeLaunch(control);
    EXPECT_EQ(described.program, u"nice"_s);
    EXPECT_EQ(described.arguments,
              (QStringList{u"-n"_s, u"5"_s, folder + u"/game.exe"_s, u"-box"_s, u"--pick=a"_s,
                           u"--name"_s, u"x"_s, u"-opt"_s, u"x{True}"_s, u"+exec"_s,
                           host.filePath(u"Data/Arena/Configs/my game.cfg"_s)}))
        << "no Wine words for a program of this system";
    EXPECT_EQ(described.environment, (QList<launch::EnvironmentChange>{{u"PLAYER"_s, u"the x"_s}}));
    EXPECT_EQ(described.workingFolder, folder);
    EXPECT_TRUE(described.skipped.isEmpty());
    EXPECT_EQ(
        described.text(),
        u"PLAYER='the x' nice -n 5 '%1/game.exe' -box --pick=a --name x -opt "
        "'x{True}' +exec '%2'"_s.arg(folder, host.filePath(u"Data/Arena/Configs/my game.cfg"_s)));

    // Unticked, the other item, an empty text, the option off, and a page
    // without config: each route gives its state's words or nothing.
    w.Check1.at(1).setValue(0);
    w.Combo1.at(1).setListIndex(1);
    w.Text1.at(1).setText({});
    w.Option1.at(1).setValue(false);
    w.txtCLP.setText(u"-window \"my map\" ;rm -rf x $HOME"_s);
    w.lstConfig.setListIndex(-1);
    described = launch::describeLaunch(control);
    EXPECT_EQ(described.program, folder + u"/game.exe"_s);
    EXPECT_EQ(described.arguments,
              (QStringList{u"--pick"_s, u"b and c"_s, u"--anonymous"_s, u"-window"_s, u"my map"_s,
                           u";rm"_s, u"-rf"_s, u"x"_s, u"$HOME"_s, u"--end"_s}));
    EXPECT_TRUE(described.environment.isEmpty());

    // A Windows program runs through the runner, with the Wine words before it
    // and the config file named as Wine names it.
    install(true);
    w.Text1.at(1).setText(u"y"_s);
    w.lstConfig.setListIndex(0);
    w.txtCLP.setText({});
    described = launch::describeLaunch(control, {.windowsRunner = u"/opt/proton/wine"_s});
    EXPECT_TRUE(described.windowsProgram);
    EXPECT_EQ(described.arguments.mid(0, 6),
              (QStringList{u"-n"_s, u"5"_s, u"/opt/proton/wine"_s, u"explorer"_s, u"/desktop=x,y"_s,
                           folder + u"/game.exe"_s}));
    EXPECT_EQ(described.arguments.last(),
              u"Z:"_s + host.filePath(u"Data/Arena/Configs/my game.cfg"_s).replace(u'/', u'\\'));

    // A player's text stays one argument and one environment value, whatever it holds.
    install(false);
    w.Option1.at(1).setValue(true);
    const QStringList hostile =
        u"two words|\"quoted\" 'single'|$HOME `id` $(id)|;rm -rf x|-leading "
        "--dash|Spieler Ä ü 名前 🎮|{value} {{ }}|a;;env:EVIL=1"_s.split(u'|')
        << QString(1023, u'w');
    for (const QString& text : hostile) {
        w.Text1.at(1).setText(text);
        const launch::LaunchDescription described = launch::describeLaunch(control);
        const qsizetype name = described.arguments.indexOf(u"--name"_s);
        ASSERT_GE(name, 0) << text.toStdString();
        EXPECT_EQ(described.arguments.at(name + 1), text);
        EXPECT_EQ(described.arguments.at(name + 2), u"-opt"_s) << "nothing after the value";
        EXPECT_EQ(described.arguments.at(name + 3), text + u"{True}"_s);
        EXPECT_EQ(described.environment,
                  (QList<launch::EnvironmentChange>{{u"PLAYER"_s, u"the "_s + text}}));
    }

    // A route that cannot be filled is skipped whole, with its reason.
    host.write(u"Data/game.qgd"_s, Page + "Box=-box {path}\nName[y]=-ok;;-a {Nobody}\n");
    w.Check1.at(1).setValue(2); // no state route for 2: the general one, which fails
    w.Text1.at(1).setText(u"y"_s);
    described = launch::describeLaunch(control);
    QStringList reasons;
    for (const launch::RouteProblem& problem : described.skipped)
        reasons << problem.key + u": "_s + problem.message;
    EXPECT_EQ(reasons, (QStringList{u"Box: {path} is the config file's path: only the route of "
                                    "\"Config Name\" has it"_s,
                                    u"Name: {Nobody} names no option of this page"_s}));
    EXPECT_FALSE(described.arguments.contains(u"-box"_s));
    EXPECT_FALSE(described.arguments.contains(u"-ok"_s)) << "a route applies whole or not at all";
}

TEST(LaunchRoutes, MalformedLinesAreLeftOutWithTheirReason)
{
    const struct {
        const char* line;
        const char* reason; // empty: the line is a usable route
    } cases[] = {{"A=-a {value", "never closed"},
                 {"A=env:{x}=1", ""},
                 {"A=env:NA\x01ME=1", ""},
                 {"A [1]=x", ""},
                 {"A[]=", ""},
                 {"; A=x {", ""}}; // more in tests/lint/routes
    for (const auto& c : cases) {
        const launch::LaunchRoutes routes = launch::parseLaunchRoutes(
            qf::IniDocument::parse(u"[launch]\n"_s + QString::fromUtf8(c.line)));
        const bool comment = *c.line == ';';
        EXPECT_EQ(routes.routes.size(), *c.reason || comment ? 0 : 1) << c.line;
        ASSERT_EQ(routes.problems.size(), *c.reason ? 1 : 0) << c.line;
        for (const launch::RouteProblem& problem : routes.problems) {
            EXPECT_TRUE(problem.message.contains(QString::fromUtf8(c.reason))) << c.line;
            EXPECT_EQ(problem.position.line, 2);
        }
    }
    EXPECT_FALSE(launch::environmentNameProblem(u"A"_s + QChar::Null + u"B"_s).isEmpty());

    // The first line of a key and state counts, as in every profile read, and
    // so does the first section.
    const launch::LaunchRoutes twice = launch::parseLaunchRoutes(
        qf::IniDocument::parse(u"[Launch]\nA=-first\nB]=bad\na=-second\nA[1]=-one\n[LAUNCH]\nB=-b\n"
                               "[Other]\n[launch]\nC=-c\n"_s));
    ASSERT_EQ(twice.routes.size(), 2);
    EXPECT_EQ(twice.routes.at(0).actions.at(0).words.at(0).at(0).text, u"-first"_s);
    ASSERT_EQ(twice.problems.size(), 4);
    EXPECT_EQ(twice.problems.at(1).position, (qf::IniDocument::Position{4, 1}));
    EXPECT_TRUE(twice.problems.at(3).message.contains(u"appears again"_s));
}

TEST_F(LaunchTest, WindowsProgramsAreToldByTheirHeaderAndAMissingFolderByTheProgram)
{
    ASSERT_TRUE(qf::PeImage().write(host.filePath(u"game.exe"_s)));
    const QByteArray image = qf::test::contents(host.filePath(u"game.exe"_s));
    const qsizetype signature = image.indexOf(QByteArrayView("PE\0\0", 4));
    for (const auto& [at, windows] :
         {std::pair<qsizetype, bool>{-1, true}, {0, false}, {1, false}, {signature + 1, false}}) {
        QByteArray damaged = image;
        if (at >= 0)
            damaged[at] = 'X';
        host.write(u"damaged.exe"_s, damaged);
        EXPECT_EQ(launch::isWindowsProgram(host.filePath(u"damaged.exe"_s)), windows) << at;
    }
    EXPECT_FALSE(launch::isWindowsProgram(host.filePath(u"missing.exe"_s)));
    EXPECT_EQ(
        launch::describeLaunch({}, {}, u"/x/y/game"_s, u"/no/such/folder"_s, {}, {}).workingFolder,
        u"/x/y"_s);
}
