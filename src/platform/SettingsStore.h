#pragma once

#include <QString>
#include <QStringList>

namespace qf {

// The per-user store of text values that the control shares with its host,
// addressed by application, section and key. Hosts and tests may substitute
// their own implementation.
class SettingsStore {
public:
    virtual ~SettingsStore() = default;

    // Stores the text under application/section/key, replacing an earlier value.
    virtual void saveValue(const QString& application, const QString& section, const QString& key,
                           const QString& value) = 0;

    // The stored text, or defaultValue when the key or its section does not exist.
    virtual QString readValue(const QString& application, const QString& section,
                              const QString& key, const QString& defaultValue) const = 0;

    // Writes what saveValue collected to disk. Throws qf::SaveError when that fails;
    // the file on disk then keeps its old content.
    virtual void sync() = 0;

    // The copies of damaged settings files that syncs since the last call
    // kept before they changed lines nobody set; none by default.
    virtual QStringList takeDamagedCopies() { return {}; }
};

} // namespace qf
