#include "control/qForms.h"
#include "platform/Errors.h"
#include "platform/IniFileSettingsStore.h"
#include "platform/SettingsIniFormat.h"
#include "support/SettingsSaveCheck.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QPoint>
#include <QSet>
#include <QSettings>
#include <QSize>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>

#include <sys/inotify.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace qf;
using namespace qf::test;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString& App = SettingsApp;

// Root may write wherever file permissions say no, but not past the file size
// limit: writes of this process beyond it fail.
struct FileSizeLimit {
    explicit FileSizeLimit(rlim_t bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN); // a write past the limit fails, not the process
        ::getrlimit(RLIMIT_FSIZE, &saved);
        const rlimit limit{bytes, saved.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() { ::setrlimit(RLIMIT_FSIZE, &saved); }
    rlimit saved{};
};

// Runs work in a child process, which exits with 0 when work returned and no
// test assertion failed in it (an exception aborts it).
pid_t forkRunning(const std::function<void()>& work)
{
    const pid_t child = ::fork();
    if (child == 0) {
        work();
        std::fflush(stdout);
        ::_exit(::testing::Test::HasFailure() ? 1 : 0);
    }
    return child;
}

bool exitsCleanly(pid_t child)
{
    int status = 0;
    return child > 0 && ::waitpid(child, &status, 0) == child && WIFEXITED(status) &&
           WEXITSTATUS(status) == 0;
}

// How often work opens the file at path.
int opensOf(const QString& path, const std::function<void()>& work)
{
    const int watch = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    // The kernel merges an event with the same one unread before it, not an
    // open with its close: two events an open.
    ::inotify_add_watch(watch, QFile::encodeName(path).constData(), IN_OPEN | IN_CLOSE);
    work();
    alignas(inotify_event) char events[4096];
    const ssize_t bytes = ::read(watch, events, sizeof events);
    ::close(watch);
    return int(std::max<ssize_t>(bytes, 0) / ssize_t(2 * sizeof(inotify_event)));
}

// Every key holds the same generation of values, one sync wrote them all.
void saveGeneration(IniFileSettingsStore& store, int generation, int keys)
{
    // Lengths vary, so a file cut short cannot hold a whole generation.
    const QString value = QString(generation % 13 * 7, u'v') + QString::number(generation);
    for (int k = 0; k < keys; ++k)
        store.saveValue(App, u"Arena"_s, u"Key %1"_s.arg(k), value);
    store.sync();
}

// A settings folder of its own.
class SettingsStoreTest : public ::testing::Test {
protected:
    QTemporaryDir dir;
    std::shared_ptr<IniFileSettingsStore> store =
        std::make_shared<IniFileSettingsStore>(dir.path());
    const QString file = store->fileName(App);
};

} // namespace

// People and hosts read the files too: what QSettings wrote reads the same
// here and keeps every byte when the store writes the file again.
TEST_F(SettingsStoreTest, AFileQSettingsWroteReadsTheSameAndIsWrittenAgainByteForByte)
{
    EXPECT_EQ(IniFileSettingsStore().fileName(App),
              QSettings(QSettings::IniFormat, QSettings::UserScope, App).fileName());
    for (const QString& unusable : {u""_s, u"a/b"_s, u"a"_s + QChar(0) + u"b"_s})
        EXPECT_THROW(IniFileSettingsStore().fileName(unusable), InvalidValueError);

    QSettings host(file, QSettings::IniFormat);
    // The date's stored bytes are ASCII: bytes past 0x7F in a typed value are
    // written as UTF-8 here and as escapes by QSettings, which reads both alike.
    std::vector<SettingsSave> written; // with the text the old QSettings-based store read
    for (const QVariant& value : QVariantList{
             u"plain"_s, u"a, b"_s, u" blank "_s, u"\u0001a\u0002F9\u001F\tx\0b"_s,
             u"\"q\" \\ ;="_s, u"@home, @work"_s, u"é€😀"_s, QStringList{u"a"_s, u" b,c"_s, u"@x"_s},
             12, true, QByteArray("b\0\x01y", 4), QPoint(1, 2), QSize(1, 2), QDate(2000, 1, 1)})
        for (const QString& section : {u""_s, u"Mod_Name-2.0"_s, u"a b;[c]=é€😀"_s, u"General"_s}) {
            const QString key = u"Key_%1"_s.arg(written.size());
            host.setValue(section.isEmpty() ? key : section + u'/' + key, value);
            written.push_back({section, key, textOf(value)});
        }
    host.sync();
    const QByteArray bytes = contents(file);
    for (const SettingsSave& entry : written)
        EXPECT_EQ(store->readValue(App, entry.section, entry.key, {}), entry.value)
            << qPrintable(entry.key);
    store->saveValue(App, u"General"_s, u"Key_3"_s, u"plain"_s);
    store->sync();
    EXPECT_EQ(QString::fromUtf8(contents(file)), QString::fromUtf8(bytes));
}

