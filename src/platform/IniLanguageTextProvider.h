#pragma once

#include "platform/LanguageTextProvider.h"

namespace qf {

/// Texts from UTF-8 INI files `<appPath>/Data/Languages/<language index>.ini`,
/// section [Texts], keyed by the three-digit text number ("053=..."). For a
/// language the host has no file of, the library's own English (0) and German
/// (1) texts stand in. A text missing in its language comes from language 0.
/// Trace messages go to the logging category "qforms.trace".
class IniLanguageTextProvider : public LanguageTextProvider {
public:
    /// @param path The path. @return Whether a file (not a folder) is there.
    bool fileExists(const QString& path) override;
    /// @param textKey Language index and three-digit number ("1053").
    /// @param appPath The host's folder. @return The text.
    /// @throws qf::TextLookupError Not a text key, or no text in the language nor in language 0.
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
};

} // namespace qf
