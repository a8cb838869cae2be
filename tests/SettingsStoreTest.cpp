#include "platform/Errors.h"
#include "platform/IniFileSettingsStore.h"
#include "support/SettingsSaveCheck.h"

#include <QDir>
#include <QFile>
#include <QPoint>
#include <QSettings>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace qf;
using namespace Qt::Literals::StringLiterals;

namespace {

const QString App = u"Quillmarsh 2"_s;

QByteArray contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void replaceFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    ASSERT_EQ(file.write(bytes), bytes.size());
}

// What the old QSettings-based store made of a value a host left.
QString textOf(const QVariant& value)
{
    return value.metaType().id() == QMetaType::QStringList ? value.toStringList().join(u", "_s)
                                                           : value.toString();
}

} // namespace

TEST(SettingsStoreTest, ValuesPassBothWaysBetweenTheStoreAndQSettings)
{
    EXPECT_EQ(IniFileSettingsStore().fileName(App),
              QSettings(QSettings::IniFormat, QSettings::UserScope, App).fileName());

    QTemporaryDir dir;
    IniFileSettingsStore store(dir.path());
    const QStringList sections{u"Arena"_s,     u"My"_s,     u"My/Game"_s,    u"My\\Game"_s,
                               u"My%2FGame"_s, u""_s,       u"General"_s,    u"general"_s,
                               u"%67eneral"_s, u"[x] ;y"_s, u"Jeu d'été ü"_s};
    const QStringList keys{u"Load Mod Always"_s,
                           u"Game/Load Mod Always"_s,
                           u"a"_s,
                           u"/a/"_s,
                           u"a\\b"_s,
                           u"x=1;[y] é€"_s,
                           u" ; c"_s};
    int n = 0;
    for (const QString& section : sections)
        for (const QString& key : keys)
            store.saveValue(App, section, key, QString::number(n++));
    const QStringList values{u"True"_s,
                             u"a, b"_s,
                             u"@Invalid()"_s,
                             u"@Variant(\\0)"_s,
                             u"  blanks  "_s,
                             u""_s,
                             u"two\nlines\r\t"_s,
                             u"\"q\" ;x=1"_s,
                             u"end\\"_s,
                             u"\x01"
                             "a"_s,
                             u"nul"_s + QChar(0) + u"12"_s,
                             u"é€😀 %41"_s};
    for (qsizetype i = 0; i < values.size(); ++i)
        store.saveValue(App, u"Values"_s, u"Key %1"_s.arg(i), values[i]);
    store.sync();
    EXPECT_EQ(store.writeCount(), 1);

    const QString file = store.fileName(App);
    IniFileSettingsStore fresh(dir.path());
    QSettings host(file, QSettings::IniFormat);
    ASSERT_EQ(host.status(), QSettings::NoError);
    const auto expectBoth = [&](const QString& section, const QString& key, const QString& value) {
        EXPECT_EQ(fresh.readValue(App, section, key, u"<missing>"_s), value) << qPrintable(key);
        EXPECT_EQ(host.value(settingsini::settingsKey(section, key)).toString(), value)
            << qPrintable(key);
    };
    n = 0;
    for (const QString& section : sections)
        for (const QString& key : keys)
            expectBoth(section, key, QString::number(n++));
    for (qsizetype i = 0; i < values.size(); ++i)
        expectBoth(u"Values"_s, u"Key %1"_s.arg(i), values[i]);
    // Plain names reach the file unchanged, so a host finds them by name.
    EXPECT_EQ(host.value(u"Arena/Load Mod Always"_s).toString(), u"0"_s);

    // The other way: what a host writes through QSettings, of any type.
    const QList<std::pair<QString, QVariant>> hostValues{
        {u"Host/list"_s, QStringList{u"a"_s, u"b c"_s}},
        {u"Host/number"_s, 12},
        {u"Host/flag"_s, true},
        {u"Host/bytes"_s, QByteArray("b\x01y")},
        {u"Host/point"_s, QPoint(1, 2)},
        {u"Host/date"_s, QDate(2024, 2, 29)},
        {u"Host/at"_s, u"@home, @work"_s}};
    for (const auto& [key, value] : hostValues)
        host.setValue(key, value);
    host.sync();
    for (const auto& [key, value] : hostValues)
        EXPECT_EQ(fresh.readValue(App, u"Host"_s, key.sliced(5), u"<missing>"_s),
                  textOf(host.value(key)))
            << qPrintable(key);
}

