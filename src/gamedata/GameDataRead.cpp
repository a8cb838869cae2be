#include "context/ControlContext.h"
#include "context/DataPaths.h"
#include "gamedata/GameData.h"
#include "gamedata/GameDataKeys.h"
#include "gamedata/ValueSyntax.h"
#include "platform/Errors.h"
#include "platform/ProfileReader.h"

namespace qf::gamedata {

namespace {
constexpr qint32 ProfileBufferSize = 1024;
}

QString profileRead(ControlContext& context, const QString& section, const QString& key,
                    const QString& defaultValue, const QString& path)
{
    ProfileString read =
        getPrivateProfileString(section, key, defaultValue, path, ProfileBufferSize);
    context.strProfileBuffer = std::move(read.value);
    context.intProfileLength = read.length;
    return context.strProfileBuffer;
}

QString gameDataPath(const ControlContext& context)
{
    // Every profile read of a call names the same file: build its path once.
    thread_local QString appPath, qgdFile, path;
    if (path.isNull() || appPath != context.strAppPath || qgdFile != context.strQGDFile) {
        appPath = context.strAppPath;
        qgdFile = context.strQGDFile;
        path = datapaths::dataPath(appPath, qgdFile);
    }
    return path;
}

QString gameDataRead(ControlContext& context, const QString& section, const QString& key,
                     const QString& defaultValue)
{
    return profileRead(context, section, key, defaultValue, gameDataPath(context));
}

QString customControlRead(ControlContext& context, int entry, const QString& suffix,
                          const QString& defaultValue)
{
    // entryKey() written into a buffer that keeps its room: a build or a load
    // reads thousands of keys in a row.
    thread_local QString key;
    key.resize(0);
    key += QLatin1StringView("Control");
    char16_t digits[12];
    int count = 0;
    quint32 rest = entry < 0 ? 0u - quint32(entry) : quint32(entry);
    do {
        digits[count++] = char16_t(u'0' + rest % 10);
        rest /= 10;
    } while (rest > 0);
    if (entry < 0)
        key += u'-';
    while (count > 0)
        key += QChar(digits[--count]);
    key += suffix;
    return gameDataRead(context, Section, key, defaultValue);
}

Kind kindOf(const QString& loweredType)
{
    if (loweredType == KindCheckBox)
        return Kind::CheckBox;
    if (loweredType == KindOptionButton)
        return Kind::OptionButton;
    if (loweredType == KindFrame)
        return Kind::Frame;
    if (loweredType == KindCombo)
        return Kind::Combo;
    if (loweredType == KindLabel)
        return Kind::Label;
    if (loweredType == KindLine)
        return Kind::Line;
    if (loweredType == KindText)
        return Kind::Text;
    return Kind::None;
}

void forEachEntry(ControlContext& context, const std::function<void(int entry)>& visit)
{
    int count = 0;
    try {
        count = syntax::toInt16(gameDataRead(context, Section, Count, QStringLiteral("0")));
    } catch (const Error&) {
        return;
    }
    for (int entry = 1; entry <= count; ++entry)
        visit(entry);
}

} // namespace qf::gamedata
