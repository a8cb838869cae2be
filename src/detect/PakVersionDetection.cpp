#include "context/ControlContext.h"
#include "context/DataPaths.h"
#include "context/SkipOnError.h"
#include "detect/Detect.h"
#include "gamedata/GameData.h"

namespace qf::detect {

namespace {

const QString AvaSection = QStringLiteral("AVA Game");

} // namespace

QString detectPakVersion(ControlContext& context, const QString& strBase)
{
    auto& lstAVA = context.widgets.lstAVA;
    const QString& strGamePath = context.strGamePath;
    const auto trace = [&](const QString& message) { detect::trace(context, message); };
    const auto profileRead = [&](const QString& key, const QString& defaultValue,
                                 const QString& path) {
        return gamedata::profileRead(context, AvaSection, key, defaultValue, path);
    };

    // A folder that does not exist lists nothing, so the game list files of
    // the folder the list showed before are not taken for this game's.
    bool listed = false;
    skipOnError(context, {}, [&] {
        lstAVA.setPath(datapaths::gameListFolder(context.strAppPath, context.strGameName));
        listed = true;
    });
    trace(QStringLiteral("lstAVA.Path > ") + lstAVA.path());
    trace(QStringLiteral("AVA List COunt > ") + QString::number(lstAVA.listCount()));

    QString strVersion;
    const int count = listed ? lstAVA.listCount() : 0;
    // Every file is tried: when several pak files exist, the last listed wins.
    for (int i = 1; i <= count; ++i) {
        skipOnError(context, {}, [&] { lstAVA.setListIndex(i - 1); });
        const QString listFile = lstAVA.path() + QLatin1Char('\\') + lstAVA.fileName();
        const QString strPakForVersion = profileRead(QStringLiteral("PakForVersion"), {}, listFile);
        const QString strPakExtension =
            profileRead(QStringLiteral("PakExtension"), QStringLiteral(".pk3"), listFile);
        trace(QStringLiteral("strPakForVersion > ") + strPakForVersion);
        const QString strPakName = profileRead(QStringLiteral("PakName"), {}, listFile);
        trace(QStringLiteral("strPakName > ") + strPakName);

        const QString pakFile = strPakName + strPakForVersion + strPakExtension;
        trace(strGamePath + QLatin1Char('\\') + strBase + QLatin1Char('\\') + pakFile);
        const bool endsWithSeparator = strGamePath.endsWith(u'\\') || strGamePath.endsWith(u'/');
        const QString pakPath = strGamePath +
                                (endsWithSeparator ? QString() : QStringLiteral("\\")) + strBase +
                                QLatin1Char('\\') + pakFile;
        bool exists = false;
        skipOnError(context, {},
                    [&] { exists = context.languageTextProvider().fileExists(pakPath); });
        if (exists) {
            strVersion = profileRead(QStringLiteral("Version"), QStringLiteral("Error"), listFile);
            trace(QStringLiteral("strVersion > ") + strVersion);
        }
    }
    return strVersion;
}

} // namespace qf::detect
