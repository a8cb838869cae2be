#pragma once

#include "control/ControlWidgets.h"
#include "platform/FileDialog.h"
#include "platform/LanguageTextProvider.h"
#include "platform/MessageBox.h"
#include "platform/ProgramStarter.h"
#include "platform/SettingsStore.h"

#include <QObject>
#include <QString>
#include <QVariant>

#include <memory>
#include <optional>

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

public:
    explicit qForms(QObject* parent = nullptr);
    ~qForms() override;

    QString qpGameName() const { return strGameName; }
    void setQpGameName(const QString& strGameName2);
    QString qpGamePath() const { return strGamePath; }
    void setQpGamePath(const QString& strGamePath2);
    qint16 qpLanguageIndex() const { return intLanguageIndex; }
    // Re-captions the fixed widgets; a failed text lookup ends the call there.
    void setQpLanguageIndex(qint16 intL1);
    bool qpUseModSelection() const { return bolUseModSelection; }
    void setQpUseModSelection(bool strUseModSelection2);
    bool qpUseAdditionalCommandLineParameters() const
    {
        return bolUseAdditionalCommandLineParameters;
    }
    void setQpUseAdditionalCommandLineParameters(bool strUseAdditionalCommandLineParameters2);
    bool qpUseConfigs() const { return bolUseConfigs; }
    void setQpUseConfigs(bool bolUseConfigs2);
    QString qpGameApplication() const { return strGameApplication; }
    void setQpGameApplication(const QString& strGameApplication2);
    QString qpGameStatus() const;
    QString qpGameStatusColour() const { return strGameStatusColour; }
    QString qpGameBase() const { return strGameBase; }
    void setQpGameBase(const QString& strGameBase2);
    QString qpVersionType() const { return strVersionType; }
    // A text that is not a number throws qf::TypeMismatchError and stays stored.
    void setQpVersionType(const QString& strVersionType2);
    QString qpQGD() const { return strQGDFile; }
    void setQpQGD(const QString& strQGDFile2);
    QString AppPath() const { return strAppPath; }
    void setAppPath(const QString& strAppPath2);

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

    // The language text provider, created on first use unless the host gave one.
    qf::LanguageTextProvider& languageTextProvider();
    void setLanguageTextProvider(std::shared_ptr<qf::LanguageTextProvider> provider);

    // The per-user settings store, an IniFileSettingsStore unless the host gave one.
    qf::SettingsStore& settingsStore();
    void setSettingsStore(std::shared_ptr<qf::SettingsStore> store);

    // Starts the config editor; a DesktopProgramStarter unless the host gave one.
    qf::ProgramStarter& programStarter();
    void setProgramStarter(std::shared_ptr<qf::ProgramStarter> starter);

    // Shows the control's messages. Without one from the host or the Qt view
    // they go to the log, since this library has no widgets.
    qf::MessageBox& messageBox();
    void setMessageBox(std::shared_ptr<qf::MessageBox> box);
    bool hasMessageBox() const { return m_messageBox != nullptr; }

    // The folder of the control's library file, unless the host set another.
    QString componentFolder() const;
    void setComponentFolder(const QString& folder);

    // The open-file dialog of cmdBrowse; throws qf::Error when there is none.
    qf::FileDialog& fileDialog();
    void setFileDialog(std::shared_ptr<qf::FileDialog> dialog);
    bool hasFileDialog() const;

    // The text of a three-digit text number in the current language.
    QString languageText(const QString& textNumber);

    // One profile read of a value, with the Windows profile rules and the
    // 1024-character buffer; the result and its length stay in the control's
    // buffer fields until the next read.
    QString profileRead(const QString& section, const QString& key, const QString& defaultValue,
                        const QString& path);
    // A profile read of the game data file: AppPath + "\Data\" + qpQGD.
    QString gameDataRead(const QString& section, const QString& key, const QString& defaultValue);
    QString gameDataPath() const;
    // A key of custom control entry `entry` ("Control12Type"), as read.
    QString customControlRead(int entry, const QString& suffix, const QString& defaultValue);
    qint32 lastProfileReadLength() const { return intProfileLength; }

    qf::ControlWidgets& widgets() { return *m_widgets; }
    const qf::ControlWidgets& widgets() const { return *m_widgets; }

signals:
    void StatusChange();
    // A qSaveSettings() whose write of the settings file failed, once per
    // failed write; the message names the file and the system's reason. The
    // choices stay with the store for the next save.
    void settingsSaveFailed(const QString& message);

private:
    void switchGroup(std::initializer_list<qf::Widget*> group, bool visible);
    void ListModFolders(QString& folder, const QString& baseName);
    void AddModEntry(const QString& entry);
    // The version a game list file names for the pak file found; empty when none.
    QString detectPakVersion(const QString& strBase);
    // isOn is empty for a greyed check box, which fires no rule.
    void applyVisualFunction(const QString& tag, std::optional<bool> isOn);

    QString strGamePath;
    QString strGameName;
    QString strGameBase;
    QString strQGDFile;
    QString strVersionType;
    bool bolUseModSelection = false;
    bool bolUseAdditionalCommandLineParameters = false;
    bool bolUseConfigs = false;
    QString strGameApplication;
    qint16 intLanguageIndex = 0;
    QString strGameStatusColour;
    QString strAppPath;
    std::shared_ptr<qf::LanguageTextProvider> m_languageTextProvider;
    std::shared_ptr<qf::SettingsStore> m_settingsStore;
    std::shared_ptr<qf::ProgramStarter> m_programStarter;
    std::shared_ptr<qf::MessageBox> m_messageBox;
    QString m_componentFolder;
    std::shared_ptr<qf::FileDialog> m_fileDialog;
    QString strProfileBuffer;
    qint32 intProfileLength = 0;
    int m_ruleDepth = 0;

    std::unique_ptr<qf::ControlWidgets> m_widgets;
};
