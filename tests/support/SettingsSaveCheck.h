#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringList>

#include <vector>

// What a save must keep, whatever the settings file held before: each saved
// value reads back exactly through the store and through QSettings, and each
// other key QSettings read before reads the same after. Shared by the tests and
// the fuzz target.
namespace qf::test {

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

} // namespace qf::test
