#include "support/SettingsSaveCheck.h"

#include "platform/Errors.h"
#include "platform/IniFileSettingsStore.h"
#include "platform/SettingsIniFormat.h"

#include <QFile>
#include <QHash>
#include <QSettings>
#include <QTemporaryDir>

#include <algorithm>
#include <cstring>

using namespace Qt::Literals::StringLiterals;

namespace qf::test {

namespace {

// Every key QSettings finds by its name, with its type and text. QSettings
// keeps files it read in a cache that trusts a file of the same size and time
// to the millisecond; it reads each state of the file under a new name.
QHash<QString, QString> hostValues(const QString& file, const QString& state)
{
    QFile::copy(file, file + u'.' + state);
    QSettings host(file + u'.' + state, QSettings::IniFormat);
    QHash<QString, QString> values;
    // Keys with an empty part ("a//b", "/a") are found by no name.
    for (const QString& key : host.allKeys())
        if (!key.isEmpty() && !key.startsWith(u'/') && !key.endsWith(u'/') && !key.contains(u"//"))
            values.insert(key, QString::fromLatin1(host.value(key).typeName()) + u':' +
                                   textOf(host.value(key)));
    return values;
}

QString shown(const QString& text)
{
    QString escaped = u"\""_s;
    for (const QChar c : text)
        escaped += c.unicode() < 0x20 || c.unicode() >= 0x7F
                       ? u"\\u%1"_s.arg(c.unicode(), 4, 16, QChar(u'0'))
                       : QString(c);
    return escaped + u'"';
}

} // namespace

QByteArray contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
           file.write(bytes) == bytes.size();
}

QString textOf(const QVariant& value)
{
    return value.toString();
}

// The lines of a file without their ends ("\r\n", "\n" or "\r"): a last
// line without one may gain one when a line is added after it.
QList<QByteArray> linesOf(QByteArray file)
{
    return file.replace("\r\n", "\n").replace('\r', '\n').split('\n');
}

// The old lines that are not in the new file, in order; a line that is there
// but out of order counts as missing.
QList<QByteArray> missingLines(const QByteArray& oldFile, const QByteArray& newFile)
{
    const QList<QByteArray> now = linesOf(newFile);
    QList<QByteArray> missing;
    qsizetype next = 0;
    for (const QByteArray& line : linesOf(oldFile)) {
        const qsizetype at = now.indexOf(line, next);
        if (at < 0)
            missing.append(line);
        else
            next = at + 1;
    }
    return missing;
}

QStringList checkSettingsSave(const QByteArray& oldFile, const std::vector<SettingsSave>& saves)
{
    QTemporaryDir dir;
    IniFileSettingsStore store(dir.path());
    const QString file = store.fileName(SettingsApp);
    if (!writeFile(file, oldFile))
        return {u"cannot write the old file"_s};
    const QHash<QString, QString> before = hostValues(file, u"before"_s);

    QHash<QString, SettingsSave> saved; // by settings key, the last save of each
    for (const SettingsSave& save : saves)
        if (!save.key.isEmpty()) {
            store.saveValue(SettingsApp, save.section, save.key, save.value);
            saved.insert(settingsini::settingsKey(save.section, save.key), save);
        }
    try {
        store.sync();
    } catch (const Error& error) {
        return {error.message()};
    }

    QStringList faults;
    // We read every key as QSettings does.
    const settingsini::Document read(oldFile);
    for (auto it = before.cbegin(); it != before.cend(); ++it) {
        const QString ours = read.value(it.key()).value_or(u"<none>"_s);
        if (ours != it.value().mid(it.value().indexOf(u':') + 1))
            faults.append(u"%1 reads %2 here, %3 in QSettings"_s.arg(shown(it.key()), shown(ours),
                                                                     shown(it.value())));
    }
    // A file changed beyond the lines set is kept as found; else every line
    // but those of keys set stays as it was, in its place.
    const QStringList copies = store.takeDamagedCopies();
    for (const QString& copy : copies)
        if (contents(copy) != oldFile)
            faults.append(u"the copy %1 is not the file as found"_s.arg(copy));
    if (copies.size() > 1)
        faults.append(u"one save kept %1 copies"_s.arg(copies.size()));
    if (copies.isEmpty()) {
        const QList<QByteArray> missing = missingLines(oldFile, contents(file));
        const qsizetype keyLines = std::count_if(
            missing.begin(), missing.end(), [](const QByteArray& l) { return l.contains('='); });
        if (keyLines != missing.size() || keyLines > qsizetype(saved.size()))
            faults.append(
                u"lines nobody set changed: %1"_s.arg(shown(QString::fromUtf8(missing.join("|")))));
    }
    const IniFileSettingsStore fresh(dir.path());
    const QHash<QString, QString> after = hostValues(file, u"after"_s);
    for (auto it = saved.cbegin(); it != saved.cend(); ++it) {
        const QString ours = fresh.readValue(SettingsApp, it->section, it->key, u"<none>"_s);
        const QString theirs = after.value(it.key());
        if (ours != it->value || theirs != u"QString:"_s + it->value)
            faults.append(u"saved %1 = %2 reads %3 here, %4 in QSettings"_s.arg(
                shown(it.key()), shown(it->value), shown(ours), shown(theirs)));
    }
    for (auto it = before.cbegin(); it != before.cend(); ++it)
        if (copies.isEmpty() && !saved.contains(it.key()) && after.value(it.key()) != it.value())
            faults.append(u"%1 was %2, is %3"_s.arg(shown(it.key()), shown(it.value()),
                                                    shown(after.value(it.key()))));
    return faults;
}

QStringList checkSettingsSaveInput(QByteArrayView input)
{
    if (input.size() < 2)
        return {};
    const qsizetype length =
        std::min<qsizetype>(uchar(input[0]) | uchar(input[1]) << 8, input.size() - 2);
    const QByteArray oldFile = input.sliced(2, length).toByteArray();
    const QByteArrayView rest = input.sliced(2 + length);
    QString text(rest.size() / 2, Qt::Uninitialized);
    std::memcpy(text.data(), rest.data(), size_t(text.size()) * 2);

    std::vector<SettingsSave> saves;
    for (const QString& record : text.split(QChar(0x1E))) {
        const QStringList fields = record.split(QChar(0x1F));
        if (fields.size() == 3)
            saves.push_back({fields[0], fields[1], fields[2]});
    }
    return checkSettingsSave(oldFile, saves);
}

} // namespace qf::test
