#include "LauncherWindow.h"

#include "GameLog.h"
#include "GamePage.h"
#include "GameRun.h"
#include "GameStatusCheck.h"
#include "LauncherLanguage.h"
#include "WindowsPrograms.h"
#include "control/qForms.h"
#include "platform/MessageBox.h"
#include "platform/SettingsStore.h"
#include "view/ControlView.h"
#include "view/QtMessageBox.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QDesktopServices>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QSettings>
#include <QShowEvent>
#include <QStackedWidget>
#include <QUrl>
#include <QVBoxLayout>

// Every page shares it, so a message box set later reaches pages built earlier.
class ForwardingMessageBox : public qf::MessageBox {
public:
    void show(const QString& text, int style, const QString& title) override
    {
        if (target)
            target->show(text, style, title);
    }
    std::shared_ptr<qf::MessageBox> target;
};

namespace {

// Games checked per turn of the event loop while the list fills in its colours.
constexpr int ChecksPerTurn = 25;
constexpr int LogLinesShown = 12;

const QIcon& statusIcon(const QString& colourName)
{
    static QHash<QString, QIcon> icons;
    auto found = icons.find(colourName);
    if (found == icons.end()) {
        QPixmap pixmap(14, 14);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::darkGray);
        painter.setBrush(colourName.isEmpty() ? QColor(Qt::lightGray) : QColor(colourName));
        painter.drawEllipse(1, 1, 12, 12);
        found = icons.insert(colourName, QIcon(pixmap));
    }
    return *found;
}

QSettings windowMemory()
{
    return QSettings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("qforms-launcher"));
}

} // namespace

LauncherWindow::LauncherWindow(const QString& hostFolder, const LauncherConfig& config,
                               std::shared_ptr<qf::SettingsStore> store, QWidget* parent)
    : QMainWindow(parent), m_hostFolder(hostFolder), m_games(config.games),
      m_windowsRunner(config.windowsRunner), m_store(std::move(store)),
      m_messages(std::make_shared<ForwardingMessageBox>()),
      m_statusCheck(std::make_unique<GameStatusCheck>(hostFolder, m_store))
{
    m_messages->target = std::make_shared<qf::QtMessageBox>(this);
    setWindowTitle(QStringLiteral("Quillmarsh 2"));
    auto* central = new QWidget(this);
    auto* layout = new QVBoxLayout(central);

    auto* header = new QHBoxLayout;
    m_filterLabel = new QLabel(central);
    header->addWidget(m_filterLabel);
    m_filter = new QLineEdit(central);
    m_filter->setObjectName(QStringLiteral("filter"));
    m_filter->setClearButtonEnabled(true);
    m_filter->setFixedWidth(150 - m_filterLabel->sizeHint().width());
    m_filterLabel->setBuddy(m_filter);
    header->addWidget(m_filter);
    header->addStretch();
    m_languageLabel = new QLabel(central);
    header->addWidget(m_languageLabel);
    m_language = new QComboBox(central);
    m_language->setObjectName(QStringLiteral("language"));
    for (const LauncherLanguage& language : launcherLanguages())
        m_language->addItem(language.name, language.index);
    m_languageLabel->setBuddy(m_language);
    header->addWidget(m_language);
    layout->addLayout(header);

    auto* body = new QHBoxLayout;
    m_list = new QListWidget(central);
    m_list->setObjectName(QStringLiteral("games"));
    m_list->setFixedWidth(190);
    m_list->setUniformItemSizes(true);
    for (const GameEntry& game : m_games)
        m_list->addItem(new QListWidgetItem(statusIcon({}), game.name));
    m_pageOf.resize(m_games.size(), nullptr);
    m_colourOf.resize(m_games.size());
    m_pages = new QStackedWidget(central);
    m_noGame = new QLabel(m_pages);
    m_noGame->setObjectName(QStringLiteral("noGame"));
    m_noGame->setAlignment(Qt::AlignCenter);
    m_pages->addWidget(m_noGame);
    body->addWidget(m_list);
    body->addWidget(m_pages, 1);
    layout->addLayout(body);

    auto* commandRow = new QHBoxLayout;
    m_commandLabel = new QLabel(central);
    commandRow->addWidget(m_commandLabel);
    m_commandLine = new QLineEdit(central);
    m_commandLine->setReadOnly(true);
    m_commandLine->setObjectName(QStringLiteral("commandLine"));
    m_commandLabel->setBuddy(m_commandLine);
    commandRow->addWidget(m_commandLine);
    layout->addLayout(commandRow);

    m_saveFailure = new QLabel(central);
    m_saveFailure->setObjectName(QStringLiteral("saveFailure"));
    m_saveFailure->setStyleSheet(QStringLiteral("color: #b00000"));
    m_saveFailure->setWordWrap(true);
    m_saveFailure->hide();
    layout->addWidget(m_saveFailure);

    auto* buttons = new QHBoxLayout;
    m_play = new QPushButton(central);
    m_play->setObjectName(QStringLiteral("play"));
    m_log = new QPushButton(central);
    m_log->setObjectName(QStringLiteral("openLog"));
    m_ok = new QPushButton(central);
    m_ok->setObjectName(QStringLiteral("ok"));
    m_ok->setDefault(true);
    m_cancel = new QPushButton(central);
    m_cancel->setObjectName(QStringLiteral("cancel"));
    buttons->addWidget(m_play);
    buttons->addWidget(m_log);
    buttons->addStretch();
    buttons->addWidget(m_ok);
    buttons->addWidget(m_cancel);
    layout->addLayout(buttons);
    setCentralWidget(central);
    retranslate();

    connect(m_play, &QPushButton::clicked, this, &LauncherWindow::play);
    connect(m_log, &QPushButton::clicked, this, &LauncherWindow::openLog);
    connect(m_ok, &QPushButton::clicked, this, &LauncherWindow::accept);
    connect(m_cancel, &QPushButton::clicked, this, &QWidget::close);
    connect(m_filter, &QLineEdit::textChanged, this, &LauncherWindow::filter);
    connect(m_list, &QListWidget::currentRowChanged, this, [this](int row) {
        if (row < 0)
            showNoGame();
        else
            showGame(row);
    });
    connect(m_list, &QListWidget::itemActivated, this, [this](QListWidgetItem* item) {
        if (showGame(m_list->row(item)))
            play();
    });
    connect(m_language, &QComboBox::currentIndexChanged, this, [this] {
        applyLauncherLanguage(languageIndex());
        windowMemory().setValue(QStringLiteral("Window/Language"), languageIndex());
        retranslate();
        for (GamePage* opened : std::as_const(m_pageOf))
            if (opened)
                opened->setLanguage(languageIndex());
        updateTabOrder();
    });

    m_checkTimer.setInterval(0);
    connect(&m_checkTimer, &QTimer::timeout, this, &LauncherWindow::checkSomeGames);

    const QSize size = windowMemory().value(QStringLiteral("Window/Size")).toSize();
    if (size.isValid())
        resize(size);
}

