#include "control/SkipOnError.h"
#include "control/qForms.h"

namespace {

const QString AvaSection = QStringLiteral("AVA Game");

} // namespace

QString qForms::detectPakVersion(const QString& strBase)
{
    auto& lstAVA = m_widgets->lstAVA;
    const auto trace = [this](const QString& message) {
        qf::skipOnError([&] { languageTextProvider().trace(message, strAppPath); });
    };

    // A folder that does not exist lists nothing, so the game list files of
    // the folder the list showed before are not taken for this game's.
    bool listed = false;
    qf::skipOnError([&] {
        lstAVA.setPath(strAppPath + QStringLiteral("\\Data\\") + strGameName +
                       QStringLiteral("\\AVA"));
        listed = true;
    });
    trace(QStringLiteral("lstAVA.Path > ") + lstAVA.path());
    trace(QStringLiteral("AVA List COunt > ") + QString::number(lstAVA.listCount()));

    QString strVersion;
    const int count = listed ? lstAVA.listCount() : 0;
    // Every file is tried: when several pak files exist, the last listed wins.
    for (int i = 1; i <= count; ++i) {
        qf::skipOnError([&] { lstAVA.setListIndex(i - 1); });
        const QString listFile = lstAVA.path() + QLatin1Char('\\') + lstAVA.fileName();
        const QString strPakForVersion =
            profileRead(AvaSection, QStringLiteral("PakForVersion"), {}, listFile);
        const QString strPakExtension = profileRead(AvaSection, QStringLiteral("PakExtension"),
                                                    QStringLiteral(".pk3"), listFile);
        trace(QStringLiteral("strPakForVersion > ") + strPakForVersion);
        const QString strPakName = profileRead(AvaSection, QStringLiteral("PakName"), {}, listFile);
        trace(QStringLiteral("strPakName > ") + strPakName);

        const QString pakFile = strPakName + strPakForVersion + strPakExtension;
        trace(strGamePath + QLatin1Char('\\') + strBase + QLatin1Char('\\') + pakFile);
        const bool endsWithSeparator = strGamePath.endsWith(u'\\') || strGamePath.endsWith(u'/');
        const QString pakPath = strGamePath +
                                (endsWithSeparator ? QString() : QStringLiteral("\\")) + strBase +
                                QLatin1Char('\\') + pakFile;
        bool exists = false;
        qf::skipOnError([&] { exists = languageTextProvider().fileExists(pakPath); });
        if (exists) {
            strVersion = profileRead(AvaSection, QStringLiteral("Version"), QStringLiteral("Error"),
                                     listFile);
            trace(QStringLiteral("strVersion > ") + strVersion);
        }
    }
    return strVersion;
}
