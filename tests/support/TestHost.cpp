#include "support/TestHost.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <gtest/gtest.h>

TestHost::TestHost()
{
    QDir().mkpath(m_dir.filePath(QStringLiteral("Data/Languages")));
}

void TestHost::write(const QString& relative, const QByteArray& content) const
{
    const QString target = m_dir.filePath(relative);
    QDir().mkpath(QFileInfo(target).path());
    QFile file(target);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate)) << qPrintable(target);
    file.write(content);
}

void TestHost::writeLanguage(int index, const QByteArray& texts) const
{
    write(QStringLiteral("Data/Languages/%1.ini").arg(index), "[Texts]\n" + texts);
}

void TestHost::writeCustomControls(const QString& name, const QByteArray& lines) const
{
    write(QStringLiteral("Data/") + name, "[Custom Controls]\n" + lines);
}