LauncherWindow::~LauncherWindow()
{
    // Games still running go on without the launcher; nobody is left to tell
    // how they end.
    for (GameRun* run : std::as_const(m_runs)) {
        disconnect(run, nullptr, this, nullptr);
        delete run;
    }
}

void LauncherWindow::setMessageBox(std::shared_ptr<qf::MessageBox> messages)
{
    m_messages->target = std::move(messages);
}

void LauncherWindow::setEditor(const QString& editor)
{
    m_editor = editor;
}

void LauncherWindow::retranslate()
{
    m_filterLabel->setText(tr("&Games"));
    m_filter->setPlaceholderText(tr("Filter"));
    m_filter->setAccessibleName(tr("Filter the games"));
    m_list->setAccessibleName(tr("Games"));
    m_languageLabel->setText(tr("&Language:"));
    m_commandLabel->setText(tr("Co&mmand:"));
    m_play->setText(tr("&Play"));
    m_log->setText(tr("Game &log"));
    m_ok->setText(tr("&OK"));
    m_cancel->setText(tr("&Cancel"));
    m_noGame->setText(tr("No game matches the filter."));
    for (int row = 0; row < m_list->count(); ++row)
        updateGameItem(row);
}

void LauncherWindow::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QMainWindow::changeEvent(event);
}

void LauncherWindow::showEvent(QShowEvent* event)
{
    // The dots fill in once the window is up, a few games per turn.
    if (m_statusCheck && !m_checkTimer.isActive())
        m_checkTimer.start();
    QMainWindow::showEvent(event);
}

void LauncherWindow::closeEvent(QCloseEvent* event)
{
    windowMemory().setValue(QStringLiteral("Window/Size"), size());
    QMainWindow::closeEvent(event);
}

int LauncherWindow::rememberedGame() const
{
    const QString name = windowMemory().value(QStringLiteral("Window/LastGame")).toString();
    for (int row = 0; row < m_games.size(); ++row)
        if (m_games.at(row).name == name)
            return row;
    return -1;
}

