#pragma once

#include <QByteArrayView>
#include <QStringList>
#include <QVariant>

#include <vector>

// What a save must keep, whatever the settings file held before: each saved
// value reads back exactly through the store and through QSettings, and each
// other key QSettings read before reads the same after. Shared by the tests and
// the fuzz target.
namespace qf::test {

// The application name whose settings file the tests write.
inline const QString SettingsApp = QStringLiteral("Quillmarsh 2");

struct SettingsSave {
    QString section;
    QString key;
    QString value;
};

// Writes oldFile into a fresh settings folder, saves through the store in one
// sync, and returns the broken promises, one line each.
QStringList checkSettingsSave(const QByteArray& oldFile, const std::vector<SettingsSave>& saves);

// The fuzz input: the old file's length as two bytes (little endian), its
// bytes, then the saves as UTF-16 (little endian) with U+001F between
// section, key and value and U+001E between saves.
QStringList checkSettingsSaveInput(QByteArrayView input);

// A file's bytes, empty when it cannot be read.
QByteArray contents(const QString& path);
bool writeFile(const QString& path, const QByteArray& bytes);

// What QSettings' value().toString() makes of a value a host left.
QString textOf(const QVariant& value);

} // namespace qf::test
