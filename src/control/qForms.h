#pragma once

#include "context/ControlWidgets.h"
#include "context/SkipObserver.h"
#include "platform/FileDialog.h"
#include "platform/LanguageTextProvider.h"
#include "platform/MessageBox.h"
#include "platform/ProgramStarter.h"
#include "platform/SettingsStore.h"

#include <QMap>
#include <QObject>
#include <QString>
#include <QVariant>

#include <memory>

namespace qf {
class ControlContext;
}

/// The options control of a game launcher: one instance per game page.
///
/// The host sets the properties, then drives the control through its public
/// methods and learns the game's state from the status line and StatusChange.
/// The page is a set of widget models (widgets()) that a view such as
/// qf::ControlView shows; the player's choices live in the settings store
/// (setSettingsStore()), application qf::settings::Application, a section per
/// game name. Every method runs on the calling (GUI) thread.
///
/// Set qpGameName before qpGameApplication and qpLanguageIndex, and AppPath,
/// qpQGD and qpLanguageIndex before qInitCustomControls(). All properties and
/// methods are reachable by name through Qt's meta-object system, each with
/// its one-line description as class info.
class qForms : public QObject {
    Q_OBJECT
    Q_CLASSINFO("Description", "Quillmarsh 2 - Options Control v1.01")
    Q_CLASSINFO("qpGameName", "Name of the game.")
    Q_CLASSINFO("qpGamePath", "Path of the game.")
    Q_CLASSINFO("qpLanguageIndex", "Language identifier.")
    Q_CLASSINFO("qpUseModSelection", "Whether the control uses the mod selection controls.")
    Q_CLASSINFO("qpUseAdditionalCommandLineParameters",
                "Whether the control uses the additional command line paramter controls.")
    Q_CLASSINFO("qpUseConfigs", "Whether the control uses the config controls.")
    Q_CLASSINFO("qpGameApplication", "Application name of the game.")
    Q_CLASSINFO("qpGameStatus", "Status of the game.")
    Q_CLASSINFO("qpGameStatusColour", "Colour of detection bar.")
    Q_CLASSINFO("qpGameBase", "Base of the game.")
    Q_CLASSINFO("qpVersionType", "Version type of game. 0-None, 1-PK Based, 2-Version Extraction")
    Q_CLASSINFO("qpQGD", "Path to .qgd (Quillmarsh Game Data) file.")
    Q_CLASSINFO("AppPath", "Path of the application using this control.")
    Q_CLASSINFO("qInitCustomControls",
                "Load custom dynamic controls from .qgd file into the control.")
    Q_CLASSINFO("qClear", "Clear all data from the control and remove all dynamic controls.")
    Q_CLASSINFO("qModInit", "Initilise mod detection.")
    Q_CLASSINFO("qScanForMods", "Scan for mods.")
    Q_CLASSINFO("qSelectMod", "Load mod from registry into control.")
    Q_CLASSINFO("qSaveSettings", "Save settings of controls to the registry.")
    Q_CLASSINFO("qLoadSettings",
                "Load settings from the registry into the control and its dynamic controls.")
    Q_CLASSINFO("qCheckGame", "Check for the game.")
    Q_CLASSINFO("lblStatus_Change", "Game detection event.")
    Q_CLASSINFO("StatusChange", "Game status event.")