TEST_F(SettingsStoreTest, ASaveIntoAnyFileReadsBackAndKeepsWhatQSettingsRead)
{
    // Files as people and other programs leave them.
    const QByteArray oldFiles[] = {
        // Comments, a line without "=", unescaped names, a list, a section in
        // two parts, CRLF line ends, no line end at the end.
        "; launcher settings: Path=/commented\r\n[Arena]\r\nPath = /games/c ; by hand\r\n"
        "Command Line Parameters=+set a 1, +set b 2\r\nnot a setting\r\n"
        "[Other]\r\nPath=\"/games/other; two\"\r\n[Arena]\r\nMod Name=ctf",
        // A quote never closed: the rest of the file is one value.
        "[Arena]\nPath=\"C:\\Games\nMod Name=ctf\n[Other]\nPath=/o\n",
        // An "=" in a value, a line going on after a backslash, and a hand-typed
        // Windows path ending the file in a backslash.
        "[Other]\nPath=/o=1\nWrapped=a\\\n\rb\n[Arena]\nPath=C:\\Games\\",
        // NUL bytes, CR-only lines, an indented section, a BOM opening a value,
        // invalid UTF-8.
        "\xEF\xBB\xBF[Arena]\rPath=a\0b\rMod Name=\xEF\xBB\xBFx\r\t[Other]\rPath=\xFF\xFE\\\r\n"_ba,
        // An empty file.
        "",
    };
    std::vector<SettingsSave> saves{{u"Arena"_s, u"Path"_s, u"C:\\Games\\"_s},
                                    {u"Arena"_s, u"Config Name"_s, u"\uFEFFlead"_s},
                                    {u"Arena"_s, u"Tab"_s, u"\t\uFEFF after an escape"_s},
                                    {u"Other"_s, u"Quoted"_s, u" \uFEFF;\"x"_s},
                                    {u"New Game"_s, u"Path"_s, u"/games/d"_s},
                                    {u""_s, u"Top"_s, u"1"_s}};
    // Names and values of all sorts.
    for (const QString& section :
         {u"Arena"_s, u"My"_s, u"My/Game"_s, u"My\\Game"_s, u"My%2FGame"_s, u""_s, u"General"_s,
          u"general"_s, u"%67eneral"_s, u"[x] ;y"_s, u"Jeu d'été ü"_s})
        for (const QString& key : {u"Load Mod Always"_s, u"Game/Load Mod Always"_s, u"a"_s,
                                   u"/a/"_s, u"a\\b"_s, u"x=1;[y] é€"_s, u" ; c"_s})
            saves.push_back({section, key, QString::number(saves.size())});
    // Lone surrogates stand in the middle and at the end.
    for (const QString& value :
         {u"True"_s, u"a, b"_s, u"@Invalid()"_s, u"@Size(1 2)"_s, u"  lead"_s, u"trail  "_s, u""_s,
          u"two\nlines\r\t"_s, u"\"q\" ;x=1"_s, u"end\\"_s, u"\u0001a\u007F\u0080"_s,
          u"nul"_s + QChar(0) + u"12"_s, u"é€😀 %41"_s, u"\xD800x\xDC00y\xD800"_s})
        saves.push_back({u"Values"_s, u"Key %1"_s.arg(saves.size()), value});
    for (const QByteArray& old : oldFiles) {
        EXPECT_EQ(checkSettingsSave(old, saves), QStringList()) << old.constData();
        EXPECT_EQ(checkSettingsSave(old, {saves[4]}), QStringList()) << old.constData();
    }
    // Inputs the fuzz target once found at fault, kept so every build checks them.
    const QDir corpus(QStringLiteral(QFORMS_SOURCE_DIR "/tests/data/settings-corpus"));
    EXPECT_FALSE(corpus.isEmpty());
    for (const QString& name : corpus.entryList(QDir::Files))
        EXPECT_EQ(checkSettingsSaveInput(contents(corpus.filePath(name))), QStringList()) << name;

    // Only the line of the key set changes, a new section goes at the end in
    // the old line ends; comments, odd lines, order and permissions stay.
    ASSERT_TRUE(writeFile(file, oldFiles[0]));
    ASSERT_TRUE(
        QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup));
    const QFile::Permissions permissions = QFile::permissions(file);
    EXPECT_EQ(store->readValue(App, u"Arena"_s, u"Path"_s, {}), u"/games/c"_s);
    store->saveValue(App, u"Arena"_s, u"Path"_s, u"/games/new"_s);
    store->saveValue(App, u"New Game"_s, u"Path"_s, u"/games/d"_s);
    EXPECT_EQ(contents(file), oldFiles[0]) << "saves wait for sync()";
    store->sync();
    store->sync();
    EXPECT_EQ(store->writeCount(), 1) << "nothing to write, no write";
    QByteArray expected = oldFiles[0];
    expected.replace("/games/c ;", "/games/new ;");
    EXPECT_EQ(contents(file), expected + "\r\n\r\n[New%20Game]\r\nPath=/games/d\r\n");
    EXPECT_EQ(QFile::permissions(file), permissions);

    // What the store wrote it does not read again; a file another program
    // replaces, even with one of the same size, is read once however many
    // values are looked up.
    EXPECT_EQ(opensOf(file, [&] { store->readValue(App, u"Arena"_s, u"Path"_s, {}); }), 0);
    QByteArray replaced = contents(file);
    replaced.replace("/games/new", "/games/old");
    ASSERT_TRUE(writeFile(file, replaced));
    const int opens = opensOf(file, [&] {
        for (const QString& key : {u"Path"_s, u"Mod Name"_s, u"Path"_s})
            store->readValue(App, u"Arena"_s, key, {});
    });
    EXPECT_EQ(opens, 1);
    EXPECT_EQ(store->readValue(App, u"Arena"_s, u"Path"_s, {}), u"/games/old"_s);
}

