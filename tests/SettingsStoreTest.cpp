#include "platform/Errors.h"
#include "platform/QSettingsStore.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <csignal>
#include <optional>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace qf;
using namespace Qt::Literals::StringLiterals;

namespace {

const QString App = u"Quillmarsh 2"_s;

QByteArray contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Qt parses each file once per process and shares the result, so reading what a
// file really holds takes a copy under another name.
class FreshCopy {
public:
    explicit FreshCopy(const QString& settingsFile)
    {
        EXPECT_TRUE(QFile::copy(settingsFile, m_dir.filePath(App + u".ini"_s)));
    }
    QString read(const QString& section, const QString& key) const
    {
        return m_store.readValue(App, section, key, u"<missing>"_s);
    }

private:
    QTemporaryDir m_dir;
    QSettingsStore m_store{m_dir.path()};
};

// Root may write wherever file permissions say no, but not past the file size
// limit: at 0 bytes every write of this process to a file fails.
class FileWritesRefused {
public:
    FileWritesRefused()
    {
        ::getrlimit(RLIMIT_FSIZE, &m_saved);
        m_savedHandler = std::signal(SIGXFSZ, SIG_IGN);
        rlimit none = m_saved;
        none.rlim_cur = 0;
        ::setrlimit(RLIMIT_FSIZE, &none);
    }
    ~FileWritesRefused()
    {
        ::setrlimit(RLIMIT_FSIZE, &m_saved);
        std::signal(SIGXFSZ, m_savedHandler);
    }

private:
    rlimit m_saved{};
    void (*m_savedHandler)(int) = nullptr;
};

} // namespace

TEST(SettingsStoreTest, DefaultFileIsTheUserScopeQSettingsFile)
{
    EXPECT_EQ(QSettingsStore().fileName(App),
              QSettings(QSettings::IniFormat, QSettings::UserScope, App).fileName());
}

TEST(SettingsStoreTest, NamesStayApartAndValuesComeBackAsWritten)
{
    QTemporaryDir dir;
    QSettingsStore store(dir.path());
    const QStringList sections{u"Arena"_s,     u"My"_s,         u"My/Game"_s, u"My\\Game"_s,
                               u"My%2FGame"_s, u""_s,           u"General"_s, u"general"_s,
                               u"%67eneral"_s, u"Jeu d'été ü"_s};
    const QStringList keys{
        u"Load Mod Always"_s, u"Game/Load Mod Always"_s, u"a"_s, u"/a/"_s, u"a/b"_s, u"a\\b"_s,
        u"x=1;[y] é"_s};
    int n = 0;
    for (const QString& section : sections)
        for (const QString& key : keys)
            store.saveValue(App, section, key, QString::number(n++));
    const QStringList values{u"1"_s,          u"True"_s,          u"a, b"_s,
                             u"@Invalid()"_s, u"@Variant(\\0)"_s, u"  blanks  "_s,
                             u""_s,           u"two\nlines"_s,    u"\"quoted\" ;x"_s};
    for (qsizetype i = 0; i < values.size(); ++i)
        store.saveValue(App, u"Values"_s, u"Key %1"_s.arg(i), values[i]);
    store.sync();

    const FreshCopy copy(store.fileName(App));
    n = 0;
    for (const QString& section : sections)
        for (const QString& key : keys)
            EXPECT_EQ(copy.read(section, key), QString::number(n++))
                << section.toStdString() << " / " << key.toStdString();
    for (qsizetype i = 0; i < values.size(); ++i)
        EXPECT_EQ(copy.read(u"Values"_s, u"Key %1"_s.arg(i)), values[i]);

    // Plain names reach the file unchanged, so a host using QSettings finds them.
    QSettings host(store.fileName(App), QSettings::IniFormat);
    EXPECT_EQ(host.value(u"Arena/Load Mod Always"_s).toString(), u"0"_s);
}

TEST(SettingsStoreTest, MissingKeysGiveTheDefaultAndEmptyNamesAreRejected)
{
    QTemporaryDir dir;
    QSettingsStore store(dir.path());
    EXPECT_EQ(store.readValue(App, u"Arena"_s, u"Path"_s, u"none"_s), u"none"_s);
    store.saveValue(App, u"Arena"_s, u"Path"_s, u""_s);
    store.sync();
    EXPECT_EQ(store.readValue(App, u"Arena"_s, u"Path"_s, u"none"_s), u""_s);
    EXPECT_EQ(store.readValue(App, u"Arena"_s, u"Mod Name"_s, u"none"_s), u"none"_s);
    EXPECT_EQ(store.readValue(App, u"Other"_s, u"Path"_s, u"none"_s), u"none"_s);

    EXPECT_THROW(store.saveValue(App, u"Arena"_s, u""_s, u"x"_s), InvalidValueError);
    EXPECT_THROW(store.readValue(App, u"Arena"_s, u""_s, u"x"_s), InvalidValueError);
    EXPECT_THROW(store.saveValue(u""_s, u"Arena"_s, u"Path"_s, u"x"_s), InvalidValueError);
    EXPECT_THROW(store.saveValue(u"../x"_s, u"Arena"_s, u"Path"_s, u"x"_s), InvalidValueError);
}

