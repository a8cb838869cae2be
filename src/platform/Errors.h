#pragma once

#include <stdexcept>
#include <string>

#include <QString>

/// The control's own code. One hierarchy for every failure the control
/// raises: steps that the control skips catch qf::Error; everything else
/// reaches the caller.
namespace qf {

/// The base of every failure the control raises; what() is the message in UTF-8.
class Error : public std::runtime_error {
public:
    /// @param message What failed, in words.
    explicit Error(const QString& message) : std::runtime_error(message.toStdString()) {}
    /// @return The message given at construction.
    QString message() const { return QString::fromStdString(what()); }
};

/// A text that is not a number or not a Boolean where one is needed.
class TypeMismatchError : public Error {
    using Error::Error;
};

/// A number outside the range of the type it is converted to.
class OverflowError : public Error {
    using Error::Error;
};

/// A widget property set to a value it does not take.
class InvalidValueError : public Error {
    using Error::Error;
};

/// Loading a widget array element that exists already.
class ElementExistsError : public Error {
    using Error::Error;
};

/// Addressing or unloading a widget array element that does not exist.
class MissingElementError : public Error {
    using Error::Error;
};

/// A folder or file that does not exist or cannot be read.
class PathError : public Error {
    using Error::Error;
};

/// The language text provider has no text for a key.
class TextLookupError : public Error {
    using Error::Error;
};

/// The settings store could not write its file.
class SaveError : public Error {
    using Error::Error;
};

/// The user cancelled a dialog that reports Cancel as an error.
class CancelError : public Error {
    using Error::Error;
};

} // namespace qf
