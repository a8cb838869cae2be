#include "toolkit/FileList.h"
#include "platform/Errors.h"
#include "toolkit/Container.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace qf;

namespace {

void touch(const QString& path)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << qPrintable(path);
}

} // namespace

TEST(FileList, ListsMatchingFilesWithoutRegardToCaseAndKeepsItsFolderWhenANewOneIsMissing)
{
    QTemporaryDir dir;
    const QString avaFolder = dir.filePath(QStringLiteral("AVA"));
    QDir().mkpath(avaFolder);
    for (const char* name : {"b.AVA", "A.ava", "c.ava.txt", "readme.txt", "C.Ava"})
        touch(avaFolder + QLatin1Char('/') + QLatin1String(name));
    QDir().mkpath(avaFolder + QStringLiteral("/folder.ava"));

    Container form(QStringLiteral("form"));
    FileList list(QStringLiteral("lstAVA"), &form, QStringLiteral("*.AVA"));
    EXPECT_EQ(list.fileName(), QString());
    list.setPath(avaFolder);
    EXPECT_EQ(list.files(), (QStringList{QStringLiteral("A.ava"), QStringLiteral("b.AVA"),
                                         QStringLiteral("C.Ava")}));
    list.setListIndex(1);
    EXPECT_EQ(list.fileName(), QStringLiteral("b.AVA"));
    EXPECT_THROW(list.setListIndex(3), InvalidValueError);
    EXPECT_EQ(list.listIndex(), 1);

    EXPECT_THROW(list.setPath(dir.filePath(QStringLiteral("missing"))), PathError);
    EXPECT_EQ(list.path(), avaFolder);
    EXPECT_EQ(list.listCount(), 3);
    EXPECT_EQ(list.fileName(), QStringLiteral("b.AVA"));

    // A folder written with Windows separators and another letter case is found.
    list.setPath(dir.path() + QStringLiteral("\\ava\\"));
    EXPECT_EQ(list.listCount(), 3);
    EXPECT_EQ(list.listIndex(), -1) << "a new listing selects nothing";
}
