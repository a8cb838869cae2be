#pragma once

#include "LauncherConfig.h"

#include <QMainWindow>

#include <memory>

class GamePage;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QStackedWidget;

namespace qf {
class SettingsStore;
}

// A small host launcher: a list of games, one page with an options control per
// game, the language of the controls' texts, and OK to keep the choices.
class LauncherWindow : public QMainWindow {
    Q_OBJECT
public:
    LauncherWindow(const QString& hostFolder, const QList<GameEntry>& games,
                   std::shared_ptr<qf::SettingsStore> store, QWidget* parent = nullptr);
    ~LauncherWindow() override;

    // Shows the page of the game at that row of the list, opening it.
    void showGame(int row);
    GamePage* page(int row) const;
    int languageIndex() const;
    void setLanguageIndex(int index);

    // OK: every opened page stores its choices, then the window closes. When
    // the settings file cannot be written the window stays, with the choices
    // on it and the reason below them, and OK tries again.
    void accept();

private:
    void updateGameItem(int row);
    void updateCommandLine();

    std::shared_ptr<qf::SettingsStore> m_store;
    QListWidget* m_games = nullptr;
    QStackedWidget* m_pages = nullptr;
    QComboBox* m_language = nullptr;
    QLineEdit* m_commandLine = nullptr;
    QLabel* m_saveFailure = nullptr;
};
