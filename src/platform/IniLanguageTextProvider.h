#pragma once

#include "platform/LanguageTextProvider.h"

namespace qf {

// Texts from UTF-8 INI files <appPath>/Data/Languages/<language index>.ini,
// section [Texts], keyed by the three-digit text number ("053=..."). Text by
// text: a text the host's file of the language lacks (or a file it does not
// have) comes from the library's own texts of that language (English 0 and
// German 1), then from the host's language 0, then from the library's.
// Trace messages go to the logging category "qforms.trace".
class IniLanguageTextProvider : public LanguageTextProvider {
public:
    // HostFilesOnly: for a host that ships every text itself and wants one it
    // lacks to fail as a lookup rather than show the library's wording.
    enum class Sources { HostFilesAndBuiltInTexts, HostFilesOnly };
    explicit IniLanguageTextProvider(Sources sources = Sources::HostFilesAndBuiltInTexts)
        : m_sources(sources)
    {
    }

    bool fileExists(const QString& path) override;
    QString text(const QString& textKey, const QString& appPath) override;
    void trace(const QString& message, const QString& appPath) override;

    // The file that holds the texts of a language.
    static QString languageFile(const QString& appPath, qint64 languageIndex);

    // The library's own texts of a language, as a Qt resource path.
    static QString builtInFile(qint64 languageIndex);

private:
    Sources m_sources;
};

} // namespace qf
