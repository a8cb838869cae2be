#pragma once

#include <QByteArray>
#include <QString>

namespace qf {

// Decodes the bytes of a text file written on Windows: a UTF-8 or UTF-16
// (little or big endian) byte order mark is honoured and removed; without
// one, the bytes are UTF-8 when they are valid UTF-8, else Windows-1252.
QString decodeText(const QByteArray& bytes);

// One character per byte in the Windows-1252 code page. The five bytes that
// code page leaves undefined map to the same code points as in Latin-1.
QString decodeWindows1252(const QByteArray& bytes);

} // namespace qf
