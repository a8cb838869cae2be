#pragma once

#include <QString>
#include <QStringList>

namespace qf {

/// The per-user store of text values that the control shares with its host,
/// addressed by application, section and key. Hosts and tests may substitute
/// their own implementation.
class SettingsStore {
public:
    virtual ~SettingsStore() = default;

    /// Stores the text under application/section/key, replacing an earlier value.
    /// @param application The application. @param section The section (the game).
    /// @param key The key. @param value The text.
    virtual void saveValue(const QString& application, const QString& section, const QString& key,
                           const QString& value) = 0;

    /// @param application The application. @param section The section (the game).
    /// @param key The key. @param defaultValue Given when nothing is stored.
    /// @return The stored text, or defaultValue when the key or its section does not exist.
    virtual QString readValue(const QString& application, const QString& section,
                              const QString& key, const QString& defaultValue) const = 0;

    /// Writes what saveValue collected to disk.
    /// @throws qf::SaveError Writing failed; the file on disk keeps its old content.
    virtual void sync() = 0;

    /// The copies of damaged settings files that syncs since the last call
    /// kept before they changed lines nobody set; none by default.
    /// @return Their paths.
    virtual QStringList takeDamagedCopies() { return {}; }
};

} // namespace qf
