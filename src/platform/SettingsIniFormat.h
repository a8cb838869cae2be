#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QHash>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

// The INI files of QSettings (IniFormat), read and written without QSettings,
// so that a host that uses QSettings on the same file sees our values and we
// see its.
namespace qf::settingsini {

// The key under which QSettings finds section/key: "section/key", or "key" for
// an empty section. QSettings takes "/" (and on Windows "\") for a group
// separator, so section and key reach it with "%", "/" and "\" written as %25,
// %2F and %5C; names without these pass unchanged. A section spelt "general" in
// any letter case other than "General" has its first letter written the same
// way (%67 for "g"), because QSettings files all of them under one INI section
// "[%General]". Throws qf::InvalidValueError for an empty key.
QString settingsKey(const QString& section, const QString& key);

// One settings file as QSettings sees it: each key with its value, in the order
// the keys first come. Whatever the bytes it is made from, it is written out
// whole and the way QSettings writes, so every value QSettings reads from the
// old bytes it reads the same from the new, and what the old bytes could not
// hold (comments, lines without "=", broken quotes) is left behind.
class Document {
public:
    Document() = default;
    explicit Document(QByteArrayView bytes);

    // The value as text, as QSettings reads it (a list joined with ", ");
    // nullopt when the key is missing.
    std::optional<QString> value(const QString& settingsKey) const;

    // Sets the key to a text, which reads back exactly whatever it holds.
    void setValue(const QString& settingsKey, const QString& text);

    // The whole file: a section per group in the order the groups first come,
    // with the line ends of the bytes it was made from.
    QByteArray toBytes() const;

private:
    // A value as written before QSettings gives it a type: a text ("@" marks a
    // typed one) or, where unquoted commas split it, a list of them.
    struct Stored {
        QString text;
        QStringList list;
        bool isList = false;
    };
    struct Entry {
        QString key;
        Stored value;
        // Whether QSettings finds the entry under key; false for a key it
        // keeps with a leading "/", which a rewrite moves to the key without.
        bool exact = true;
    };

    void insert(QString key, Stored value);

    std::vector<Entry> m_entries;
    QHash<QString, size_t> m_index;
    bool m_crlf = false;
};

} // namespace qf::settingsini
