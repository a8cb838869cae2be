#include "platform/IniLanguageTextProvider.h"

#include "platform/Errors.h"
#include "platform/Paths.h"
#include "platform/ProfileReader.h"
#include "platform/TraceCategory.h"

#include <optional>

namespace qf {

namespace {

std::optional<QString> lookUp(const QString& file, const QString& textNumber)
{
    const auto document = loadProfile(file);
    if (!document)
        return std::nullopt;
    return document->value(u"Texts", textNumber);
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

    if (auto found = lookUp(languageFile(appPath, language), textNumber))
        return *found;
    if (language != 0) {
        if (auto found = lookUp(languageFile(appPath, 0), textNumber))
            return *found;
    }
    throw TextLookupError(QStringLiteral("No text for key %1").arg(textKey));
}

void IniLanguageTextProvider::trace(const QString& message, const QString& appPath)
{
    Q_UNUSED(appPath)
    qCDebug(lcTrace).noquote() << message;
}

} // namespace qf
