#include "platform/IniLanguageTextProvider.h"

#include "platform/Errors.h"
#include "platform/Paths.h"
#include "platform/ProfileReader.h"
#include "platform/TextDecoding.h"
#include "platform/TraceCategory.h"

#include <QFile>
#include <QStringList>

#include <iterator>
#include <memory>
#include <optional>

namespace qf {

namespace {

std::shared_ptr<const IniDocument> parseResource(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return nullptr;
    return std::make_shared<const IniDocument>(IniDocument::parse(decodeText(file.readAll())));
}

// The texts the library carries for the languages it knows, used when a host
// ships no file for one.
std::shared_ptr<const IniDocument> builtInTexts(qint64 language)
{
    static const std::shared_ptr<const IniDocument> documents[] = {
        parseResource(IniLanguageTextProvider::builtInFile(0)),
        parseResource(IniLanguageTextProvider::builtInFile(1)),
    };
    return language >= 0 && language < qint64(std::size(documents)) ? documents[language] : nullptr;
}

// Looks the text up in the host's file of the language, then in the
// library's own texts of it; notes where it looked. A host's file need hold
// only the texts it changes.
std::optional<QString> lookUp(const QString& appPath, qint64 language, const QString& textNumber,
                              bool withBuiltIns, QStringList& lookedIn)
{
    const QString hostFile = IniLanguageTextProvider::languageFile(appPath, language);
    const auto host = loadProfile(hostFile);
    if (host) {
        lookedIn << hostFile;
        if (auto found = host->value(u"Texts", textNumber))
            return found;
    }
    if (const auto builtIn = withBuiltIns ? builtInTexts(language) : nullptr) {
        lookedIn << IniLanguageTextProvider::builtInFile(language);
        return builtIn->value(u"Texts", textNumber);
    }
    if (!host)
        lookedIn << hostFile; // where the host would put it
    return std::nullopt;
}

bool isDecimal(QStringView text)
{
    if (text.startsWith(u'-'))
        text = text.sliced(1);
    if (text.isEmpty())
        return false;
    for (const QChar c : text) {
        if (c < u'0' || c > u'9')
            return false;
    }
    return true;
}

} // namespace

bool IniLanguageTextProvider::fileExists(const QString& path)
{
    return paths::isFile(path);
}

QString IniLanguageTextProvider::languageFile(const QString& appPath, qint64 languageIndex)
{
    return appPath + QStringLiteral("/Data/Languages/") + QString::number(languageIndex) +
           QStringLiteral(".ini");
}

QString IniLanguageTextProvider::text(const QString& textKey, const QString& appPath)
{
    // The key is the language index followed by the three-digit text number.
    const auto notAKey = [&] {
        return TextLookupError(QStringLiteral("Not a text key: \"%1\"").arg(textKey));
    };
    if (textKey.size() < 4)
        throw notAKey();
    const QStringView index = QStringView(textKey).chopped(3);
    bool ok = isDecimal(index);
    const qint64 language = ok ? index.toLongLong(&ok) : 0;
    if (!ok)
        throw notAKey();
    const QString textNumber = textKey.right(3);

    const bool withBuiltIns = m_sources == Sources::HostFilesAndBuiltInTexts;
    QStringList lookedIn;
    if (auto found = lookUp(appPath, language, textNumber, withBuiltIns, lookedIn))
        return *found;
    // Then language 0, the host's and the library's, as the last resort.
    if (language != 0) {
        if (auto found = lookUp(appPath, 0, textNumber, withBuiltIns, lookedIn))
            return *found;
    }
    throw TextLookupError(QStringLiteral("No text for key %1 in %2")
                              .arg(textKey, lookedIn.join(QStringLiteral(", "))));
}

QString IniLanguageTextProvider::builtInFile(qint64 languageIndex)
{
    return QStringLiteral(":/qforms/Languages/%1.ini").arg(languageIndex);
}

void IniLanguageTextProvider::trace(const QString& message, const QString& appPath)
{
    Q_UNUSED(appPath)
    qCDebug(lcTrace).noquote() << message;
}

} // namespace qf