TEST_F(SettingsStoreTest, TwoProcessesSavingAtTheSameTimeLoseNothing)
{
    constexpr int Saves = 500;
    const auto saveAll = [&](const QString& game) {
        IniFileSettingsStore own(dir.path());
        for (int i = 0; i < Saves; ++i) {
            own.saveValue(App, game, u"Key %1"_s.arg(i), QString::number(i));
            own.sync();
        }
    };
    const pid_t child = forkRunning([&] { saveAll(u"Second"_s); });
    saveAll(u"First"_s);
    EXPECT_TRUE(exitsCleanly(child));

    const IniFileSettingsStore fresh(dir.path());
    int lost = 0;
    for (const QString& game : {u"First"_s, u"Second"_s})
        for (int i = 0; i < Saves; ++i)
            lost += fresh.readValue(App, game, u"Key %1"_s.arg(i), {}) != QString::number(i);
    EXPECT_EQ(lost, 0);
}

TEST_F(SettingsStoreTest, AProcessKilledWhileSavingLeavesTheOldOrTheNewValues)
{
    constexpr int Keys = 3000;
    saveGeneration(*store, 0, Keys);
    for (const auto delay : {0ms, 7ms, 23ms, 61ms}) {
        const pid_t child = forkRunning([&] {
            IniFileSettingsStore saver(dir.path());
            for (int generation = 1;; ++generation)
                saveGeneration(saver, generation, Keys);
        });
        // Killed while it saves, after it wrote at least once.
        const QByteArray before = contents(file);
        const QDeadlineTimer deadline(10s);
        while (contents(file) == before && !deadline.hasExpired())
            ::usleep(1000);
        ::usleep(useconds_t(std::chrono::microseconds(delay).count()));
        ::kill(child, SIGKILL);
        ASSERT_EQ(::waitpid(child, nullptr, 0), child);
        ASSERT_FALSE(deadline.hasExpired()) << "the child never saved";

        const IniFileSettingsStore fresh(dir.path());
        const QString first = fresh.readValue(App, u"Arena"_s, u"Key 0"_s, u"<missing>"_s);
        int mixed = 0;
        for (int k = 1; k < Keys; ++k)
            mixed += fresh.readValue(App, u"Arena"_s, u"Key %1"_s.arg(k), {}) != first;
        EXPECT_EQ(mixed, 0) << "after " << delay.count() << " ms";
    }
    // A lock the last kill may have left is taken over, and so are the
    // temporary files of killed saves; files of other programs stay.
    const QStringList others = {App + u".ini.qforms-save-x.tmp.bak"_s, App + u".ini.1a2b"_s,
                                u"Other.ini.qforms-save-1a2b.tmp"_s,
                                App + u".ini.qforms-save-.tmp"_s};
    for (const QString& name : others + QStringList{App + u".ini.qforms-save-k1ll3d.tmp"_s})
        ASSERT_TRUE(writeFile(dir.filePath(name), "x"));
    EXPECT_NO_THROW(saveGeneration(*store, 98, Keys));
    QStringList left = QDir(dir.path()).entryList(QDir::Files);
    left.removeAll(App + u".ini"_s);
    left.removeAll(App + u".ini.lock"_s);
    EXPECT_EQ(QSet<QString>(left.begin(), left.end()), QSet<QString>(others.begin(), others.end()));
}

