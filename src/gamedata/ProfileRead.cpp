#include "control/qForms.h"
#include "gamedata/GameDataKeys.h"

#include "platform/ProfileReader.h"

namespace {
constexpr qint32 ProfileBufferSize = 1024;
}

QString qForms::profileRead(const QString& section, const QString& key, const QString& defaultValue,
                            const QString& path)
{
    qf::ProfileString read =
        qf::getPrivateProfileString(section, key, defaultValue, path, ProfileBufferSize);
    strProfileBuffer = std::move(read.value);
    intProfileLength = read.length;
    return strProfileBuffer;
}

QString qForms::gameDataPath() const
{
    return strAppPath + QStringLiteral("\\Data\\") + strQGDFile;
}

QString qForms::gameDataRead(const QString& section, const QString& key,
                             const QString& defaultValue)
{
    return profileRead(section, key, defaultValue, gameDataPath());
}

QString qForms::customControlRead(int entry, const QString& suffix, const QString& defaultValue)
{
    return gameDataRead(qf::gamedata::Section, qf::gamedata::entryKey(entry, suffix), defaultValue);
}
