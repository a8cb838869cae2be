#include "GamePage.h"

#include "MemorySettingsStore.h"
#include "control/qForms.h"
#include "toolkit/qt/ControlView.h"

#include <QMessageBox>
#include <QProcess>
#include <QVBoxLayout>

GamePage::GamePage(GameEntry game, QString hostFolder, std::shared_ptr<qf::SettingsStore> store,
                   QWidget* parent)
    : QWidget(parent), m_game(std::move(game)), m_hostFolder(std::move(hostFolder)),
      m_store(std::move(store)), m_control(std::make_unique<qForms>())
{
    m_control->setSettingsStore(m_store);
    m_control->setComponentFolder(m_hostFolder);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    m_view = new qf::ControlView(*m_control, this);
    layout->addWidget(m_view);
    layout->addStretch();

    qf::ControlWidgets& w = m_control->widgets();
    connect(m_control.get(), &qForms::StatusChange, this, &GamePage::changed);
    w.txtPath.change.connect([this] { emit changed(); });
    w.txtCLP.change.connect([this] { emit changed(); });
    w.comModSelect.click.connect([this] { emit changed(); });
    w.lstConfig.changed.connect([this](qf::Property) { emit changed(); });
}

GamePage::~GamePage()
{
    // The view goes before the control it shows.
    delete m_view;
}

// Sets the control's properties in the order the control relies on: the game
// name before the program (config list) and the language (captions), the host
// folder, game data and language before the build.
void GamePage::configure(int language)
{
    m_control->setAppPath(m_hostFolder);
    m_control->setQpGameName(m_game.name);
    m_control->setQpQGD(m_game.gameData);
    m_control->setQpGameBase(m_game.base);
    try {
        m_control->setQpVersionType(m_game.versionType);
    } catch (const std::exception&) {
        m_control->setQpVersionType(QStringLiteral("0"));
    }
    m_control->setQpUseModSelection(m_game.modSelection);
    m_control->setQpUseAdditionalCommandLineParameters(m_game.commandLineParameters);
    m_control->setQpUseConfigs(m_game.configs);
    m_control->setQpGameApplication(m_game.application);
    try {
        m_control->setQpLanguageIndex(qint16(language));
    } catch (const std::exception& error) {
        QMessageBox::warning(this, m_game.name,
                             tr("The texts of this language could not be loaded:\n%1")
                                 .arg(QString::fromUtf8(error.what())));
    }
    m_control->qInitCustomControls();
}

void GamePage::open(int language)
{
    if (m_open)
        return;
    m_open = true;
    configure(language);
    m_control->qLoadSettings();
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
    if (!m_open)
        return;
    // Option widgets take their captions when they are built: park the
    // choices, build the page anew, and put them back.
    auto parked = std::make_shared<MemorySettingsStore>();
    m_control->setSettingsStore(parked);
    m_control->qSaveSettings();
    m_control->qClear();
    configure(language);
    m_control->qLoadSettings();
    m_control->setSettingsStore(m_store);
    // The folder text came back unchanged, so no check ran: run one for the
    // status line's text in the new language.
    m_control->qCheckGame();
    emit changed();
}

QString GamePage::commandLine() const
{
    const qf::ControlWidgets& w = m_control->widgets();
    QString folder = m_control->qpGamePath();
    if (!folder.isEmpty() && !folder.endsWith(QLatin1Char('/')) &&
        !folder.endsWith(QLatin1Char('\\')))
        folder += QLatin1Char('/');
    // The program the check found: a typed program path names it, else the game's.
    const QString typed = w.txtPath.text();
    const QString program = typed.endsWith(QStringLiteral(".exe"), Qt::CaseInsensitive)
                                ? typed
                                : folder + m_game.application;
    QStringList arguments{program};
    if (m_game.modSelection && !w.comModSelect.text().isEmpty())
        arguments << QStringLiteral("+set") << QStringLiteral("fs_game") << w.comModSelect.text();
    if (m_game.configs && !w.lstConfig.fileName().isEmpty())
        arguments << QStringLiteral("+exec") << w.lstConfig.fileName();
    if (m_game.commandLineParameters)
        arguments << QProcess::splitCommand(w.txtCLP.text());
    QStringList quoted;
    for (const QString& argument : arguments)
        quoted << (argument.contains(QLatin1Char(' ')) || argument.isEmpty()
                       ? QLatin1Char('"') + argument + QLatin1Char('"')
                       : argument);
    return quoted.join(QLatin1Char(' '));
}
