#pragma once

#include "LauncherConfig.h"
#include "launch/Launch.h"

#include <QHash>
#include <QList>
#include <QMainWindow>
#include <QTimer>

#include <memory>

class GamePage;
class GameRun;
class GameStatusCheck;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QStackedWidget;

namespace qf {
class MessageBox;
class SettingsStore;
} // namespace qf

// A small host launcher: a filterable list of games, one page with an options
// control per game (built when the game is first shown), the language of all
// texts, the command the game starts with, Play, and OK to keep the choices.
class LauncherWindow : public QMainWindow {
    Q_OBJECT
public:
    LauncherWindow(const QString& hostFolder, const LauncherConfig& config,
                   std::shared_ptr<qf::SettingsStore> store, QWidget* parent = nullptr);
    ~LauncherWindow() override;

    // Messages to the person; a QMessageBox over the window unless replaced.
    void setMessageBox(std::shared_ptr<qf::MessageBox> messages);
    // The program that opens config files; for pages opened after the call.
    void setEditor(const QString& editor);

    // Shows the page of the game at that row of the list, building it the
    // first time; false when there is no such game.
    bool showGame(int row);
    int currentGame() const;
    int gameCount() const;
    // The page of the game; nullptr while it was never shown.
    GamePage* page(int row) const;
    int builtPageCount() const;
    // The colour of the game's dot in the list; empty until it was checked.
    QString listColour(int row) const;
    // Checks the games whose dot is still grey now rather than bit by bit.
    void checkRemainingGames();

    int languageIndex() const;
    void setLanguageIndex(int index);

    // The game that was shown last when the window closed; -1 for none.
    int rememberedGame() const;
    // The language chosen last; 0 (English) when none was.
    int rememberedLanguage() const;

    // How the game at that row starts now; empty while its page was never shown.
    qf::launch::LaunchDescription launchOf(int row) const;
    // Starts the shown game, unless it runs already.
    void play();
    bool isRunning(int row) const;

    // OK: every opened page stores its choices, then the window closes. When
    // the settings file cannot be written the window stays, with the choices
    // on it and the reason below them, and OK tries again.
    void accept();

protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void retranslate();
    // Saves every opened page; false, with the reason shown, when a save failed.
    bool saveOpenedPages();
    void updateGameItem(int row);
    void updateCommandLine();
    void updateButtons();
    void updateTabOrder();
    void checkSomeGames();
    void filter(const QString& text);
    void showNoGame();
    void openLog();
    void tell(const QString& text, int style);

    QString m_hostFolder;
    QList<GameEntry> m_games;
    QString m_windowsRunner;
    std::shared_ptr<qf::SettingsStore> m_store;
    std::shared_ptr<class ForwardingMessageBox> m_messages;
    QString m_editor = QStringLiteral("xdg-open");
    QList<GamePage*> m_pageOf;
    QList<QString> m_colourOf;
    std::unique_ptr<GameStatusCheck> m_statusCheck;
    int m_nextCheck = 0;
    QTimer m_checkTimer;
    QHash<int, GameRun*> m_runs;

    QLabel* m_filterLabel = nullptr;
    QLineEdit* m_filter = nullptr;
    QListWidget* m_list = nullptr;
    QStackedWidget* m_pages = nullptr;
    QLabel* m_noGame = nullptr;
    QLabel* m_languageLabel = nullptr;
    QComboBox* m_language = nullptr;
    QLabel* m_commandLabel = nullptr;
    QLineEdit* m_commandLine = nullptr;
    QPushButton* m_play = nullptr;
    QPushButton* m_log = nullptr;
    QPushButton* m_ok = nullptr;
    QPushButton* m_cancel = nullptr;
    QLabel* m_saveFailure = nullptr;
};
