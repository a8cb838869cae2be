#pragma once

#include "context/ControlWidgets.h"
#include "context/SkipObserver.h"
#include "platform/FileDialog.h"
#include "platform/LanguageTextProvider.h"
#include "platform/MessageBox.h"
#include "platform/ProfileReader.h"
#include "platform/ProgramStarter.h"
#include "platform/SettingsStore.h"

#include <QString>

#include <functional>
#include <memory>
#include <optional>

namespace qf {

// Everything one control instance knows: the state fields, the fixed widgets
// and widget arrays, the profile read buffer and the services. The subsystems'
// routines take it by reference; the published qForms object owns one and
// forwards to them. Fields keep the names the routines have always used.
class ControlContext {
public:
    ControlContext() = default;
    ControlContext(const ControlContext&) = delete;
    ControlContext& operator=(const ControlContext&) = delete;

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

    // The last profile read's result and the count it returned.
    QString strProfileBuffer;
    qint32 intProfileLength = 0;

    // The program the last game check looked for, as a path of this system;
    // empty while no folder is chosen.
    QString programPath;

    // How deep visual function rules are nested in each other right now.
    int ruleDepth = 0;

    ControlWidgets widgets;

    // The language text provider, an IniLanguageTextProvider unless the host gave one.
    LanguageTextProvider& languageTextProvider();
    void setLanguageTextProvider(std::shared_ptr<LanguageTextProvider> provider);
    // The text of a three-digit text number in the current language.
    QString languageText(const QString& textNumber);

    // The per-user settings store, an IniFileSettingsStore unless the host gave one.
    SettingsStore& settingsStore();
    void setSettingsStore(std::shared_ptr<SettingsStore> store);

    // Starts the config editor; a DesktopProgramStarter unless the host gave one.
    ProgramStarter& programStarter();
    void setProgramStarter(std::shared_ptr<ProgramStarter> starter);
    // Told when the editor of a config file (the path as on disk) could not
    // be started or gave up; may be called after the control is gone, so it
    // must guard what it captures.
    std::function<void(const QString& file, const QString& reason)> editorFailed;

    // Without a message box from the host or the view, messages go to the log.
    MessageBox& messageBox();
    void setMessageBox(std::shared_ptr<MessageBox> box);
    bool hasMessageBox() const { return m_messageBox != nullptr; }

    // Throws qf::Error when neither the host nor a view gave one.
    FileDialog& fileDialog();
    void setFileDialog(std::shared_ptr<FileDialog> dialog);
    bool hasFileDialog() const { return m_fileDialog != nullptr; }

    // The host's folder (strAppPath), unless the host set another.
    QString componentFolder() const;
    void setComponentFolder(const QString& folder);

    // Told of every skipped step; none by default.
    void setSkipObserver(std::shared_ptr<SkipObserver> observer);
    SkipObserver* skipObserver() const { return m_skipObserver.get(); }
    // Tells the observer, if there is one, that a step was skipped.
    void reportSkip(const StepSite& site, const QString& reason) const;

    // The public routine running now, for the reports; RoutineScope sets it.
    const char* routine = "";

private:
    std::shared_ptr<LanguageTextProvider> m_languageTextProvider;
    std::shared_ptr<SettingsStore> m_settingsStore;
    std::shared_ptr<ProgramStarter> m_programStarter;
    std::shared_ptr<MessageBox> m_messageBox;
    std::shared_ptr<FileDialog> m_fileDialog;
    QString m_componentFolder;
    std::shared_ptr<SkipObserver> m_skipObserver;
};

// Names the routine that runs while it lives; routines nest.
class RoutineScope {
public:
    // The outermost routine of a call takes a profile snapshot, unless the
    // caller holds one: every read of a file in the call shares one look at it.
    RoutineScope(ControlContext& context, const char* name)
        : m_context(context), m_outer(context.routine)
    {
        if (*m_outer == 0 && ProfileSnapshot::currentId() == 0)
            m_snapshot.emplace();
        context.routine = name;
    }
    ~RoutineScope() { m_context.routine = m_outer; }
    RoutineScope(const RoutineScope&) = delete;
    RoutineScope& operator=(const RoutineScope&) = delete;

private:
    ControlContext& m_context;
    const char* m_outer;
    std::optional<ProfileSnapshot> m_snapshot;
};

} // namespace qf
