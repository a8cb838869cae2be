#pragma once

#include "platform/SettingsStore.h"

#include <QString>

#include <map>
#include <memory>

class QObject;
class QSettings;

namespace qf {

// The settings store in QSettings INI files, one per application:
// "<config folder>/<application>.ini", a group per section, keys as given.
//
// QSettings takes "/" (and on Windows "\") for a group separator, so section
// and key names reach it with "%", "/" and "\" written as %25, %2F and %5C.
// Names without these pass unchanged, so a host that uses QSettings directly
// finds them. A section spelt "general" in any letter case other than "General"
// has its first letter written the same way (%67 for "g"), because QSettings
// files all of them under one INI section "[%General]".
//
// Values are written only by sync(). While saved values wait for it, reads
// answer from the file as last read plus those values; otherwise every read
// sees the file as it is on disk (QSettings compares its size and modification
// time). QSettings shares unwritten values between all its objects on the same
// file in one process: two stores on one folder see each other's saves at once,
// and the next sync() or read through either of them writes them all. Values
// still unwritten when the store is destroyed are written then, unreported.
//
// Use it from one thread.
class QSettingsStore : public SettingsStore {
public:
    // Files in the per-user configuration folder ($XDG_CONFIG_HOME), where
    // QSettings(QSettings::IniFormat, QSettings::UserScope, application) keeps them.
    QSettingsStore();
    explicit QSettingsStore(const QString& configFolder);
    ~QSettingsStore() override;

    QSettingsStore(const QSettingsStore&) = delete;
    QSettingsStore& operator=(const QSettingsStore&) = delete;

    QString configFolder() const { return m_configFolder; }

    // The file that holds the application's values. Throws qf::InvalidValueError
    // for an application name that cannot be a file name.
    QString fileName(const QString& application) const;

    // Throw qf::InvalidValueError for an empty key or an unusable application name.
    void saveValue(const QString& application, const QString& section, const QString& key,
                   const QString& value) override;
    QString readValue(const QString& application, const QString& section, const QString& key,
                      const QString& defaultValue) const override;

    // Writes every application file with unwritten values. When one fails the
    // others are still written; the qf::SaveError names the files that failed,
    // whose values stay collected for the next sync().
    void sync() override;

private:
    struct File {
        QString path;
        std::unique_ptr<QSettings> settings;
        bool unwritten = false;
    };

    File& file(const QString& application) const;
    void reopen(File& file) const;
    bool write(File& file);

    QString m_configFolder;
    std::unique_ptr<QObject> m_flushBlocker;
    mutable std::map<QString, File> m_files;
};

} // namespace qf
