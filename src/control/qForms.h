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

// The options control of a game launcher: one instance per game page. The host
// sets the properties, then drives the control through its public methods and
// learns the game's state from the status line and StatusChange.
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

    Q_PROPERTY(QString qpGameName READ qpGameName WRITE setQpGameName)
    Q_PROPERTY(QString qpGamePath READ qpGamePath WRITE setQpGamePath)
    Q_PROPERTY(qint16 qpLanguageIndex READ qpLanguageIndex WRITE setQpLanguageIndex)
    Q_PROPERTY(bool qpUseModSelection READ qpUseModSelection WRITE setQpUseModSelection)
    Q_PROPERTY(bool qpUseAdditionalCommandLineParameters READ qpUseAdditionalCommandLineParameters
                   WRITE setQpUseAdditionalCommandLineParameters)
    Q_PROPERTY(bool qpUseConfigs READ qpUseConfigs WRITE setQpUseConfigs)
    Q_PROPERTY(QString qpGameApplication READ qpGameApplication WRITE setQpGameApplication)
    Q_PROPERTY(QString qpGameStatus READ qpGameStatus)
    Q_PROPERTY(QString qpGameStatusColour READ qpGameStatusColour)
    Q_PROPERTY(QString qpGameBase READ qpGameBase WRITE setQpGameBase)
    Q_PROPERTY(QString qpVersionType READ qpVersionType WRITE setQpVersionType)
    Q_PROPERTY(QString qpQGD READ qpQGD WRITE setQpQGD)
    Q_PROPERTY(QString AppPath READ AppPath WRITE setAppPath)
    // The player's choices, read only, for the host that starts the game.
    Q_PROPERTY(QString chosenMod READ chosenMod NOTIFY chosenModChanged)
    Q_PROPERTY(QString chosenConfig READ chosenConfig NOTIFY chosenConfigChanged)
    Q_PROPERTY(
        QString additionalParameters READ additionalParameters NOTIFY additionalParametersChanged)
    Q_PROPERTY(QString programPath READ programPath NOTIFY programPathChanged)

