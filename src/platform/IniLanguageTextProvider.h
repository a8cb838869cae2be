#pragma once

#include "platform/LanguageTextProvider.h"

namespace qf {

/// Texts from UTF-8 INI files `<appPath>/Data/Languages/<language index>.ini`,
/// section [Texts], keyed by the three-digit text number ("053=..."). Text by
/// text: a text the host's file of the language lacks (or a file it does not
/// have) comes from the library's own texts of that language (English 0 and
/// German 1), then from the host's language 0, then from the library's.
/// Trace messages go to the logging category "qforms.trace".
class IniLanguageTextProvider : public LanguageTextProvider {
public:
    /// Where texts come from.
    enum class Sources {
        HostFilesAndBuiltInTexts, ///< the host's files, the library's texts behind them
        /// Only the host's files: for a host that ships every text itself and
        /// wants one it lacks to fail as a lookup rather than show the library's wording.
        HostFilesOnly
    };
    /// @param sources Where texts come from.
    explicit IniLanguageTextProvider(Sources sources = Sources::HostFilesAndBuiltInTexts)
        : m_sources(sources)
    {
    }

    /// @param path The path. @return Whether a file (not a folder) is there.
    bool fileExists(const QString& path) override;
    /// @param textKey Language index and three-digit number ("1053").
    /// @param appPath The host's folder. @return The text.
    /// @throws qf::TextLookupError Not a text key, or no source has the text.
    QString text(const QString& textKey, const QString& appPath) override;
    /// Logs the message to "qforms.trace" at debug level.
    /// @param message The message. @param appPath Not used.
    void trace(const QString& message, const QString& appPath) override;

    /// @param appPath The host's folder. @param languageIndex The language.
    /// @return The file that holds the texts of a language.
    static QString languageFile(const QString& appPath, qint64 languageIndex);

    /// @param languageIndex The language.
    /// @return The library's own texts of a language, as a Qt resource path.
    static QString builtInFile(qint64 languageIndex);

private:
    Sources m_sources;
};

} // namespace qf