int LauncherWindow::rememberedLanguage() const
{
    bool ok = false;
    const int language = windowMemory().value(QStringLiteral("Window/Language")).toInt(&ok);
    return ok && isLauncherLanguage(language) ? language : 0;
}

GamePage* LauncherWindow::page(int row) const
{
    return row >= 0 && row < m_pageOf.size() ? m_pageOf.at(row) : nullptr;
}

int LauncherWindow::builtPageCount() const
{
    return m_pages->count() - 1; // not the one for no game
}

int LauncherWindow::gameCount() const
{
    return int(m_games.size());
}

int LauncherWindow::currentGame() const
{
    return m_list->currentRow();
}

QString LauncherWindow::listColour(int row) const
{
    return m_colourOf.value(row);
}

int LauncherWindow::languageIndex() const
{
    return m_language->currentData().toInt();
}

void LauncherWindow::setLanguageIndex(int index)
{
    const int item = m_language->findData(index);
    if (item >= 0)
        m_language->setCurrentIndex(item);
}

bool LauncherWindow::showGame(int row)
{
    if (row < 0 || row >= m_games.size())
        return false;
    GamePage*& shown = m_pageOf[row];
    if (!shown) {
        shown =
            new GamePage(m_games.at(row), m_hostFolder, {m_store, m_messages, m_editor}, m_pages);
        m_pages->addWidget(shown);
        connect(shown, &GamePage::settingsFileDamaged, this, [this](const QString& copy) {
            tell(tr("Your settings file held lines that could not be read as they were meant, "
                    "such as a quote that was never closed. Your choices were saved, and the file "
                    "as it was is kept in %1.")
                     .arg(copy),
                 48);
        });
        connect(shown, &GamePage::changed, this, [this, row] {
            updateGameItem(row);
            if (row == currentGame())
                updateCommandLine();
        });
    }
    if (currentGame() != row)
        m_list->setCurrentRow(row); // comes back here
    m_pages->setCurrentWidget(shown);
    shown->open(languageIndex());
    QSettings memory = windowMemory();
    if (memory.value(QStringLiteral("Window/LastGame")).toString() != m_games.at(row).name)
        memory.setValue(QStringLiteral("Window/LastGame"), m_games.at(row).name);
    updateGameItem(row);
    updateCommandLine();
    updateButtons();
    updateTabOrder();
    return true;
}

void LauncherWindow::checkSomeGames()
{
    for (int checked = 0; checked < ChecksPerTurn && m_nextCheck < m_games.size(); ++m_nextCheck) {
        if (m_pageOf.at(m_nextCheck))
            continue; // an open page colours its own dot
        m_colourOf[m_nextCheck] = m_statusCheck->colourOf(m_games.at(m_nextCheck));
        updateGameItem(m_nextCheck);
        ++checked;
    }
    if (m_nextCheck >= m_games.size()) {
        m_checkTimer.stop();
        m_statusCheck.reset();
    }
}

void LauncherWindow::checkRemainingGames()
{
    while (m_statusCheck)
        checkSomeGames();
}

void LauncherWindow::updateGameItem(int row)
{
    QListWidgetItem* item = m_list->item(row);
    if (!item)
        return;
    if (GamePage* opened = page(row); opened && opened->isOpen())
        m_colourOf[row] = opened->control().qpGameStatusColour();
    item->setIcon(statusIcon(m_colourOf.at(row)));
    const QString& name = m_games.at(row).name;
    item->setText(isRunning(row) ? tr("%1 (running)").arg(name) : name);
}

qf::launch::LaunchDescription LauncherWindow::launchOf(int row) const
{
    const GamePage* shown = page(row);
    if (!shown)
        return {};
    // The runner found, or the one wanted, to show what Play would start.
    const QString runner = findWindowsRunner(m_windowsRunner);
    return shown->launch({runner.isEmpty() ? wantedWindowsRunner(m_windowsRunner) : runner, {}});
}

void LauncherWindow::updateCommandLine()
{
    const qf::launch::LaunchDescription launch = launchOf(currentGame());
    m_commandLine->setText(launch.gameProgram.isEmpty() ? QString() : launch.text());
    m_commandLine->setCursorPosition(0); // the program first
}

void LauncherWindow::updateButtons()
{
    m_play->setEnabled(page(currentGame()) && !isRunning(currentGame()));
}

void LauncherWindow::updateTabOrder()
{
    QList<QWidget*> order{m_filter, m_list};
    if (GamePage* current = page(currentGame()))
        order << current->view().focusChain();
    order << m_commandLine << m_play << m_log << m_ok << m_cancel << m_language;
    for (qsizetype i = 1; i < order.size(); ++i)
        setTabOrder(order.at(i - 1), order.at(i));
}

