#include "GamePage.h"

#include "MemorySettingsStore.h"
#include "control/qForms.h"
#include "view/ControlView.h"

#include "platform/DesktopProgramStarter.h"
#include "platform/MessageBox.h"
#include <QVBoxLayout>

GamePage::GamePage(GameEntry game, QString hostFolder, PageServices services, QWidget* parent)
    : QWidget(parent), m_game(std::move(game)), m_hostFolder(std::move(hostFolder)),
      m_services(std::move(services)), m_control(std::make_unique<qForms>())
{
    m_control->setSettingsStore(m_services.store);
    m_control->setComponentFolder(m_hostFolder);
    m_control->setMessageBox(m_services.messages);
    m_control->setProgramStarter(
        std::make_shared<qf::DesktopProgramStarter>(m_services.editor));
    connect(m_control.get(), &qForms::editorStartFailed, this,
            [this](const QString& file, const QString& reason) {
                m_services.messages->show(
                    tr("The config file %1 could not be opened in an editor.\n%2\n"
                       "Install a desktop opener and a text editor (Debian: xdg-utils and "
                       "gedit or kate), then press Edit again.")
                        .arg(file, reason),
                    48, tr("Edit"));
            });
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    m_view = new qf::ControlView(*m_control, this);
    layout->addWidget(m_view);
    layout->addStretch();

    qf::ControlWidgets& w = m_control->widgets();
    connect(m_control.get(), &qForms::StatusChange, this, &GamePage::notify);
    connect(m_control.get(), &qForms::settingsFileDamaged, this, &GamePage::settingsFileDamaged);
    w.txtPath.change.connect([this] { notify(); });
    w.txtCLP.change.connect([this] { notify(); });
    w.comModSelect.click.connect([this] { notify(); });
    w.lstConfig.changed.connect([this](qf::Property) { notify(); });
    w.chkModCheck.changed.connect([this](qf::Property property) {
        if (property == qf::Property::Value)
            notify();
    });
}

GamePage::~GamePage()
{
    // The view goes before the control it shows.
    delete m_view;
}

// The game name goes before the program (config list) and the language
// (captions); host folder, game data and language before the build.
void GamePage::configure(qForms& control, const GameEntry& game, const QString& hostFolder)
{
    control.setAppPath(hostFolder);
    control.setQpGameName(game.name);
    control.setQpQGD(game.gameData);
    control.setQpGameBase(game.base);
    try {
        control.setQpVersionType(game.versionType);
    } catch (const std::exception&) {
        control.setQpVersionType(QStringLiteral("0"));
    }
    control.setQpUseModSelection(game.modSelection);
    control.setQpUseAdditionalCommandLineParameters(game.commandLineParameters);
    control.setQpUseConfigs(game.configs);
    control.setQpGameApplication(game.application);
}

void GamePage::build(int language)
{
    configure(*m_control, m_game, m_hostFolder);
    m_language = language;
    try {
        m_control->setQpLanguageIndex(qint16(language));
    } catch (const std::exception& error) {
        m_services.messages->show(tr("The texts of this language could not be loaded:\n%1")
                                      .arg(QString::fromUtf8(error.what())),
                                  48, m_game.name);
    }
    m_control->qInitCustomControls();
    // Every option may reach the game's command line through a route.
    const auto watch = [this](qf::Widget& option) {
        option.changed.connect([this](qf::Property property) {
            if (property == qf::Property::Value || property == qf::Property::Text ||
                property == qf::Property::ListIndex)
                notify();
        });
    };
    const qf::ControlWidgets& w = m_control->widgets();
    w.Check1.forEach(watch);
    w.Option1.forEach(watch);
    w.Combo1.forEach(watch);
    w.Text1.forEach(watch);
}

void GamePage::open(int language)
{
    if (m_open)
        return;
    m_open = true;
    ++m_quiet;
    build(language);
    m_control->qLoadSettings();
    // No stored folder runs no check; the status line should still say so.
    if (m_control->qpGameStatusColour().isEmpty())
        m_control->qCheckGame();
    --m_quiet;
    emit changed();
}

QString GamePage::save()
{
    if (!m_open)
        return {};
    QString failure;
    const auto connection = connect(m_control.get(), &qForms::settingsSaveFailed, this,
                                    [&failure](const QString& message) { failure = message; });
    m_control->qSaveSettings();
    disconnect(connection);
    return failure;
}

void GamePage::setLanguage(int language)
{
    if (!m_open || language == m_language)
        return;
    // Option widgets take their captions when they are built: park the
    // choices, build the page anew, and put them back.
    ++m_quiet;
    auto parked = std::make_shared<MemorySettingsStore>();
    m_control->setSettingsStore(parked);
    m_control->qSaveSettings();
    m_control->qClear();
    build(language);
    m_control->qLoadSettings();
    m_control->setSettingsStore(m_services.store);
    // The folder text came back unchanged, so no check ran: run one for the
    // status line's text in the new language.
    m_control->qCheckGame();
    --m_quiet;
    emit changed();
}

void GamePage::notify()
{
    if (m_quiet == 0)
        emit changed();
}

qf::launch::LaunchDescription GamePage::launch(const qf::launch::LaunchOptions& options) const
{
    return qf::launch::describeLaunch(*m_control, options);
}
