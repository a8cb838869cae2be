#include "detect/Function.h"

#include "platform/PeVersionResource.h"

#include <QtEndian>

#include <algorithm>
#include <array>
#include <cstring>

namespace qf::Function {

namespace {

// The largest version block the control reads; a longer one is cut.
constexpr quint32 MaxVersionInfoSize = 64000;

} // namespace

VS_FIXEDFILEINFO ReadFixedFileInfo(pe::ByteSource& source)
{
    VS_FIXEDFILEINFO info;
    const quint32 size = pe::versionInfoSize(source);
    if (size == 0)
        return info;
    const QByteArray block = pe::versionInfo(source, std::min(size, MaxVersionInfoSize));
    const std::optional<QByteArrayView> root = pe::queryRootBlock(block);
    if (!root)
        return info;

    // The root value may claim fewer or more bytes than the record holds: copy
    // what is there, never more than the record, and leave the rest zero.
    std::array<char, sizeof(VS_FIXEDFILEINFO)> bytes{};
    std::memcpy(bytes.data(), root->data(), std::min<size_t>(size_t(root->size()), bytes.size()));
    const char* field = bytes.data();
    for (quint32* target :
         {&info.dwSignature, &info.dwStrucVersion, &info.dwFileVersionMS, &info.dwFileVersionLS,
          &info.dwProductVersionMS, &info.dwProductVersionLS, &info.dwFileFlagsMask,
          &info.dwFileFlags, &info.dwFileOS, &info.dwFileType, &info.dwFileSubtype,
          &info.dwFileDateMS, &info.dwFileDateLS}) {
        *target = qFromLittleEndian<quint32>(field);
        field += sizeof(quint32);
    }
    return info;
}

VS_FIXEDFILEINFO ReadFixedFileInfo(const QString& path)
{
    pe::FileSource source(path);
    return source.isOpen() ? ReadFixedFileInfo(source) : VS_FIXEDFILEINFO{};
}

QString VersionPairText(quint32 value)
{
    return QString::number(value >> 16) + QLatin1Char('.') + QString::number(value & 0xFFFF);
}

QString FileVersionText(const QString& path)
{
    const VS_FIXEDFILEINFO info = ReadFixedFileInfo(path);
    return VersionPairText(info.dwFileVersionMS) + QLatin1Char('.') +
           VersionPairText(info.dwFileVersionLS);
}

} // namespace qf::Function