TEST(SettingsStoreTest, OnlySyncWritesTheFile)
{
    // A host's event loop, which QSettings would otherwise use to write on its own.
    int argc = 1;
    char name[] = "qforms_tests";
    char* argv[] = {name, nullptr};
    QCoreApplication app(argc, argv);

    QTemporaryDir dir;
    QSettingsStore store(dir.path());
    const QString file = store.fileName(App);
    store.saveValue(App, u"Arena"_s, u"Path"_s, u"/games/arena"_s);
    QCoreApplication::processEvents();
    EXPECT_FALSE(QFile::exists(file));
    store.sync();
    const QByteArray synced = contents(file);
    EXPECT_TRUE(synced.contains("/games/arena"));

    store.saveValue(App, u"Arena"_s, u"Path"_s, u"/games/other"_s);
    QCoreApplication::processEvents();
    EXPECT_EQ(contents(file), synced);
    EXPECT_EQ(store.readValue(App, u"Arena"_s, u"Path"_s, {}), u"/games/other"_s);
    store.sync();
    EXPECT_EQ(FreshCopy(file).read(u"Arena"_s, u"Path"_s), u"/games/other"_s);
}

TEST(SettingsStoreTest, FailedSyncThrowsAndKeepsTheOldFile)
{
    QTemporaryDir dir;
    QSettingsStore store(dir.path());
    const QString file = store.fileName(App);
    store.saveValue(App, u"Arena"_s, u"Path"_s, u"/old"_s);
    store.sync();
    const QByteArray old = contents(file);

    store.saveValue(App, u"Arena"_s, u"Path"_s, u"/new"_s);
    std::optional<SaveError> error;
    {
        const FileWritesRefused refused;
        try {
            store.sync();
        } catch (const SaveError& e) {
            error = e;
        }
    }
    ASSERT_TRUE(error.has_value());
    EXPECT_TRUE(error->message().contains(file));
    EXPECT_EQ(contents(file), old);
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files), QStringList{App + u".ini"_s});

    // The value stays collected, and the next sync writes it.
    EXPECT_EQ(store.readValue(App, u"Arena"_s, u"Path"_s, {}), u"/new"_s);
    store.sync();
    EXPECT_EQ(FreshCopy(file).read(u"Arena"_s, u"Path"_s), u"/new"_s);

    // A configuration "folder" that is a regular file cannot hold a settings file.
    QFile notAFolder(dir.filePath(u"not a folder"_s));
    ASSERT_TRUE(notAFolder.open(QIODevice::WriteOnly));
    notAFolder.close();
    QSettingsStore misplaced(notAFolder.fileName());
    misplaced.saveValue(App, u"Arena"_s, u"Path"_s, u"/x"_s);
    EXPECT_THROW(misplaced.sync(), SaveError);
}

TEST(SettingsStoreTest, ReadsFollowTheFileOnDisk)
{
    QTemporaryDir dir;
    QSettingsStore first(dir.path());
    QSettingsStore second(dir.path());
    first.saveValue(App, u"Arena"_s, u"Path"_s, u"/a"_s);
    first.sync();
    EXPECT_EQ(second.readValue(App, u"Arena"_s, u"Path"_s, {}), u"/a"_s);

    // Another program replaces the file.
    const auto replaceFile = [&](const QByteArray& bytes) {
        QFile file(first.fileName(App));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        ASSERT_EQ(file.write(bytes), bytes.size());
    };
    replaceFile("[Arena]\nPath=/games/b\nCommand%20Line%20Parameters=+set a 1, +set b 2\n");
    EXPECT_EQ(first.readValue(App, u"Arena"_s, u"Path"_s, {}), u"/games/b"_s);
    // Written by hand without quotes, which QSettings reads as a list.
    EXPECT_EQ(first.readValue(App, u"Arena"_s, u"Command Line Parameters"_s, {}),
              u"+set a 1, +set b 2"_s);

    // A line QSettings cannot parse does not make a good write a failure, and the
    // other program's value is kept.
    replaceFile("[Arena]\nPath=/games/c\nnot a setting\n");
    first.saveValue(App, u"Arena"_s, u"Mod Name"_s, u"baseq"_s);
    EXPECT_NO_THROW(first.sync());
    const FreshCopy copy(first.fileName(App));
    EXPECT_EQ(copy.read(u"Arena"_s, u"Path"_s), u"/games/c"_s);
    EXPECT_EQ(copy.read(u"Arena"_s, u"Mod Name"_s), u"baseq"_s);
}

TEST(SettingsStoreTest, ConcurrentProcessesKeepEachOthersValues)
{
    QTemporaryDir dir;
    constexpr int Saves = 500;
    const auto saveAll = [&](const QString& game) {
        QSettingsStore store(dir.path());
        for (int i = 0; i < Saves; ++i) {
            store.saveValue(App, game, u"Key %1"_s.arg(i), QString::number(i));
            // Pausing after a write leaves the lock free, so that the two processes
            // take turns instead of one sleeping through QLockFile's back-off.
            if (i % 5 == 4) {
                store.sync();
                ::usleep(5000);
            }
        }
    };
    const pid_t child = ::fork();
    ASSERT_NE(child, -1);
    if (child == 0) {
        int code = 0;
        try {
            saveAll(u"Second"_s);
        } catch (...) {
            code = 1;
        }
        ::_exit(code);
    }
    saveAll(u"First"_s);
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);

    const FreshCopy copy(QSettingsStore(dir.path()).fileName(App));
    int lost = 0;
    for (const QString& game : {u"First"_s, u"Second"_s})
        for (int i = 0; i < Saves; ++i)
            lost += copy.read(game, u"Key %1"_s.arg(i)) != QString::number(i);
    EXPECT_EQ(lost, 0);
}