    /// Name of the game: the captions name it, and it is the game's section in
    /// the settings store.
    Q_PROPERTY(QString qpGameName READ qpGameName WRITE setQpGameName)
    /// Folder of the game; the game check sets it to the folder it found.
    Q_PROPERTY(QString qpGamePath READ qpGamePath WRITE setQpGamePath)
    /// Index of the language file (`Data/Languages/<index>.ini`) the texts come from.
    Q_PROPERTY(qint16 qpLanguageIndex READ qpLanguageIndex WRITE setQpLanguageIndex)
    /// Whether the page shows the mod list, the mod check box and the mod's description.
    Q_PROPERTY(bool qpUseModSelection READ qpUseModSelection WRITE setQpUseModSelection)
    /// Whether the page shows the box for extra command-line parameters.
    Q_PROPERTY(bool qpUseAdditionalCommandLineParameters READ qpUseAdditionalCommandLineParameters
                   WRITE setQpUseAdditionalCommandLineParameters)
    /// Whether the page shows the config list and its Edit button.
    Q_PROPERTY(bool qpUseConfigs READ qpUseConfigs WRITE setQpUseConfigs)
    /// The game's program, relative to the game folder ("\\" separates folders).
    Q_PROPERTY(QString qpGameApplication READ qpGameApplication WRITE setQpGameApplication)
    /// The status line: a blank, the game name and the status text.
    Q_PROPERTY(QString qpGameStatus READ qpGameStatus)
    /// "green" (found), "yellow" (no folder) or "red" (not found); empty before
    /// the first game check.
    Q_PROPERTY(QString qpGameStatusColour READ qpGameStatusColour)
    /// The game's base folder below the game folder, where its pak files are.
    Q_PROPERTY(QString qpGameBase READ qpGameBase WRITE setQpGameBase)
    /// How the version is told: "0" none, "1" from the pak files, "2" from the
    /// program's version resource; 3 and up read back as "none".
    Q_PROPERTY(QString qpVersionType READ qpVersionType WRITE setQpVersionType)
    /// File name of the game data file in `AppPath/Data`.
    Q_PROPERTY(QString qpQGD READ qpQGD WRITE setQpQGD)
    /// The host's folder, without a trailing separator; `Data` lies below it.
    Q_PROPERTY(QString AppPath READ AppPath WRITE setAppPath)
    // The player's choices, read only, for the host that starts the game.
    /// The mod chosen in the mod list.
    Q_PROPERTY(QString chosenMod READ chosenMod NOTIFY chosenModChanged)
    /// The config file chosen in the config list.
    Q_PROPERTY(QString chosenConfig READ chosenConfig NOTIFY chosenConfigChanged)
    /// The extra command-line parameters the player typed.
    Q_PROPERTY(
        QString additionalParameters READ additionalParameters NOTIFY additionalParametersChanged)
    /// The program the last game check looked for.
    Q_PROPERTY(QString programPath READ programPath NOTIFY programPathChanged)

public:
    /// An empty control: no game, the fixed widgets uncaptioned, the default services.
    /// @param parent The QObject that owns it.
    explicit qForms(QObject* parent = nullptr);
    ~qForms() override;

    /// @return The game's name as set.
    QString qpGameName() const;
    /// Sets the game's name; changes no widget until the captions are set again.
    /// @param strGameName2 The name, also the game's section in the settings store.
    void setQpGameName(const QString& strGameName2);
    /// @return The game's folder as set or as the last game check found it.
    QString qpGamePath() const;
    /// Sets the game's folder; runs no game check (the folder box does).
    /// @param strGamePath2 The folder.
    void setQpGamePath(const QString& strGamePath2);
    /// @return The language index as set.
    qint16 qpLanguageIndex() const;
    /// Sets the language and captions the fixed widgets in it, row by row.
    /// @param intL1 Index of the language file.
    /// @throws qf::TextLookupError A text is missing; the index is kept, and the
    ///         rows from the failed one on keep their old captions.
    void setQpLanguageIndex(qint16 intL1);
    /// @return Whether the mod widgets are shown.
    bool qpUseModSelection() const;
    /// Shows or hides the mod check box, the mod list and the mod's description.
    /// Raises chosenModChanged when chosenMod() changes with it.
    /// @param strUseModSelection2 True to show them.
    void setQpUseModSelection(bool strUseModSelection2);
    /// @return Whether the parameters box is shown.
    bool qpUseAdditionalCommandLineParameters() const;
    /// Shows or hides the parameters box and its caption. Raises
    /// additionalParametersChanged when additionalParameters() changes with it.
    /// @param strUseAdditionalCommandLineParameters2 True to show them.
    void setQpUseAdditionalCommandLineParameters(bool strUseAdditionalCommandLineParameters2);
    /// @return Whether the config widgets are shown.
    bool qpUseConfigs() const;
    /// Shows or hides the config list, its caption and Edit. Raises
    /// chosenConfigChanged when chosenConfig() changes with it.
    /// @param bolUseConfigs2 True to show them.
    void setQpUseConfigs(bool bolUseConfigs2);
    /// @return The game's program as set.
    QString qpGameApplication() const;
    /// Sets the game's program and lists the game's config files
    /// (`<componentFolder()>/Data/<game name>/Configs/*.cfg`), the first one
    /// selected. A missing folder leaves the list as it was; nothing is thrown.
    /// Raises chosenConfigChanged when chosenConfig() changes.
    /// @param strGameApplication2 File name relative to the game folder.
    void setQpGameApplication(const QString& strGameApplication2);
    /// @return The status line's text.
    QString qpGameStatus() const;
    /// @return "green", "yellow", "red", or empty before the first game check.
    QString qpGameStatusColour() const;
    /// @return The game's base folder as set.
    QString qpGameBase() const;
    /// Sets the game's base folder, which the version and mod lookups use.
    /// @param strGameBase2 Folder relative to the game folder.
    void setQpGameBase(const QString& strGameBase2);
    /// @return The version type as set, or "none" for a type of 3 and up.
    QString qpVersionType() const;
    /// Sets how the game check tells the version.
    /// @param strVersionType2 "0", "1" or "2"; 3 and up are stored as "none".
    /// @throws qf::TypeMismatchError The text is not a number; it stays stored as given.
    void setQpVersionType(const QString& strVersionType2);
    /// @return The game data file's name as set.
    QString qpQGD() const;
    /// Sets the game data file that qInitCustomControls() reads.
    /// @param strQGDFile2 File name in `AppPath/Data`.
    void setQpQGD(const QString& strQGDFile2);
    /// @return The host's folder as set.
    QString AppPath() const;
    /// Sets the host's folder: game data and language files are looked up below it.
    /// @param strAppPath2 The folder, without a trailing separator.
    void setAppPath(const QString& strAppPath2);

