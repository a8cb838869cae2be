#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

namespace qf::designer {

// A temporary host folder that mirrors the real one for the page and the lint
// (its launcher.ini and language texts), with the game data file as the editor
// holds it: the control only reads files, and the author's file is written
// only on Save.
class ScratchHost {
public:
    ScratchHost(const QString& appPath, const QString& gameDataPath);

    QString appPath() const { return m_folder.path(); }
    QString gameDataPath() const { return m_gameDataPath; }
    // False when the copy cannot be written.
    bool write(const QByteArray& bytes);

private:
    QTemporaryDir m_folder;
    QString m_gameDataPath;
};

} // namespace qf::designer