public:
    explicit qForms(QObject* parent = nullptr);
    ~qForms() override;

    QString qpGameName() const;
    void setQpGameName(const QString& strGameName2);
    QString qpGamePath() const;
    void setQpGamePath(const QString& strGamePath2);
    qint16 qpLanguageIndex() const;
    // Re-captions the fixed widgets; a failed text lookup ends the call there.
    void setQpLanguageIndex(qint16 intL1);
    bool qpUseModSelection() const;
    void setQpUseModSelection(bool strUseModSelection2);
    bool qpUseAdditionalCommandLineParameters() const;
    void setQpUseAdditionalCommandLineParameters(bool strUseAdditionalCommandLineParameters2);
    bool qpUseConfigs() const;
    void setQpUseConfigs(bool bolUseConfigs2);
    QString qpGameApplication() const;
    void setQpGameApplication(const QString& strGameApplication2);
    QString qpGameStatus() const;
    QString qpGameStatusColour() const;
    QString qpGameBase() const;
    void setQpGameBase(const QString& strGameBase2);
    QString qpVersionType() const;
    // A text that is not a number throws qf::TypeMismatchError and stays stored.
    void setQpVersionType(const QString& strVersionType2);
    QString qpQGD() const;
    void setQpQGD(const QString& strQGDFile2);
    QString AppPath() const;
    void setAppPath(const QString& strAppPath2);

    // The mod chosen in the mod list; empty for none or while the list is off.
    QString chosenMod() const;
    // The file name chosen in the config list; empty while the list is off.
    QString chosenConfig() const;
    // The additional command-line parameters; empty while the box is off.
    QString additionalParameters() const;
    // The program the last game check looked for, as a path of this system
    // (folder and program name resolved without regard to case); empty while
    // no folder is chosen.
    QString programPath() const;
    // Every valued option widget's value by its ControlKey, exactly as
    // qSaveSettings() would store it now (check box "0", "1" or "2", option
    // button "True" or "False", a combo's or text box's text; of entries that
    // share a key the later one wins). Reads the game data file; changes
    // neither the page nor the store. Empty before qInitCustomControls().
    QMap<QString, QString> optionValues() const;

    // Builds the dynamic widgets from section "Custom Controls" of the game
    // data file. Failing steps are skipped; nothing is reported.
    Q_INVOKABLE QVariant qInitCustomControls();
    // Forgets the game (name, path, base, game data file, version type) and
    // unloads the dynamic widgets, so the control can serve another game.
    Q_INVOKABLE QVariant qClear();
    // Checks whether the game's program is in the folder of txtPath and shows
    // the outcome in the status line; refreshes the mods of a found game.
    // Failing steps are skipped; nothing reaches the caller.
    Q_INVOKABLE QVariant qCheckGame();
    // Rebuilds the mod list from the game's folders. A failure of the list
    // itself reaches the caller; every other failing step is skipped.
    Q_INVOKABLE QVariant qScanForMods();
    // Selects the stored mod when the game's program is present.
    Q_INVOKABLE QVariant qModInit();
    // Selects the stored mod again.
    Q_INVOKABLE QVariant qSelectMod();
    // Writes the folder text, the switched-on fixed values and every valued
    // dynamic widget to the settings store, in one write of its file.
    // Failing steps are skipped; nothing is reported.
    Q_INVOKABLE QVariant qSaveSettings();
    // Puts the stored values back into the widgets, which runs the game check
    // and the widgets' rules. Never writes; failing steps are skipped.
    Q_INVOKABLE QVariant qLoadSettings();
    // Raises StatusChange; runs on every change of the status line.
    Q_INVOKABLE void lblStatus_Change();

    // Lets the user pick the game's program; the chosen path goes into txtPath,
    // which checks the game. Cancel or any failure ends it without a change.
    void cmdBrowse_Click();
    // Runs on every change of txtPath's text: a complete game check.
    void txtPath_Change();
    // Runs on every selection in comModSelect: shows the mod's description and
    // sets the mod check box.
    void comModSelect_Click();
    // Opens the selected config file in the text editor, or tells the user to
    // select one. Errors reach the caller.
    void cmdEdit_Click();

    // Apply the visual function rule of a clicked dynamic check box or option
    // button. Errors of a rule's target reach the caller.
    void Check1_Click(qint16 Index);
    void Option1_Click(qint16 Index);

    // The services. Each has a default (the language files under AppPath, the
    // per-user settings file, the desktop's editor, the log for messages)
    // except the file dialog, which the Qt view or the host gives.
    void setLanguageTextProvider(std::shared_ptr<qf::LanguageTextProvider> provider);
    void setSettingsStore(std::shared_ptr<qf::SettingsStore> store);
    void setProgramStarter(std::shared_ptr<qf::ProgramStarter> starter);
    void setMessageBox(std::shared_ptr<qf::MessageBox> box);
    bool hasMessageBox() const;
    void setFileDialog(std::shared_ptr<qf::FileDialog> dialog);
    bool hasFileDialog() const;
    // Where Data/<game>/Configs (the config files Edit opens) and the game
    // data file that Browse... reads for the Game Application are found: the
    // host's folder (AppPath) unless the host set another.
    QString componentFolder() const;
    void setComponentFolder(const QString& folder);

    // Told of every step the routines skip (none by default); the control
    // behaves the same either way. The game data lint uses it.
    void setSkipObserver(std::shared_ptr<qf::SkipObserver> observer);

    qf::ControlWidgets& widgets();
    const qf::ControlWidgets& widgets() const;

signals:
    void StatusChange();
    void chosenModChanged(const QString& mod);
    void chosenConfigChanged(const QString& config);
    void additionalParametersChanged(const QString& parameters);
    void programPathChanged(const QString& path);
    // A qSaveSettings() whose write of the settings file failed, once per
    // failed write; the message names the file and the system's reason. The
    // choices stay with the store for the next save.
    void settingsSaveFailed(const QString& message);
    // A qSaveSettings() found the settings file damaged (a quote left open, a
    // line QSettings' rules misread) and had to change lines it did not set:
    // the file as found was kept first, byte for byte, at copyPath. Raised
    // once for each copy; the save itself went on.
    void settingsFileDamaged(const QString& copyPath);
    // A click on Edit (cmdEdit_Click) could not open the selected config file
    // (its path on disk) in the editor: the program starter failed to start
    // it, and cmdEdit_Click throws as well, or the editor gave up on it later
    // (raised from the event loop). reason says why, for a person.
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
