#pragma once

#include <QString>

namespace qf {

/// The outside service that gives the control its texts in the user's language,
/// answers whether a file exists, and receives the game check's trace messages.
/// Hosts and tests may substitute their own implementation.
class LanguageTextProvider {
public:
    virtual ~LanguageTextProvider() = default;

    /// True when a file (not a folder) exists at the path. Paths follow the
    /// control's path rules ("\" or "/" separators, letter case resolved).
    /// @param path The path. @return Whether the file exists.
    virtual bool fileExists(const QString& path) = 0;

    /// The text for a text key: the language index in decimal followed by the
    /// three-digit text number ("1053", "-1053"). Throws qf::TextLookupError when
    /// there is none.
    /// @param textKey The key. @param appPath The host's folder.
    /// @return The text.
    /// @throws qf::TextLookupError No text for the key.
    virtual QString text(const QString& textKey, const QString& appPath) = 0;

    /// A trace message of the game check.
    /// @param message The message. @param appPath The host's folder.
    virtual void trace(const QString& message, const QString& appPath) = 0;
};

} // namespace qf
