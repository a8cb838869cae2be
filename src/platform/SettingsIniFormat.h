#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QHash>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>
#include <vector>

/// The INI files of QSettings (IniFormat), read and written without QSettings,
/// so that a host that uses QSettings on the same file sees our values and we
/// see its.
namespace qf::settingsini {

/// The key under which QSettings finds section/key: "section/key", or "key" for
/// an empty section; a host that reads or writes the control's values with
/// its own QSettings builds the name with it. QSettings takes "/" (and on
/// Windows "\") for a group separator, so a game name or key keeps them as one
/// name with "/" and "\" written as %2F and %5C, and a "%" that would read as
/// one of these escapes (or as %25) as %25; names without these pass
/// unchanged ("Mod 100%" stays as it is). A section spelt "general" in
/// any letter case other than "General" has its first letter written the same
/// way (%67 for "g"), because QSettings files all of them under one INI section
/// "[%General]".
/// @param section The section (the game's name). @param key The key.
/// @return The QSettings key.
/// @throws qf::InvalidValueError An empty key.
QString settingsKey(const QString& section, const QString& key);

/// One settings file as QSettings sees it: each key with its value, read by
/// QSettings' rules (a key defined in several sections takes the value of the
/// section QSettings reads last: sections in the order of their names, a
/// repeated section in file order). It keeps the bytes it was made from, and a
/// save changes only the lines of the keys it sets: new keys go at the end of
/// their section, new sections at the end of the file; comments, blank lines,
/// order, letter case and every other byte stay.
class Document {
public:
    /// An empty file.
    Document() = default;
    /// Reads a file's bytes. @param bytes The file.
    explicit Document(QByteArrayView bytes);

    /// The value as QSettings' value().toString() gives it: a list, an invalid
    /// value and a point, size or rectangle read as an empty text; nullopt when
    /// the key is missing.
    /// @param settingsKey As settingsKey() builds it.
    /// @return The value.
    std::optional<QString> value(const QString& settingsKey) const;

    /// The file with the values set (each key at most once), each reading back
    /// exactly whatever it holds. altered: lines that were not set changed too, because the file
    /// held lines QSettings' rules join or change: a quote left open at the end
    /// of its line (the value then ends at its line, as a person meant, and
    /// the lines after it read as their own again), a line of a key set that
    /// held invalid UTF-8, a NUL or a line break, or a file that no in-place
    /// change could keep readable, which is then written whole as QSettings
    /// writes it.
    /// document: the bytes read back, kept so that the next read of the file
    /// need not parse them again; null for a file written whole.
    struct Saved {
        QByteArray bytes;                   ///< The file to write.
        bool altered = false;               ///< See above.
        std::unique_ptr<Document> document; ///< See above.
    };
    /// @param values Settings keys and their texts.
    /// @return The file to write.
    Saved withValues(const std::vector<std::pair<QString, QString>>& values) const;

    /// @return The bytes it was made from.
    const QByteArray& bytes() const { return m_bytes; }

private:
    // A value as written before QSettings gives it a type: a text ("@" marks a
    // typed one) or, where unquoted commas split it, a list of them.
    struct Stored {
        QString text;
        QStringList list;
        bool isList = false;
        bool operator==(const Stored&) const = default;
    };
    struct Entry {
        QString key;
        Stored value;
        // Whether QSettings finds the entry under key; false for a key it
        // keeps with a leading "/", which a rewrite moves to the key without.
        bool exact = true;
        // The INI section it was read from, by which QSettings orders it.
        QString section;
        // Its logical line: [begin, end) of the bytes, the "=" at equals.
        qsizetype begin = 0;
        qsizetype end = 0;
        qsizetype equals = 0;
        // The line holds what a rewrite cannot keep: invalid UTF-8, a NUL or
        // a line break.
        bool damaged = false;
    };
    // An INI section as it stands in the file: where a key added to it goes.
    struct Section {
        QString prefix;      // "name/", empty for [General] and the lines before any header
        qsizetype addAt = 0; // the end of the physical line of its last logical line
    };

    void insert(Entry entry);
    // The bytes with the quotes that run past their line closed there; empty
    // when none does.
    QByteArray withRunawayQuotesClosed() const;
    Saved inPlace(const std::vector<std::pair<QString, QString>>& values) const;
    QByteArray wholeFile(const std::vector<std::pair<QString, QString>>& values) const;
    // setEntries: for each entry, whether values sets it.
    bool readsAsSaved(const Document& saved, const std::vector<std::pair<QString, QString>>& values,
                      const std::vector<bool>& setEntries) const;

    QByteArray m_bytes;
    std::vector<Entry> m_entries;
    QHash<QString, size_t> m_index;
    std::vector<Section> m_sections;
    std::vector<qsizetype> m_runawayQuotes; // where a quote is open at a line end
    QByteArray m_eol = "\n";                // the file's own line end, for the lines a save adds
};

} // namespace qf::settingsini
