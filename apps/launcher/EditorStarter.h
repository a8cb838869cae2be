#pragma once

#include "platform/ProgramStarter.h"

#include <QObject>

#include <memory>

namespace qf {
class MessageBox;
}

// Opens the control's config files in the desktop's editor, and tells the
// person when that fails: no opener installed, or the opener gave up.
class EditorStarter : public QObject, public qf::ProgramStarter {
    Q_OBJECT
public:
    // editor: the program that opens a text file (xdg-open by default).
    EditorStarter(std::shared_ptr<qf::MessageBox> messages, QString editor);

    // "Notepad.exe <path>", as the control asks for it.
    void start(const QString& commandLine, int windowStyle) override;

private:
    void report(const QString& file, const QString& reason);

    std::shared_ptr<qf::MessageBox> m_messages;
    QString m_editor;
};
