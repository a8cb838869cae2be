#include "platform/Errors.h"
#include "platform/IniLanguageTextProvider.h"
#include "support/TraceRecorder.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace qf;
using namespace Qt::Literals::StringLiterals;

namespace {

class LanguageFolder {
public:
    LanguageFolder() { QDir(m_dir.path()).mkpath(u"Data/Languages"_s); }

    QString appPath() const { return m_dir.path(); }

    void write(const QString& language, const QByteArray& content)
    {
        QFile file(m_dir.filePath(u"Data/Languages/"_s + language + u".ini"_s));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

private:
    QTemporaryDir m_dir;
};

} // namespace

TEST(IniLanguageTextProvider, LooksUpLanguageThenLanguageZero)
{
    LanguageFolder folder;
    folder.write(u"0"_s, "[Texts]\n053=Folder\n038=Browse\n077=\"  quoted \"\n");
    folder.write(u"1"_s, "[texts]\n053 = Ordner \n");
    folder.write(u"-1"_s, "[Texts]\n053=Carpeta\nlong=x\n100=" + QByteArray(2000, 'y') + "\n");
    IniLanguageTextProvider provider;
    const QString app = folder.appPath();

    EXPECT_EQ(provider.text(u"1053"_s, app), u"Ordner"_s);
    EXPECT_EQ(provider.text(u"1038"_s, app), u"Browse"_s);
    EXPECT_EQ(provider.text(u"0053"_s, app), u"Folder"_s);
    EXPECT_EQ(provider.text(u"-1053"_s, app), u"Carpeta"_s);
    EXPECT_EQ(provider.text(u"7077"_s, app), u"  quoted "_s);
    EXPECT_EQ(provider.text(u"-1100"_s, app).size(), 2000);
    // The host folder may be written the Windows way.
    EXPECT_EQ(provider.text(u"1053"_s, QDir::toNativeSeparators(app) + u"\\"_s), u"Ordner"_s);

    EXPECT_THROW(provider.text(u"1999"_s, app), TextLookupError);
    try {
        provider.text(u"1999"_s, app);
    } catch (const TextLookupError& error) {
        EXPECT_TRUE(error.message().contains(u"1999"_s));
    }
    EXPECT_THROW(provider.text(u"053"_s, app), TextLookupError);
    EXPECT_THROW(provider.text(u"x053"_s, app), TextLookupError);
    EXPECT_THROW(provider.text(u"-053"_s, app), TextLookupError);
}

TEST(IniLanguageTextProvider, BuiltInTextsStandInOnlyForLanguagesWithoutHostFile)
{
    LanguageFolder folder;
    folder.write(u"0"_s, "[Texts]\n053=Folder\n");
    IniLanguageTextProvider provider;
    const QString app = folder.appPath();
    const QString host0 = IniLanguageTextProvider::languageFile(app, 0);

    EXPECT_EQ(provider.text(u"0053"_s, app), u"Folder"_s);
    EXPECT_EQ(provider.text(u"1053"_s, app), u": Ordner oder Programm"_s);
    EXPECT_EQ(provider.text(u"1038"_s, app), u"Suchen..."_s);
    EXPECT_EQ(provider.text(u"2053"_s, app), u"Folder"_s);
    EXPECT_EQ(provider.text(u"0038"_s, app + u"/elsewhere"_s), u"Browse..."_s);

    // A failed lookup names every file it looked in.
    const std::pair<QString, QStringList> failures[] = {
        {u"0038"_s, {host0}},
        {u"1999"_s, {IniLanguageTextProvider::builtInFile(1), host0}},
        {u"2038"_s, {IniLanguageTextProvider::languageFile(app, 2), host0}},
    };
    for (const auto& [key, files] : failures) {
        try {
            provider.text(key, app);
            ADD_FAILURE() << key.toStdString();
        } catch (const TextLookupError& error) {
            EXPECT_EQ(error.message(), u"No text for key %1 in %2"_s.arg(key, files.join(u", "_s)));
        }
    }
}

TEST(IniLanguageTextProvider, FileCheckAndTrace)
{
    LanguageFolder folder;
    folder.write(u"0"_s, "[Texts]\n");
    IniLanguageTextProvider provider;
    EXPECT_TRUE(provider.fileExists(folder.appPath() + u"\\DATA\\languages\\0.INI"_s));
    EXPECT_FALSE(provider.fileExists(folder.appPath() + u"\\Data\\Languages"_s));
    EXPECT_FALSE(provider.fileExists(folder.appPath() + u"\\Data\\Languages\\9.ini"_s));

    TraceRecorder traces;
    provider.trace(u"game found"_s, folder.appPath());
    EXPECT_EQ(traces.messages, QStringList{u"game found"_s});
}
