#include "control/SkipOnError.h"
#include "control/qForms.h"
#include "platform/DesktopProgramStarter.h"

#include <QtGlobal>

namespace {

// Without widgets of its own the library can only log a message.
class LogMessageBox : public qf::MessageBox {
public:
    void show(const QString& text, int /*style*/, const QString& title) override
    {
        qWarning("%ls: %ls", qUtf16Printable(title), qUtf16Printable(text));
    }
};

} // namespace

void qForms::setQpGameApplication(const QString& strGameApplication2)
{
    strGameApplication = strGameApplication2;
    auto& w = *m_widgets;
    qf::skipOnError([&] {
        w.lstConfig.setPath(componentFolder() + QStringLiteral("\\Data\\") + strGameName +
                            QStringLiteral("\\Configs"));
    });
    qf::skipOnError([&] { w.lstConfig.setListIndex(0); });
}

void qForms::cmdEdit_Click()
{
    const QString fileName = m_widgets->lstConfig.fileName();
    if (fileName.isEmpty()) {
        messageBox().show(languageText(QStringLiteral("077")), 64, QStringLiteral("Quillmarsh"));
        return;
    }
    // The path goes unquoted: the starter takes everything after the program
    // name as one argument.
    programStarter().start(QStringLiteral("Notepad.exe ") + componentFolder() +
                               QStringLiteral("\\Data\\") + strGameName +
                               QStringLiteral("\\Configs\\") + fileName,
                           1);
}

qf::ProgramStarter& qForms::programStarter()
{
    if (!m_programStarter)
        m_programStarter = std::make_shared<qf::DesktopProgramStarter>();
    return *m_programStarter;
}

void qForms::setProgramStarter(std::shared_ptr<qf::ProgramStarter> starter)
{
    m_programStarter = std::move(starter);
}

qf::MessageBox& qForms::messageBox()
{
    static LogMessageBox logged;
    return m_messageBox ? *m_messageBox : logged;
}

void qForms::setMessageBox(std::shared_ptr<qf::MessageBox> box)
{
    m_messageBox = std::move(box);
}
