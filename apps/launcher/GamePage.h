#pragma once

#include "LauncherConfig.h"

#include <QWidget>

#include <memory>

class qForms;

namespace qf {
class ControlView;
class SettingsStore;
} // namespace qf

// One game page: an options control for the game, shown in its view.
class GamePage : public QWidget {
    Q_OBJECT
public:
    GamePage(GameEntry game, QString hostFolder, std::shared_ptr<qf::SettingsStore> store,
             QWidget* parent = nullptr);
    ~GamePage() override;

    const GameEntry& game() const { return m_game; }
    qForms& control() { return *m_control; }
    bool isOpen() const { return m_open; }

    // Builds the page and restores the stored choices, the first time only.
    void open(int language);
    // Stores the choices on the page; returns why the settings file could not
    // be written, or an empty text when it was.
    QString save();
    // Captions the page in another language, keeping the choices on it.
    void setLanguage(int language);
    // The command the launcher would start for the game with these choices.
    QString commandLine() const;

signals:
    // The status line or a choice that goes into the command line changed.
    void changed();

private:
    void configure(int language);

    GameEntry m_game;
    QString m_hostFolder;
    std::shared_ptr<qf::SettingsStore> m_store;
    std::unique_ptr<qForms> m_control;
    qf::ControlView* m_view = nullptr;
    bool m_open = false;
};