TEST(SettingsStoreTest, ASaveIntoAnyFileReadsBackAndKeepsWhatQSettingsRead)
{
    // Files as people and other programs leave them.
    const QByteArray oldFiles[] = {
        // Comments, a line without "=", unescaped names, a list, a section in
        // two parts, CRLF line ends, no line end at the end.
        "; launcher settings\r\n[Arena]\r\nPath = /games/c ; by hand\r\n"
        "Command Line Parameters=+set a 1, +set b 2\r\nnot a setting\r\n"
        "[Other]\r\nPath=\"/games/other; two\"\r\n[Arena]\r\nMod Name=ctf",
        // A quote never closed: the rest of the file is one value.
        "[Arena]\nPath=\"C:\\Games\nMod Name=ctf\n[Other]\nPath=/o\n",
        // A hand-typed Windows path ends the file in a backslash.
        "[Other]\nPath=/o\n[Arena]\nPath=C:\\Games\\",
        // NUL bytes, CR-only lines, a BOM opening a value, invalid UTF-8.
        "\xEF\xBB\xBF[Arena]\rPath=a\0b\rMod Name=\xEF\xBB\xBFx\r[Other]\rPath=\xFF\xFE\\\r\n",
    };
    const std::vector<test::SettingsSave> saves{
        {u"Arena"_s, u"Path"_s, u"C:\\Games\\"_s},
        {u"Arena"_s, u"Config Name"_s, u"\uFEFFlead"_s},
        {u"Arena"_s, u"Tab"_s, u"\t\uFEFF after an escape"_s},
        {u"Other"_s, u"Quoted"_s, u" \uFEFF;\"x"_s},
        {u"New Game"_s, u"Path"_s, u"/games/d"_s},
        {u""_s, u"Top"_s, u"1"_s}};
    for (const QByteArray& old : oldFiles) {
        EXPECT_EQ(test::checkSettingsSave(old, saves), QStringList()) << old.constData();
        EXPECT_EQ(test::checkSettingsSave(old, {saves[4]}), QStringList()) << old.constData();
    }

    // The whole file is written, as QSettings writes it, in the old line ends.
    QTemporaryDir dir;
    IniFileSettingsStore store(dir.path());
    const QString file = store.fileName(App);
    replaceFile(file, oldFiles[0]);
    EXPECT_EQ(store.readValue(App, u"Arena"_s, u"Path"_s, {}), u"/games/c"_s);
    store.saveValue(App, u"Arena"_s, u"Path"_s, u"/games/new"_s);
    store.saveValue(App, u"New Game"_s, u"Path"_s, u"/games/d"_s);
    EXPECT_EQ(contents(file), oldFiles[0]) << "saves wait for sync()";
    store.sync();
    store.sync();
    EXPECT_EQ(store.writeCount(), 1) << "nothing to write, no write";
    EXPECT_EQ(contents(file),
              "[Arena]\r\nPath=/games/new\r\n"
              "Command%20Line%20Parameters=+set a 1, +set b 2\r\nMod%20Name=ctf\r\n\r\n"
              "[Other]\r\nPath=\"/games/other; two\"\r\n\r\n[New%20Game]\r\nPath=/games/d\r\n");

    // Another program replaces the file, with one of the same size.
    QByteArray replaced = contents(file);
    replaced.replace("/games/new", "/games/old");
    replaceFile(file, replaced);
    EXPECT_EQ(store.readValue(App, u"Arena"_s, u"Path"_s, {}), u"/games/old"_s);
}

// Inputs the fuzz target once found at fault, kept so every build checks them.
TEST(SettingsStoreTest, InputsOnceFoundAtFaultSaveCorrectly)
{
    const QDir corpus(QStringLiteral(QFORMS_SOURCE_DIR "/tests/data/settings-corpus"));
    const QStringList inputs = corpus.entryList(QDir::Files);
    EXPECT_FALSE(inputs.isEmpty());
    for (const QString& name : inputs) {
        QFile input(corpus.filePath(name));
        ASSERT_TRUE(input.open(QIODevice::ReadOnly)) << name;
        EXPECT_EQ(test::checkSettingsSaveInput(input.readAll()), QStringList()) << name;
    }
}
