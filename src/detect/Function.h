#pragma once

#include <QString>

namespace qf::pe {
class ByteSource;
}

// The control's procedures around the version resource of a program file.
namespace qf::Function {

// The fixed version record as it lies in the file: thirteen little-endian
// 32-bit fields.
struct VS_FIXEDFILEINFO {
    quint32 dwSignature = 0;
    quint32 dwStrucVersion = 0;
    quint32 dwFileVersionMS = 0;
    quint32 dwFileVersionLS = 0;
    quint32 dwProductVersionMS = 0;
    quint32 dwProductVersionLS = 0;
    quint32 dwFileFlagsMask = 0;
    quint32 dwFileFlags = 0;
    quint32 dwFileOS = 0;
    quint32 dwFileType = 0;
    quint32 dwFileSubtype = 0;
    quint32 dwFileDateMS = 0;
    quint32 dwFileDateLS = 0;
};
static_assert(sizeof(VS_FIXEDFILEINFO) == 52);

// The record of the program file at the path; all zeros when the file has no
// version resource, does not exist or cannot be read as a program.
VS_FIXEDFILEINFO ReadFixedFileInfo(const QString& path);

// The same for an image held by any byte source.
VS_FIXEDFILEINFO ReadFixedFileInfo(pe::ByteSource& source);

// High 16 bits, ".", low 16 bits, both in unsigned decimal: 65535.2.
QString VersionPairText(quint32 value);

// The file version of the program at the path as a.b.c.d; 0.0.0.0 without one.
QString FileVersionText(const QString& path);

} // namespace qf::Function
