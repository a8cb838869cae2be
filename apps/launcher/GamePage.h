#pragma once

#include "LauncherConfig.h"
#include "launch/Launch.h"

#include <QWidget>

#include <memory>

class qForms;

namespace qf {
class ControlView;
class MessageBox;
class SettingsStore;
} // namespace qf

// What every game page shares with the window.
struct PageServices {
    std::shared_ptr<qf::SettingsStore> store;
    std::shared_ptr<qf::MessageBox> messages;
    // The program that opens a config file.
    QString editor = QStringLiteral("xdg-open");
};

// One game page: an options control for the game, shown in its view.
class GamePage : public QWidget {
    Q_OBJECT
public:
    GamePage(GameEntry game, QString hostFolder, PageServices services, QWidget* parent = nullptr);
    ~GamePage() override;

    // Sets the control's properties for the game, all but the language, in the
    // order the control relies on.
    static void configure(qForms& control, const GameEntry& game, const QString& hostFolder);

    const GameEntry& game() const { return m_game; }
    qForms& control() { return *m_control; }
    const qForms& control() const { return *m_control; }
    qf::ControlView& view() { return *m_view; }
    bool isOpen() const { return m_open; }

    // Builds the page and restores the stored choices, the first time only.
    void open(int language);
    // Stores the choices on the page; returns why the settings file could not
    // be written, or an empty text when it was.
    QString save();
    // Captions the page in another language, keeping the choices on it.
    void setLanguage(int language);
    // How the game starts with the choices on the page and the routes of its
    // game data file.
    qf::launch::LaunchDescription launch(const qf::launch::LaunchOptions& options) const;

signals:
    // The status line or a choice that goes into the command line changed.
    void changed();
    // A save found the settings file damaged and kept it as found at copyPath.
    void settingsFileDamaged(const QString& copyPath);

private:
    void build(int language);
    // Raises changed(), but once at the end while the page builds or restores
    // itself: each change would recompute the game's command line.
    void notify();

    GameEntry m_game;
    QString m_hostFolder;
    PageServices m_services;
    std::unique_ptr<qForms> m_control;
    qf::ControlView* m_view = nullptr;
    bool m_open = false;
    int m_quiet = 0;
    int m_language = 0;
};