// Values QSettings gives a type or finds twice read as its value().toString()
// reads them, here and after a save (checkSettingsSave reads every key of the
// old file through both); names a host builds for its own QSettings are ours.
TEST_F(SettingsStoreTest, KeysReadAsQSettingsReadsThemAndHostNamesAreOurs)
{
    const char* files[] = {
        "[a]\nlist=x, y\nend=x,\ninvalid=@Invalid()\nrect=@Rect(1 2 3)\nsize=@Size(1)\n"
        "point=@Point(1  2)\nrect4=@Rect(1 2 3 4)\nsize2=@Size(1 2)\n",
        "[a\\b]\nc=2\n[a]\nb\\c=1\n",              // the later section in name order wins,
        "[a]\nb\\c=1\n[a\\b]\nc=2\n[a]\nb\\c=3\n", // whatever the file order,
        "[b]\nk=1\n[a]\nk=2\n[b]\nk=3\nk=4\n",     // and in one section the later line
        "[a]\nMod 100%=x\nMod%20100%25=y\n",
        "\xEF\xBB\xBF k=1\n [a]\nk=2\n"}; // a blank after a byte order mark is part of the key
    for (const char* old : files)
        EXPECT_EQ(checkSettingsSave(old, {{u"a"_s, u"new"_s, u"1"_s}}), QStringList()) << old;

    QSettings host(file, QSettings::IniFormat);
    host.setValue(u"Arena/Mod 100%"_s, u"x"_s);
    host.setValue(u"Arena/100%25"_s, u"y"_s);
    host.sync();
    EXPECT_EQ(store->readValue(App, u"Arena"_s, u"Mod 100%"_s, {}), u"x"_s);
    // A name that would read as an escape keeps its "%" as one, so every name
    // has a key of its own.
    EXPECT_EQ(settingsini::settingsKey(u"Arena"_s, u"100%25"_s), u"Arena/100%2525"_s);
    const QStringList names = {
        u"a/b"_s, u"a%2Fb"_s,   u"a%2fb"_s,     u"a\\b"_s,      u"a%5Cb"_s,   u"a%25"_s, u"a%"_s,
        u"a%%"_s, u"general"_s, u"%67eneral"_s, u"%47eneral"_s, u"General"_s, u"G"_s};
    QSet<QString> keys;
    for (const QString& section : names)
        for (const QString& key : names)
            keys.insert(settingsini::settingsKey(section, key));
    EXPECT_EQ(keys.size(), names.size() * names.size());
}

// A person's comments, blank lines and line ends, and another program's
// section, survive every save; a damaged file is kept as found before the
// first save that changes lines nobody set, and the host hears of it once.
TEST_F(SettingsStoreTest, SavesKeepWhatPeopleWroteAndADamagedFileIsKeptAsFound)
{
    qForms control;
    control.setSettingsStore(store);
    control.setQpGameName(u"Arena"_s);
    QStringList copies;
    QObject::connect(&control, &qForms::settingsFileDamaged,
                     [&](const QString& copy) { copies.append(copy); });
    const auto save = [&](const QString& path) {
        control.widgets().txtPath.setText(path);
        control.qSaveSettings();
    };

    const QByteArray clean = "; my notes\r\n\r\n[MyOtherTool]\r\nToken = abc ; keep\r\n\r\n"
                             "[Arena]\r\n; the folder\r\nPath=/old\r\n";
    ASSERT_TRUE(writeFile(file, clean));
    save(u"/games/a"_s);
    save(u"/games/b b"_s);
    QByteArray expected = clean;
    EXPECT_EQ(contents(file), expected.replace("/old", "/games/b b"));
    EXPECT_TRUE(copies.isEmpty());

    const struct {
        QByteArray damaged;
        QByteArray after; // what the line reads like after the save
    } cases[] = {
        // A quote typed by hand and never closed ends at its line: the
        // sections after it are their own again.
        {"[Arena]\nCommand Line Parameters=\"+set a\nPath=/old\n[MyOtherTool]\nToken=abc\n",
         "Command Line Parameters=\"+set a\"\nPath=/games/c\n[MyOtherTool]\nToken=abc\n"},
        {"[Arena]\nPath=/\xFF\xFEold\n[MyOtherTool]\nToken=abc\n", "Path=/games/c\n"},
        {"[Arena]\nPath=/o\0ld\n[MyOtherTool]\nToken=abc\n"_ba, "Path=/games/c\n"}};
    for (const auto& c : {cases[0], cases[1], cases[2], cases[0]}) {
        ASSERT_TRUE(writeFile(file, c.damaged));
        copies.clear();
        save(u"/games/c"_s);
        save(u"/games/c"_s);
        ASSERT_EQ(copies.size(), 1) << c.damaged.constData();
        EXPECT_EQ(contents(copies.first()), c.damaged);
        EXPECT_TRUE(contents(file).contains(c.after)) << contents(file).constData();
        EXPECT_EQ(store->readValue(App, u"MyOtherTool"_s, u"Token"_s, {}), u"abc"_s);
    }
    // Three copies at most: the oldest goes.
    const QStringList kept = QDir(dir.path()).entryList({App + u".ini.damaged-*"_s});
    EXPECT_EQ(kept.size(), 3);
    EXPECT_TRUE(kept.contains(QFileInfo(copies.first()).fileName()));
}

