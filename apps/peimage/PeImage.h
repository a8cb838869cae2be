#pragma once

#include <QByteArray>
#include <QString>

namespace qf {

struct PeOptions {
    bool pe32Plus = false;
    bool withResources = true;
    quint32 fileVersionMS = 0;
    quint32 fileVersionLS = 0;
    quint16 valueLength = 52; // wValueLength; the whole record and 0xAB bytes past it follow
    quint32 blockSize = 0;    // pads the version block to this size when larger
    quint16 resourceName = 1; // the id the version block is filed under
};

// A small Windows program image with a version resource, and the file offsets
// of the fields that tests damage. Besides RT_VERSION the resource directory
// holds two other types, a second name (the next id after resourceName) and a
// second language, all leading to a decoy version block with version 9.9.9.9.
struct PeImage {
    explicit PeImage(const PeOptions& options = {});

    QByteArray bytes;
    qsizetype sectionCount = 0;      // COFF NumberOfSections
    qsizetype resourceDirectory = 0; // data directory entry: RVA, size
    qsizetype resourceSection = 0;   // section header of .rsrc
    qsizetype rootDirectory = 0;
    qsizetype nameDirectory = 0;     // of RT_VERSION
    qsizetype languageDirectory = 0; // of its first name
    qsizetype dataEntry = 0;         // of its first language
    qsizetype versionBlock = 0;
    qsizetype versionBlockSize = 0;

    void set16(qsizetype offset, quint16 value);
    void set32(qsizetype offset, quint32 value);
    // Points every entry of every resource directory at the root directory.
    void makeDirectoryCyclic();
    // Writes the image, extended with a hole to sparseSize bytes when larger.
    bool write(const QString& path, qint64 sparseSize = 0) const;
};

} // namespace qf
