#include "platform/Errors.h"
#include "platform/IniFileSettingsStore.h"

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

TEST(SettingsStoreTest, MergingKeepsEverythingElseInTheFileAndReadsFollowTheDisk)
{
    QTemporaryDir dir;
    IniFileSettingsStore store(dir.path());
    const QString file = store.fileName(App);
    EXPECT_EQ(store.readValue(App, u"Arena"_s, u"Path"_s, u"none"_s), u"none"_s);
    EXPECT_THROW(store.saveValue(App, u"Arena"_s, u""_s, u"x"_s), InvalidValueError);
    EXPECT_THROW(store.readValue(u"../x"_s, u"Arena"_s, u"Path"_s, u"x"_s), InvalidValueError);

    // Written by hand: comments, a line QSettings cannot parse, unescaped names,
    // a list without quotes, a section in two parts, no newline at the end.
    const QByteArray handWritten = "; launcher settings\r\n"
                                   "[Arena]\r\n"
                                   "Path = /games/c ; installed by hand\r\n"
                                   "Command Line Parameters=+set a 1, +set b 2\r\n"
                                   "not a setting\r\n"
                                   "[Other]\r\n"
                                   "Path=\"/games/other; two\"\r\n"
                                   "[Arena]\r\n"
                                   "Mod Name=ctf";
    replaceFile(file, handWritten);
    EXPECT_EQ(store.readValue(App, u"Arena"_s, u"Path"_s, {}), u"/games/c"_s);
    EXPECT_EQ(store.readValue(App, u"Arena"_s, u"Command Line Parameters"_s, {}),
              u"+set a 1, +set b 2"_s);

    store.saveValue(App, u"Arena"_s, u"Path"_s, u"/games/new"_s);
    store.saveValue(App, u"Arena"_s, u"Config Name"_s, u"a.cfg"_s);
    store.saveValue(App, u"Arena"_s, u"Config Name"_s, u"b.cfg"_s);
    store.saveValue(App, u"New Game"_s, u"Path"_s, u"/games/d"_s);
    store.saveValue(App, u""_s, u"Top"_s, u"1"_s);
    // Collected values answer reads before they reach the file.
    EXPECT_EQ(store.readValue(App, u"Arena"_s, u"Path"_s, {}), u"/games/new"_s);
    EXPECT_EQ(contents(file), handWritten);
    store.sync();
    store.sync();
    EXPECT_EQ(store.writeCount(), 1) << "nothing to write, no write";

    const QByteArray merged = contents(file);
    for (const char* kept :
         {"; launcher settings", "Path = /games/new ; installed by hand\r\n", "not a setting",
          "Config%20Name=b.cfg\r\n\r\n[New%20Game]\r\n", "Path=\"/games/other; two\""})
        EXPECT_TRUE(merged.contains(kept)) << kept << "\n" << merged.constData();
    QSettings host(file, QSettings::IniFormat);
    const std::pair<const char*, const char*> expected[] = {
        {"Arena/Path", "/games/new"},   {"Arena/Mod Name", "ctf"},
        {"Arena/Config Name", "b.cfg"}, {"Other/Path", "/games/other; two"},
        {"New Game/Path", "/games/d"},  {"Top", "1"}};
    for (const auto& [key, value] : expected)
        EXPECT_EQ(host.value(QString::fromUtf8(key)).toString(), QString::fromUtf8(value)) << key;
    EXPECT_EQ(textOf(host.value(u"Arena/Command Line Parameters"_s)), u"+set a 1, +set b 2"_s);

    // Another program replaces the file, with one of the same size.
    QByteArray replaced = merged;
    replaced.replace("/games/new", "/games/old");
    replaceFile(file, replaced);
    EXPECT_EQ(store.readValue(App, u"Arena"_s, u"Path"_s, {}), u"/games/old"_s);
}
