#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

// A host folder in a temporary directory: AppPath with its Data folder, the
// language files and game data files a test writes into it.
class TestHost {
public:
    TestHost();

    QString path() const { return m_dir.path(); }
    QString filePath(const QString& relative) const { return m_dir.filePath(relative); }

    // Writes a file below the host folder, creating its folders.
    void write(const QString& relative, const QByteArray& content) const;
    void writeLanguage(int index, const QByteArray& texts) const;
    // Writes Data/<name> with section "Custom Controls" holding the lines given.
    void writeCustomControls(const QString& name, const QByteArray& lines) const;

private:
    QTemporaryDir m_dir;
};