    /// @return The mod chosen in the mod list; empty for none or while the
    ///         list is off.
    QString chosenMod() const;
    /// @return The file name chosen in the config list; empty while the list is off.
    QString chosenConfig() const;
    /// @return The additional command-line parameters; empty while the box is off.
    QString additionalParameters() const;
    /// @return The program the last game check looked for, as a path of this
    ///         system (folder and program name resolved without regard to
    ///         case); empty while no folder is chosen.
    QString programPath() const;
    /// Every valued option widget's value by its ControlKey, exactly as
    /// qSaveSettings() would store it now. Reads the game data file; changes
    /// neither the page nor the store.
    /// @return Check box "0", "1" or "2", option button "True" or "False", a
    ///         combo's or text box's text; of entries that share a key the
    ///         later one wins. Empty before qInitCustomControls().
    QMap<QString, QString> optionValues() const;

    /// Builds the option widgets from section "Custom Controls" of the game
    /// data file (loads elements of the widget arrays in widgets()); the store
    /// is not read. Failing steps are skipped; nothing is thrown.
    /// @return An empty QVariant.
    Q_INVOKABLE QVariant qInitCustomControls();
    /// Forgets the game (name, path, base, game data file, version type) and
    /// unloads the option widgets, so the control can serve another game. The
    /// store is untouched.
    /// @return An empty QVariant.
    Q_INVOKABLE QVariant qClear();
    /// Checks whether the game's program is in the folder of txtPath and shows
    /// the outcome in the status line (raising StatusChange for each change),
    /// qpGameStatusColour and programPath (programPathChanged); refreshes the
    /// mods of a found game. Failing steps are skipped; nothing is thrown.
    /// @return An empty QVariant.
    Q_INVOKABLE QVariant qCheckGame();
    /// Rebuilds the mod list from the game's folders.
    /// @return An empty QVariant.
    /// @throws qf::Error A failure of the list itself; every other failing step is skipped.
    Q_INVOKABLE QVariant qScanForMods();
    /// Selects the stored mod (store key "Mod Name") when the game's program is present.
    /// @return An empty QVariant.
    Q_INVOKABLE QVariant qModInit();
    /// Selects the stored mod again, whether or not the program is present.
    /// @return An empty QVariant.
    Q_INVOKABLE QVariant qSelectMod();
    /// Writes the folder text, the switched-on fixed values and every valued
    /// option widget to the settings store, in one write of its file; the page
    /// is unchanged. Never throws: a failed write raises settingsSaveFailed,
    /// a damaged file kept aside raises settingsFileDamaged, other failing
    /// steps are skipped.
    /// @return An empty QVariant.
    Q_INVOKABLE QVariant qSaveSettings();
    /// Puts the stored values back into the widgets, which runs the game check
    /// (StatusChange) and the widgets' rules, and raises the choices' change
    /// signals. Never writes; failing steps are skipped.
    /// @return An empty QVariant.
    Q_INVOKABLE QVariant qLoadSettings();
    /// Raises StatusChange; runs on every change of the status line.
    Q_INVOKABLE void lblStatus_Change();

    /// Lets the user pick the game's program in the file dialog; the chosen
    /// path goes into txtPath, which checks the game. Cancel, a missing
    /// dialog or any failure ends it without a change.
    void cmdBrowse_Click();
    /// Runs on every change of txtPath's text: a complete game check (qCheckGame()).
    void txtPath_Change();
    /// Runs on every selection in comModSelect: shows the mod's description and
    /// sets the mod check box. Raises chosenModChanged when the mod changed.
    void comModSelect_Click();
    /// Opens the selected config file in the text editor through the program
    /// starter, or tells the user through the message box to select one.
    /// @throws qf::TextLookupError The message's text is missing.
    /// @throws qf::Error The program starter could not start the editor.
    void cmdEdit_Click();

    /// Applies the visual function rule (Tag) of a clicked option check box.
    /// @param Index Element of the check box array.
    /// @throws qf::Error The rules call each other without end.
    void Check1_Click(qint16 Index);
    /// Applies the visual function rule (Tag) of a clicked option button.
    /// @param Index Element of the option button array.
    /// @throws qf::Error The rules call each other without end.
    void Option1_Click(qint16 Index);

