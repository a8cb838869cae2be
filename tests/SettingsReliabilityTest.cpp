#include "control/qForms.h"
#include "platform/Errors.h"
#include "platform/IniFileSettingsStore.h"

#include <QDateTime>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QLockFile>
#include <QSettings>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace qf;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString App = u"Quillmarsh 2"_s;

QByteArray contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Root may write wherever file permissions say no, but not past the file size
// limit: writes of this process beyond it fail.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        ::getrlimit(RLIMIT_FSIZE, &m_saved);
        m_savedHandler = std::signal(SIGXFSZ, SIG_IGN);
        rlimit limit = m_saved;
        limit.rlim_cur = bytes;
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit()
    {
        ::setrlimit(RLIMIT_FSIZE, &m_saved);
        std::signal(SIGXFSZ, m_savedHandler);
    }

private:
    rlimit m_saved{};
    void (*m_savedHandler)(int) = nullptr;
};

// Runs work in a child process; its exit code is 0 when work returned.
pid_t forkRunning(const std::function<void()>& work)
{
    const pid_t child = ::fork();
    if (child == 0) {
        int code = 0;
        try {
            work();
        } catch (...) {
            code = 1;
        }
        ::_exit(code);
    }
    return child;
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

} // namespace

// Why the store writes its files itself: QSettings reports success for a file
// cut short when its last write fails.
TEST(SettingsReliabilityTest, QSettingsCannotKeepTheStoresFiles)
{
    QTemporaryDir dir;
    const QString file = dir.filePath(u"host.ini"_s);
    {
        QSettings host(file, QSettings::IniFormat);
        for (int k = 0; k < 50; ++k)
            host.setValue(u"Arena/Key %1"_s.arg(k), QString(100, u'o'));
    }
    const QByteArray old = contents(file);
    const pid_t child = forkRunning([&] {
        const FileSizeLimit cutShort(100);
        QSettings host(file, QSettings::IniFormat);
        host.setValue(u"Other/Path"_s, u"/games/other"_s);
        host.sync();
        if (host.status() != QSettings::NoError)
            throw 1;
    });
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "QSettings saw the failure";
    const QByteArray committed = contents(file);
    EXPECT_EQ(committed.size(), 100);
    EXPECT_TRUE(old.startsWith(committed));
    EXPECT_FALSE(QSettings(file, QSettings::IniFormat).contains(u"Arena/Key 49"_s));

    // Nor can a game name holding "/" be one group: "/" separates groups.
    QSettings host(dir.filePath(u"layout.ini"_s), QSettings::IniFormat);
    host.setValue(u"My/Game/Path"_s, u"a"_s);
    EXPECT_EQ(host.childGroups(), QStringList{u"My"_s});
}

TEST(SettingsReliabilityTest, TwoProcessesSavingAtTheSameTimeLoseNothing)
{
    QTemporaryDir dir;
    constexpr int Saves = 500;
    const auto saveAll = [&](const QString& game) {
        IniFileSettingsStore store(dir.path());
        for (int i = 0; i < Saves; ++i) {
            store.saveValue(App, game, u"Key %1"_s.arg(i), QString::number(i));
            store.sync();
        }
    };
    const pid_t child = forkRunning([&] { saveAll(u"Second"_s); });
    ASSERT_NE(child, -1);
    saveAll(u"First"_s);
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);

    const IniFileSettingsStore fresh(dir.path());
    int lost = 0;
    for (const QString& game : {u"First"_s, u"Second"_s})
        for (int i = 0; i < Saves; ++i)
            lost += fresh.readValue(App, game, u"Key %1"_s.arg(i), {}) != QString::number(i);
    EXPECT_EQ(lost, 0);
}

TEST(SettingsReliabilityTest, AProcessKilledWhileSavingLeavesTheOldOrTheNewValues)
{
    QTemporaryDir dir;
    constexpr int Keys = 3000;
    IniFileSettingsStore store(dir.path());
    saveGeneration(store, 0, Keys);
    for (const auto delay : {0ms, 7ms, 23ms, 61ms}) {
        const pid_t child = forkRunning([&] {
            IniFileSettingsStore saver(dir.path());
            for (int generation = 1;; ++generation)
                saveGeneration(saver, generation, Keys);
        });
        ASSERT_NE(child, -1);
        // Killed while it saves, after it wrote at least once.
        const QByteArray before = contents(store.fileName(App));
        const QDeadlineTimer deadline(10s);
        while (contents(store.fileName(App)) == before && !deadline.hasExpired())
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
        EXPECT_EQ(QSettings(store.fileName(App), QSettings::IniFormat).status(),
                  QSettings::NoError);
    }
    // A lock left by a process that died is taken over, whether the last kill
    // left one or not.
    store.setLockTimeout(5s);
    EXPECT_NO_THROW(saveGeneration(store, 98, Keys));
    const QString lockFile = store.fileName(App) + u".lock"_s;
    const pid_t holder = forkRunning([&] {
        if (!(new QLockFile(lockFile))->tryLock(0))
            throw 1;
    });
    int status = 0;
    ASSERT_EQ(::waitpid(holder, &status, 0), holder);
    ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0 && QFile::exists(lockFile));
    EXPECT_NO_THROW(saveGeneration(store, 99, Keys));

    // So is an empty one, left by a process killed as it created it.
    QFile empty(lockFile);
    ASSERT_TRUE(empty.open(QIODevice::WriteOnly));
    empty.setFileTime(QDateTime::currentDateTime().addSecs(-5), QFileDevice::FileModificationTime);
    empty.close();
    EXPECT_NO_THROW(saveGeneration(store, 100, Keys));
}

