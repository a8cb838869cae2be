#include "platform/QSettingsStore.h"

#include "platform/Errors.h"

#include <QDir>
#include <QEvent>
#include <QObject>
#include <QSettings>
#include <QStandardPaths>
#include <QStringList>

namespace qf {

namespace {

// QSettings posts itself an update request on every change and writes its file
// when an event loop delivers it. Here only sync() writes, where a failure can
// be reported.
class FlushBlocker : public QObject {
public:
    bool eventFilter(QObject*, QEvent* event) override
    {
        return event->type() == QEvent::UpdateRequest;
    }
};

QString escapedName(const QString& name)
{
    QString escaped;
    escaped.reserve(name.size());
    for (const QChar c : name) {
        if (c == u'%')
            escaped += u"%25";
        else if (c == u'/')
            escaped += u"%2F";
        else if (c == u'\\')
            escaped += u"%5C";
        else
            escaped += c;
    }
    return escaped;
}

QString escapedSection(const QString& section)
{
    const QString general = QStringLiteral("General");
    if (section == general || section.compare(general, Qt::CaseInsensitive) != 0)
        return escapedName(section);
    return u'%' + QString::number(section.at(0).unicode(), 16).toUpper() + section.mid(1);
}

QString settingsKey(const QString& section, const QString& key)
{
    if (key.isEmpty())
        throw InvalidValueError(
            QStringLiteral("A settings key must not be empty (section \"%1\")").arg(section));
    // An empty section leaves the key at the top level, the INI section [General].
    if (section.isEmpty())
        return escapedName(key);
    return escapedSection(section) + u'/' + escapedName(key);
}

// Values are written as strings, but the file is shared: a host or a text editor
// may have left a list there (a, b without quotes) or a value of another type.
QString textOf(const QVariant& value)
{
    if (value.metaType().id() == QMetaType::QStringList)
        return value.toStringList().join(QStringLiteral(", "));
    return value.toString();
}

} // namespace

QSettingsStore::QSettingsStore()
    : QSettingsStore(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation))
{
}

QSettingsStore::QSettingsStore(const QString& configFolder)
    : m_configFolder(configFolder), m_flushBlocker(std::make_unique<FlushBlocker>())
{
}

QSettingsStore::~QSettingsStore() = default;

QString QSettingsStore::fileName(const QString& application) const
{
    if (application.isEmpty() || application.contains(u'/') || application.contains(QChar::Null))
        throw InvalidValueError(
            QStringLiteral("\"%1\" cannot name a settings file").arg(application));
    return QDir(m_configFolder).filePath(application + QStringLiteral(".ini"));
}

void QSettingsStore::saveValue(const QString& application, const QString& section,
                               const QString& key, const QString& value)
{
    const QString fullKey = settingsKey(section, key);
    File& target = file(application);
    target.settings->setValue(fullKey, value);
    target.unwritten = true;
}

QString QSettingsStore::readValue(const QString& application, const QString& section,
                                  const QString& key, const QString& defaultValue) const
{
    const QString fullKey = settingsKey(section, key);
    File& source = file(application);
    // With nothing to write, this only re-reads the file when it changed on disk.
    if (!source.unwritten)
        source.settings->sync();
    const QVariant value = source.settings->value(fullKey);
    return value.isValid() ? textOf(value) : defaultValue;
}

void QSettingsStore::sync()
{
    QStringList failed;
    for (auto& entry : m_files) {
        File& target = entry.second;
        if (!target.unwritten)
            continue;
        if (write(target))
            target.unwritten = false;
        else
            failed.append(target.path);
    }
    if (!failed.isEmpty())
        throw SaveError(QStringLiteral("Could not write the settings file %1")
                            .arg(failed.join(QStringLiteral(", "))));
}

QSettingsStore::File& QSettingsStore::file(const QString& application) const
{
    auto it = m_files.find(application);
    if (it == m_files.end()) {
        File opened;
        opened.path = fileName(application);
        it = m_files.emplace(application, std::move(opened)).first;
        reopen(it->second);
    }
    return it->second;
}

void QSettingsStore::reopen(File& file) const
{
    // Built before the old object goes, so that Qt's per-process cache of the file,
    // with the values still unwritten, is handed on; the new object writes them as
    // it opens.
    auto settings = std::make_unique<QSettings>(file.path, QSettings::IniFormat);
    settings->installEventFilter(m_flushBlocker.get());
    file.settings = std::move(settings);
}

bool QSettingsStore::write(File& file)
{
    // A QSettings object reports the first error it met for the rest of its life, so
    // after one the attempt is left to a new object.
    if (file.settings->status() == QSettings::NoError)
        file.settings->sync();
    else
        reopen(file);
    // A format error only says the file holds lines QSettings could not parse (and
    // drops when it writes), but it hides whether the write failed: a new object
    // writes whatever is still unwritten and reports that alone.
    if (file.settings->status() == QSettings::FormatError)
        reopen(file);
    return file.settings->status() == QSettings::NoError;
}

} // namespace qf