    // The services. Each has a default (the language files under AppPath, the
    // per-user settings file, the desktop's editor, the log for messages)
    // except the file dialog, which the Qt view or the host gives.
    /// Replaces the source of texts and file checks (default: qf::IniLanguageTextProvider).
    /// @param provider The provider; null restores the default at the next use.
    void setLanguageTextProvider(std::shared_ptr<qf::LanguageTextProvider> provider);
    /// Replaces the settings store (default: qf::IniFileSettingsStore in the
    /// per-user configuration folder).
    /// @param store The store; null restores the default at the next use.
    void setSettingsStore(std::shared_ptr<qf::SettingsStore> store);
    /// Replaces what starts the text editor (default: qf::DesktopProgramStarter).
    /// @param starter The starter; null restores the default at the next use.
    void setProgramStarter(std::shared_ptr<qf::ProgramStarter> starter);
    /// Replaces the message box (default: a warning in the log).
    /// @param box The message box; null restores the default.
    void setMessageBox(std::shared_ptr<qf::MessageBox> box);
    /// @return Whether a message box was set (the view sets one when none was).
    bool hasMessageBox() const;
    /// Sets the file dialog of cmdBrowse_Click(); there is none by default.
    /// @param dialog The dialog; null removes it.
    void setFileDialog(std::shared_ptr<qf::FileDialog> dialog);
    /// @return Whether a file dialog was set (the view sets one when none was).
    bool hasFileDialog() const;
    /// @return The folder whose `Data/<game>/Configs` holds the config files
    ///         Edit opens, and whose `Data` holds the game data file that
    ///         cmdBrowse_Click() reads for the Game Application: the host's
    ///         folder (AppPath) unless the host set another.
    QString componentFolder() const;
    /// Sets the folder that componentFolder() gives; the config list follows
    /// at the next setQpGameApplication().
    /// @param folder The folder; empty restores the default.
    void setComponentFolder(const QString& folder);

    /// Tells an observer of every step the routines skip (none by default);
    /// the control behaves the same either way. The game data lint uses it.
    /// @param observer The observer; null removes it.
    void setSkipObserver(std::shared_ptr<qf::SkipObserver> observer);

    /// The page's widget models, for a view or a host that drives them.
    /// Setting a model's value runs the same handlers as the user's input.
    /// @return The fixed widgets and the option widget arrays.
    qf::ControlWidgets& widgets();
    /// @copydoc widgets()
    const qf::ControlWidgets& widgets() const;

signals:
    /// The status line changed; read qpGameStatus and qpGameStatusColour in
    /// the handler, they belong together. Raised while the control is still working.
    void StatusChange();
    /// chosenMod() changed; raised once at the end of the method that changed it.
    /// @param mod The new value.
    void chosenModChanged(const QString& mod);
    /// chosenConfig() changed; raised once at the end of the method that changed it.
    /// @param config The new value.
    void chosenConfigChanged(const QString& config);
    /// additionalParameters() changed; raised once at the end of the method that changed it.
    /// @param parameters The new value.
    void additionalParametersChanged(const QString& parameters);
    /// programPath() changed; raised once at the end of the method that changed it.
    /// @param path The new value.
    void programPathChanged(const QString& path);
    /// A qSaveSettings() whose write of the settings file failed, once per
    /// failed write. The choices stay with the store for the next save.
    /// @param message Names the file and the system's reason.
    void settingsSaveFailed(const QString& message);
    /// A qSaveSettings() found the settings file damaged (a quote left open, a
    /// line QSettings' rules misread) and had to change lines it did not set.
    /// Raised once for each copy; the save itself went on.
    /// @param copyPath Where the file as found was kept first, byte for byte.
    void settingsFileDamaged(const QString& copyPath);
    /// Edit (cmdEdit_Click()) could not open the selected config file in the
    /// editor: the program starter could not start it (cmdEdit_Click() then
    /// throws as well), or the editor ended with an error later (raised from
    /// the event loop).
    /// @param file The config file's path on disk.
    /// @param reason Why, for a person.
    void editorStartFailed(const QString& file, const QString& reason);

private:
    // Emits the change signals of the choices that differ from what they said
    // last; inside a public method only once it ends, so that a choice the
    // method clears and sets again is not announced three times.
    void announceChoices();
    class ChoiceBatch;
    int m_choiceBatchDepth = 0;

    std::unique_ptr<qf::ControlContext> m_context;
    QString m_announcedMod;
    QString m_announcedConfig;
    QString m_announcedParameters;
    QString m_announcedProgram;
};