void LauncherWindow::filter(const QString& text)
{
    int firstShown = -1;
    for (int row = 0; row < m_list->count(); ++row) {
        const bool hidden = !m_games.at(row).name.contains(text.trimmed(), Qt::CaseInsensitive);
        m_list->item(row)->setHidden(hidden);
        if (!hidden && firstShown < 0)
            firstShown = row;
    }
    // The page of a game the list no longer shows goes too.
    const int current = currentGame();
    if (current >= 0 && m_list->item(current)->isHidden()) {
        if (firstShown >= 0)
            showGame(firstShown);
        else
            m_list->setCurrentRow(-1); // comes back to showNoGame
    }
}

void LauncherWindow::showNoGame()
{
    m_pages->setCurrentWidget(m_noGame);
    updateCommandLine();
    updateButtons();
    updateTabOrder();
}

bool LauncherWindow::isRunning(int row) const
{
    return m_runs.contains(row);
}

void LauncherWindow::tell(const QString& text, int style)
{
    m_messages->show(text, style, QStringLiteral("Quillmarsh 2"));
}

void LauncherWindow::play()
{
    const int row = currentGame();
    GamePage* current = page(row);
    if (!current || isRunning(row))
        return;
    const GameEntry& game = m_games.at(row);
    saveOpenedPages(); // a failed save is shown; the game starts all the same
    qf::launch::LaunchDescription launch = launchOf(row);
    if (launch.gameProgram.isEmpty()) {
        tell(tr("%1 cannot start: no folder or program is chosen. Choose the game's folder or "
                "program on its page.")
                 .arg(game.name),
             48);
        return;
    }
    if (!QFileInfo(launch.gameProgram).isFile()) {
        tell(tr("%1 cannot start: its program %2 was not found. Choose the game's folder or "
                "program on its page.")
                 .arg(game.name, launch.gameProgram),
             48);
        return;
    }
    if (launch.windowsProgram && findWindowsRunner(m_windowsRunner).isEmpty()) {
        tell(tr("%1 is a Windows program and needs Wine, but %2 was not found.\n"
                "Install Wine (Debian: sudo apt install wine), or name another Wine build "
                "in the QFORMS_WINE environment variable or as WindowsRunner in the "
                "[Launcher] section of launcher.ini.")
                 .arg(game.name, wantedWindowsRunner(m_windowsRunner)),
             16);
        return;
    }
    auto* run = new GameRun(std::move(launch), gameLogFile(game.name), this);
    m_runs.insert(row, run);
    connect(run, &GameRun::ended, this, [this, row, run](const QString& problem) {
        m_runs.remove(row);
        run->deleteLater();
        updateGameItem(row);
        updateButtons();
        if (problem.isEmpty())
            return;
        const QString last = lastLines(run->logFile(), LogLinesShown);
        tell(tr("%1: %2").arg(m_games.at(row).name, problem) +
                 (last.isEmpty() ? QString() : tr("\n\nThe last lines it printed:\n%1").arg(last)) +
                 tr("\n\nEverything it printed is in %1.").arg(run->logFile()),
             16);
    });
    updateGameItem(row);
    updateButtons();
    run->start();
}

void LauncherWindow::openLog()
{
    const int row = currentGame();
    if (row < 0)
        return;
    const QString log = gameLogFile(m_games.at(row).name);
    if (!QFileInfo::exists(log))
        tell(tr("%1 has no log yet: it is written when the game is started with Play.")
                 .arg(m_games.at(row).name),
             64);
    else if (!QDesktopServices::openUrl(QUrl::fromLocalFile(log)))
        tell(tr("The log %1 could not be opened. Install a desktop opener (Debian: xdg-utils).")
                 .arg(log),
             48);
}

void LauncherWindow::accept()
{
    if (saveOpenedPages())
        close();
}

bool LauncherWindow::saveOpenedPages()
{
    // The pages share one store, so a failed write fails again for each page.
    QStringList failures;
    for (GamePage* opened : std::as_const(m_pageOf))
        if (opened)
            if (const QString failure = opened->save(); !failure.isEmpty())
                failures.append(failure);
    failures.removeDuplicates();
    m_saveFailure->setVisible(!failures.isEmpty());
    m_saveFailure->setText(
        tr("Your choices were not kept. %1\nPress OK to try again.").arg(failures.join(u'\n')));
    return failures.isEmpty();
}