// A failed save keeps the old file, and its values for the next sync; the
// control reports each failed save once, with the system's reason.
TEST_F(SettingsStoreTest, AFailedSaveIsReportedAndKeepsTheOldFileAndTheValues)
{
    qForms control;
    control.setSettingsStore(store);
    control.setQpGameName(u"Arena"_s);
    QStringList messages;
    QObject::connect(&control, &qForms::settingsSaveFailed,
                     [&](const QString& message) { messages.append(message); });
    control.widgets().txtPath.setText(u"/old"_s);
    control.qSaveSettings();
    const QByteArray old = contents(file);

    // The disk fills up after the write began.
    const QString big(64 * 1024, u'v');
    control.widgets().txtPath.setText(big);
    {
        const FileSizeLimit fewKilobytes(4096);
        control.qSaveSettings();
    }
    // A configuration "folder" that is a file.
    control.setSettingsStore(std::make_shared<IniFileSettingsStore>(file));
    control.qSaveSettings();
    ASSERT_EQ(messages.size(), 2);
    EXPECT_TRUE(messages[0].contains(file + u": File too large"_s)) << messages[0];
    EXPECT_EQ(contents(file), old);
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden), QStringList{App + u".ini"_s});

    // Root writes into read-only folders; this check runs as nobody.
    EXPECT_TRUE(exitsCleanly(forkRunning([&] {
        ASSERT_TRUE(::geteuid() != 0 || (::setgid(65534) == 0 && ::setuid(65534) == 0));
        QTemporaryDir folder;
        const auto readOnly = std::make_shared<IniFileSettingsStore>(folder.path());
        QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::ExeOwner);
        control.setSettingsStore(readOnly);
        control.qSaveSettings();
        ASSERT_EQ(messages.size(), 3);
        EXPECT_TRUE(messages[2].contains(readOnly->fileName(App) + u": Permission denied"_s))
            << messages[2];
    })));

    // Another process holds the lock, or held it and died.
    QLockFile held(file + u".lock"_s);
    ASSERT_TRUE(held.tryLock(0));
    store->setLockTimeout(50ms);
    EXPECT_THROW(store->sync(), SaveError);
    held.unlock();
    EXPECT_EQ(contents(file), old);
    ASSERT_TRUE(exitsCleanly(forkRunning(
                    [&] { ASSERT_TRUE((new QLockFile(held.fileName()))->tryLock(0)); })) &&
                QFile::exists(held.fileName()));
    store->setLockTimeout(5s);
    store->sync();
    EXPECT_EQ(IniFileSettingsStore(dir.path()).readValue(App, u"Arena"_s, u"Path"_s, {}), big);

    // An empty lock file may be one a process has just made and is writing its
    // id into; once it is over a second old, it was left by a killed process.
    QFile empty(held.fileName());
    ASSERT_TRUE(empty.open(QIODevice::WriteOnly));
    const qint64 made = empty.fileTime(QFileDevice::FileModificationTime).toSecsSinceEpoch();
    store->saveValue(App, u"Arena"_s, u"Path"_s, u"/new"_s);
    store->sync();
    EXPECT_GE(::time(nullptr), made + 2);
}