TEST(SettingsReliabilityTest, SaveSettingsGoesOnWhenTheFileCannotBeWritten)
{
    QTemporaryDir dir;
    const auto store = std::make_shared<IniFileSettingsStore>(dir.path());
    qForms control;
    control.setSettingsStore(store);
    control.setQpGameName(u"Arena"_s);
    control.widgets().txtPath.setText(u"/old"_s);
    control.qSaveSettings();
    const QString file = store->fileName(App);
    const QByteArray old = contents(file);
    ASSERT_TRUE(old.contains("/old"));

    control.widgets().txtPath.setText(u"/new"_s);
    {
        const FileSizeLimit nothing(0);
        EXPECT_NO_THROW(control.qSaveSettings());
    }
    EXPECT_EQ(contents(file), old);

    // A configuration "folder" that is a file.
    control.setSettingsStore(std::make_shared<IniFileSettingsStore>(file));
    EXPECT_NO_THROW(control.qSaveSettings());
    EXPECT_EQ(contents(file), old);

    // Once writing works again, the next save writes.
    control.setSettingsStore(store);
    control.qSaveSettings();
    EXPECT_TRUE(contents(file).contains("/new"));
}

// Root writes into read-only folders; the check runs as nobody then.
TEST(SettingsReliabilityTest, ASaveIntoAReadOnlyFolderIsReportedOnceWithItsReason)
{
    const pid_t child = forkRunning([] {
        if (::geteuid() == 0 && (::setgid(65534) != 0 || ::setuid(65534) != 0))
            throw 1;
        QTemporaryDir dir;
        const auto store = std::make_shared<IniFileSettingsStore>(dir.path());
        qForms control;
        control.setSettingsStore(store);
        control.setQpGameName(u"Arena"_s);
        QStringList messages;
        QObject::connect(&control, &qForms::settingsSaveFailed,
                         [&](const QString& message) { messages.append(message); });
        control.widgets().txtPath.setText(u"/old"_s);
        control.qSaveSettings();
        const QByteArray old = contents(store->fileName(App));

        QFile::setPermissions(dir.path(), QFile::ReadOwner | QFile::ExeOwner);
        control.widgets().txtPath.setText(u"/new"_s);
        EXPECT_TRUE(control.qSaveSettings().isNull());
        EXPECT_EQ(contents(store->fileName(App)), old);
        EXPECT_EQ(messages.size(), 1);
        EXPECT_TRUE(messages.value(0).contains(store->fileName(App))) << messages.value(0);
        EXPECT_TRUE(messages.value(0).contains(u"Permission denied"_s)) << messages.value(0);

        QFile::setPermissions(dir.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        control.qSaveSettings();
        EXPECT_EQ(messages.size(), 1);
        EXPECT_TRUE(contents(store->fileName(App)).contains("/new"));
        std::fflush(stdout);
        if (::testing::Test::HasFailure())
            throw 1;
    });
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
}

TEST(SettingsReliabilityTest, AFailedSyncKeepsTheOldFileAndTheValuesForTheNext)
{
    QTemporaryDir dir;
    IniFileSettingsStore store(dir.path());
    const QString file = store.fileName(App);
    store.saveValue(App, u"Arena"_s, u"Path"_s, u"/old"_s);
    store.sync();
    const QByteArray old = contents(file);

    // The disk fills up after the write began.
    const QString big(64 * 1024, u'v');
    store.saveValue(App, u"Arena"_s, u"Path"_s, big);
    try {
        const FileSizeLimit fewKilobytes(4096);
        store.sync();
        ADD_FAILURE() << "the sync succeeded";
    } catch (const SaveError& error) {
        EXPECT_TRUE(error.message().contains(file + u": File too large"_s)) << error.message();
    }
    EXPECT_EQ(contents(file), old);
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden), QStringList{App + u".ini"_s});

    // Another process holds the lock.
    QLockFile held(file + u".lock"_s);
    ASSERT_TRUE(held.tryLock(0));
    store.setLockTimeout(50ms);
    EXPECT_THROW(store.sync(), SaveError);
    held.unlock();
    EXPECT_EQ(contents(file), old);

    store.sync();
    EXPECT_EQ(IniFileSettingsStore(dir.path()).readValue(App, u"Arena"_s, u"Path"_s, {}), big);
}
