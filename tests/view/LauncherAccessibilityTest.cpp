#include "GamePage.h"
#include "LauncherWindow.h"
#include "control/qForms.h"
#include "platform/IniFileSettingsStore.h"

#include <QAccessible>
#include <QApplication>
#include <QFileInfo>
#include <QLineEdit>
#include <QMetaEnum>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

// The window over the sample games the build puts beside the launcher.
std::unique_ptr<LauncherWindow> sampleLauncher(const QTemporaryDir& settings)
{
    const QString host = QFileInfo(QStringLiteral(QFORMS_LAUNCHER_PATH)).path() + u"/host"_s;
    return std::make_unique<LauncherWindow>(
        host, readLauncherConfig(host + u"/launcher.ini"_s),
        std::make_shared<qf::IniFileSettingsStore>(settings.path()));
}

// A widget as a screen reader gets it: role, name, checked state, the captions
// it is labelled by and the widgets it labels.
QString read(QWidget* widget)
{
    QAccessibleInterface* iface = QAccessible::queryAccessibleInterface(widget);
    const QAccessible::State state = iface->state();
    QString text = u"%1 \"%2\"%3"_s.arg(
        QLatin1String(QMetaEnum::fromType<QAccessible::Role>().valueToKey(iface->role())),
        iface->text(QAccessible::Name),
        !state.checkable ? QString()
        : state.checked  ? u" checked"_s
                         : u" unchecked"_s);
    for (const auto& [label, relation] : iface->relations(QAccessible::Label))
        text += u" <"_s + label->text(QAccessible::Name) + u'>';
    for (const auto& [field, relation] : iface->relations(QAccessible::Labelled))
        text += u" >"_s + field->text(QAccessible::Name);
    return text;
}

} // namespace

TEST(LauncherAccessibility, EachSamplePageReadsAsASightedPlayerReadsIt)
{
    const QTemporaryDir settings;
    auto window = sampleLauncher(settings);
    const std::map<int, std::vector<std::pair<const char*, const char*>>> pages = {
        {0,
         {{"Option1(1)", "RadioButton \"Low detail\" unchecked <Video>"},
          {"Option1(2)", "RadioButton \"High detail\" checked <Video>"},
          {"Combo1(1)", "ComboBox \"1024x768\" <Resolution:>"},
          {"Combo1(2)", "ComboBox \"medium\" <Quality:>"},
          {"Text1(1)", "EditableText \"Player name:\" <Player name:>"},
          {"Text1(2)", "EditableText \"\""},
          {"txtPath", "EditableText \"Emberfall: folder or program\" <Emberfall: folder or "
                      "program>"},
          // Qt's list reports no relations of its own; its label does.
          {"lstConfig", "List \"Config file:\""},
          {"lblSelectConfig", "StaticText \"Config file:\" >Config file:"},
          {"lblStatus",
           "StaticText \" Emberfall: no game folder chosen yet.\" <Emberfall: status>"}}},
        {1,
         {{"Combo1(1)", "ComboBox \"high\" <Quality:>"},
          {"Combo1(2)", "ComboBox \"off\" <Wine desktop:>"}}},
        {2,
         {{"comModSelect", "ComboBox \"\""}, // the check box beside it names itself
          {"txtCLP", "EditableText \"Additional command-line parameters\" <Additional "
                     "command-line parameters>"}}},
        // The launcher's own boxes keep their captions.
        {-1,
         {{"filter", "EditableText \"Filter the games\" <Games>"},
          {"language", "ComboBox \"English\" <Language:>"},
          {"commandLine", "EditableText \"Command:\" <Command:>"}}},
    };
    for (const auto& [row, expected] : pages) {
        window->showGame(std::max(row, 0));
        QApplication::processEvents();
        QWidget* within = row < 0 ? static_cast<QWidget*>(window.get()) : window->page(row);
        for (const auto& [name, reads] : expected)
            EXPECT_EQ(read(within->findChild<QWidget*>(QLatin1String(name))), QLatin1String(reads))
                << name << " on page " << row;
    }

    // Choosing an option button through the screen reader goes through the model.
    // Qt keeps no group of its own: only the model can have deselected High detail.
    QWidget* emberfall = window->page(0);
    QAccessible::queryAccessibleInterface(emberfall->findChild<QWidget*>(u"Option1(1)"_s))
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_EQ(read(emberfall->findChild<QWidget*>(u"Option1(2)"_s)),
              u"RadioButton \"High detail\" unchecked <Video>"_s);
}

TEST(LauncherAccessibility, AChangedStatusLineTellsTheScreenReader)
{
    // Qt sends accessibility events only to a bridge that is on.
    if (qEnvironmentVariableIsEmpty("QT_LINUX_ACCESSIBILITY_ALWAYS_ON"))
        GTEST_SKIP() << "no accessibility bus; scripts/atspi-session.sh provides one";
    const QTemporaryDir settings;
    auto window = sampleLauncher(settings);
    window->showGame(0);
    ASSERT_TRUE(QTest::qWaitFor([] { return QAccessible::isActive(); }, 10000));
    static QStringList announced;
    const auto previous = QAccessible::installUpdateHandler([](QAccessibleEvent* event) {
        if (event->type() == QAccessible::NameChanged &&
            event->object()->objectName() == u"lblStatus"_s)
            announced << event->accessibleInterface()->text(QAccessible::Name);
    });
    QTest::keyClicks(window->page(0)->findChild<QLineEdit*>(u"txtPath"_s), u"/nowhere"_s);
    QAccessible::installUpdateHandler(previous);
    EXPECT_EQ(announced.value(announced.size() - 1), window->page(0)->control().qpGameStatus());
}
