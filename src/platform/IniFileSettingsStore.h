#pragma once

#include "platform/SettingsIniFormat.h"
#include "platform/SettingsStore.h"

#include <QHash>
#include <QString>

#include <chrono>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include <sys/stat.h>

namespace qf {

/// The settings store in QSettings' INI files, one per application:
/// "<config folder>/<application>.ini", a group per section (names escaped as
/// settingsini::settingsKey says), so a host that uses QSettings on the same
/// file reads and writes the same values.
//
/// saveValue() only collects; reads answer collected values first, then the
/// file as it is on disk (re-read whenever its identity changes, at most once
/// per profile snapshot). sync() writes each file once: under the lock
/// "<file>.lock" that QSettings takes too, it reads the file as it is now,
/// changes the lines of the collected keys in it (settingsini::Document), and
/// writes it in place of the file (flushed to the disk, renamed over it), so
/// other processes' keys and a person's comments survive, and an interrupted
/// write leaves the old file; the temporary files of saves that were killed
/// are removed then too. A file whose other lines must change as well (a
/// quote left open, a damaged line of a key set) is first kept as found in
/// "<file>.damaged-<date>" (three copies at most). Values
/// still collected when the store is destroyed are lost: only sync() writes.
//
/// Use it from one thread.
class IniFileSettingsStore : public SettingsStore {
public:
    /// Files in the per-user configuration folder ($XDG_CONFIG_HOME), where
    /// QSettings(QSettings::IniFormat, QSettings::UserScope, application) keeps them.
    IniFileSettingsStore();
    /// Files in another folder. @param configFolder The folder.
    explicit IniFileSettingsStore(const QString& configFolder);

    /// @return The folder of the files.
    QString configFolder() const { return m_configFolder; }

    /// The file that holds the application's values. Throws qf::InvalidValueError
    /// for an application name that cannot be a file name.
    /// @param application The application. @return The file's path.
    QString fileName(const QString& application) const;

    /// Collects a value; nothing is written before sync().
    /// @param application Names the file. @param section The group.
    /// @param key The key. @param value The text.
    /// @throws qf::InvalidValueError An empty key or an unusable application name.
    void saveValue(const QString& application, const QString& section, const QString& key,
                   const QString& value) override;
    /// @param application Names the file. @param section The group.
    /// @param key The key. @param defaultValue Given when the key is missing.
    /// @return The collected value, else the file's, else defaultValue.
    /// @throws qf::PathError The file exists but cannot be read.
    /// @throws qf::InvalidValueError An empty key or an unusable application name.
    QString readValue(const QString& application, const QString& section, const QString& key,
                      const QString& defaultValue) const override;

    /// Writes every file with collected values. When one fails the others are
    /// still written; the qf::SaveError names the files that failed and the
    /// system's reason; they keep their old content, and their values stay
    /// collected for the next sync().
    /// @throws qf::SaveError One or more files could not be written.
    void sync() override;

    /// How long sync() waits for another process's lock before it fails.
    /// @param timeout The wait; 10 seconds by default.
    void setLockTimeout(std::chrono::milliseconds timeout) { m_lockTimeout = timeout; }

    /// @return Files written since the store was made.
    qint64 writeCount() const { return m_writeCount; }

    /// @return The paths of the damaged files kept since the last call, oldest first.
    QStringList takeDamagedCopies() override;

private:
    struct Identity {
        dev_t device = 0;
        ino_t inode = 0;
        off_t size = 0;
        timespec modified{};
        bool operator==(const Identity& other) const;
    };
    static Identity identityOf(const struct stat& status);
    struct File {
        QString path;
        // Collected values by settings key, in the order first saved.
        std::vector<std::pair<QString, QString>> unwritten;
        QHash<QString, size_t> unwrittenIndex;
        // The file as last read; nullopt identity: no file.
        std::optional<Identity> identity;
        settingsini::Document document;
        bool read = false;
        // The profile snapshot in which the file was last looked at: within
        // one snapshot (one call of the control) it is looked at once.
        quint64 snapshot = 0;
    };

    File& file(const QString& application) const;
    // Brings the file's document up to date with the disk.
    void refresh(File& file) const;
    void write(File& file);

    QString m_configFolder;
    std::chrono::milliseconds m_lockTimeout{10'000};
    qint64 m_writeCount = 0;
    QStringList m_damagedCopies;
    mutable std::map<QString, File> m_files;
};

} // namespace qf
