#include "context/ControlContext.h"

#include "platform/DesktopProgramStarter.h"
#include "platform/Errors.h"
#include "platform/IniFileSettingsStore.h"
#include "platform/IniLanguageTextProvider.h"

#include <QtGlobal>

namespace qf {

namespace {

// Without widgets of its own the library can only log a message.
class LogMessageBox : public MessageBox {
public:
    void show(const QString& text, int /*style*/, const QString& title) override
    {
        qWarning("%ls: %ls", qUtf16Printable(title), qUtf16Printable(text));
    }
};

} // namespace

LanguageTextProvider& ControlContext::languageTextProvider()
{
    if (!m_languageTextProvider)
        m_languageTextProvider = std::make_shared<IniLanguageTextProvider>();
    return *m_languageTextProvider;
}

void ControlContext::setLanguageTextProvider(std::shared_ptr<LanguageTextProvider> provider)
{
    m_languageTextProvider = std::move(provider);
}

QString ControlContext::languageText(const QString& textNumber)
{
    return languageTextProvider().text(QString::number(intLanguageIndex) + textNumber, strAppPath);
}

SettingsStore& ControlContext::settingsStore()
{
    if (!m_settingsStore)
        m_settingsStore = std::make_shared<IniFileSettingsStore>();
    return *m_settingsStore;
}

void ControlContext::setSettingsStore(std::shared_ptr<SettingsStore> store)
{
    m_settingsStore = std::move(store);
}

ProgramStarter& ControlContext::programStarter()
{
    if (!m_programStarter)
        m_programStarter = std::make_shared<DesktopProgramStarter>();
    return *m_programStarter;
}

void ControlContext::setProgramStarter(std::shared_ptr<ProgramStarter> starter)
{
    m_programStarter = std::move(starter);
}

MessageBox& ControlContext::messageBox()
{
    static LogMessageBox logged;
    return m_messageBox ? *m_messageBox : logged;
}

void ControlContext::setMessageBox(std::shared_ptr<MessageBox> box)
{
    m_messageBox = std::move(box);
}

FileDialog& ControlContext::fileDialog()
{
    if (!m_fileDialog)
        throw Error(QStringLiteral("No file dialog: the host gave none and no view installed one"));
    return *m_fileDialog;
}

void ControlContext::setFileDialog(std::shared_ptr<FileDialog> dialog)
{
    m_fileDialog = std::move(dialog);
}

QString ControlContext::componentFolder() const
{
    // On Linux a library's folder holds no data, unlike a Windows control's,
    // which shares its host's folder.
    return m_componentFolder.isEmpty() ? strAppPath : m_componentFolder;
}

void ControlContext::setComponentFolder(const QString& folder)
{
    m_componentFolder = folder;
}

void ControlContext::setSkipObserver(std::shared_ptr<SkipObserver> observer)
{
    m_skipObserver = std::move(observer);
}

void ControlContext::reportSkip(const StepSite& site, const QString& reason) const
{
    if (!m_skipObserver)
        return;
    m_skipObserver->stepSkipped({QString::fromLatin1(routine), site.entry, site.key.toString(),
                                 site.value.toString(), reason});
}

} // namespace qf
