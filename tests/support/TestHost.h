#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QString>
#include <QTemporaryDir>
#include <gtest/gtest.h>

// A host folder in a temporary directory: AppPath with its Data folder, the
// language files and game data files a test writes into it.
class TestHost {
public:
    TestHost() { QDir().mkpath(m_dir.filePath(QStringLiteral("Data/Languages"))); }

    QString path() const { return m_dir.path(); }
    QString filePath(const QString& relative) const { return m_dir.filePath(relative); }

    // Writes a file below the host folder, creating its folders.
    void write(const QString& relative, const QByteArray& content) const
    {
        QDir().mkpath(QFileInfo(filePath(relative)).path());
        QFile file(filePath(relative));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate)) << relative;
        file.write(content);
    }
    void writeLanguage(int index, const QByteArray& texts) const
    {
        write(QStringLiteral("Data/Languages/%1.ini").arg(index), "[Texts]\n" + texts);
    }
    // Writes Data/<name> with section "Custom Controls" holding the lines given.
    void writeCustomControls(const QString& name, const QByteArray& lines) const
    {
        write(QStringLiteral("Data/") + name, "[Custom Controls]\n" + lines);
    }

private:
    QTemporaryDir m_dir;
};
