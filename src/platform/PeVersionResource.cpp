#include "platform/PeVersionResource.h"

#include "platform/Paths.h"

#include <QtEndian>

#include <algorithm>
#include <cstring>
#include <vector>

#include <sys/stat.h>

namespace qf::pe {

namespace {

constexpr quint16 DosMagic = 0x5A4D;        // "MZ"
constexpr quint32 PeSignature = 0x00004550; // "PE\0\0"
constexpr quint16 Pe32Magic = 0x10B;
constexpr quint16 Pe32PlusMagic = 0x20B;

constexpr quint64 DosHeaderSize = 64;
constexpr quint64 NewHeaderPointer = 0x3C;
constexpr quint64 CoffHeaderSize = 20;
constexpr quint64 SectionHeaderSize = 40;
constexpr quint32 ResourceDirectoryIndex = 2;
constexpr quint32 DataDirectorySize = 8;

constexpr quint64 DirectoryHeaderSize = 16;
constexpr quint64 DirectoryEntrySize = 8;
constexpr quint64 DataEntrySize = 16;
constexpr quint32 SubdirectoryFlag = 0x80000000;
constexpr quint32 RtVersion = 16;
constexpr quint32 VsVersionInfo = 1;

// True when [offset, offset + length) lies inside [0, limit); cannot overflow.
bool fits(quint64 offset, quint64 length, quint64 limit)
{
    return offset <= limit && length <= limit - offset;
}

quint16 u16(const char* bytes)
{
    return qFromLittleEndian<quint16>(bytes);
}

quint32 u32(const char* bytes)
{
    return qFromLittleEndian<quint32>(bytes);
}

struct Section {
    quint64 virtualAddress = 0;
    quint64 virtualSize = 0;
    quint64 backedSize = 0; // the part of the section that the file holds
    quint64 rawOffset = 0;
};

struct DirectoryEntry {
    quint32 name = 0;
    quint32 target = 0;
};

class Image {
public:
    explicit Image(ByteSource& source) : source_(source) {}

    // Reads the headers and the section table; false for anything that is not
    // a well-formed PE32 or PE32+ image with a resource directory.
    bool load();

    // Reads length bytes at the RVA. All of them must come from the raw data
    // of the one section that holds the RVA: the zero-filled tail of a section
    // and the headers never hold resources in a real image, so such RVAs fail.
    bool readRva(quint64 rva, char* out, quint64 length);

    // The file offset of [rva, rva + length) under the same rule.
    std::optional<quint64> fileOffset(quint64 rva, quint64 length) const;

    quint64 resourceRva() const { return resourceRva_; }

private:
    ByteSource& source_;
    std::vector<Section> sections_;
    quint64 resourceRva_ = 0;
};

bool Image::load()
{
    const quint64 fileSize = source_.size();
    char dos[DosHeaderSize];
    if (!source_.read(0, dos, sizeof dos) || u16(dos) != DosMagic)
        return false;
    const quint64 peOffset = u32(dos + NewHeaderPointer);

    char nt[4 + CoffHeaderSize];
    if (!source_.read(peOffset, nt, sizeof nt) || u32(nt) != PeSignature)
        return false;
    const quint64 sectionCount = u16(nt + 4 + 2);
    const quint64 optionalSize = u16(nt + 4 + 16);
    const quint64 optionalOffset = peOffset + sizeof nt;

    char magicBytes[2];
    if (!source_.read(optionalOffset, magicBytes, sizeof magicBytes))
        return false;
    quint64 countOffset = 0; // NumberOfRvaAndSizes
    switch (u16(magicBytes)) {
    case Pe32Magic:
        countOffset = 92;
        break;
    case Pe32PlusMagic:
        countOffset = 108;
        break;
    default:
        return false;
    }
    const quint64 directoryOffset =
        countOffset + 4 + quint64(ResourceDirectoryIndex) * DataDirectorySize;
    if (!fits(directoryOffset, DataDirectorySize, optionalSize))
        return false;

    char count[4];
    char directory[DataDirectorySize];
    if (!source_.read(optionalOffset + countOffset, count, sizeof count) ||
        u32(count) <= ResourceDirectoryIndex ||
        !source_.read(optionalOffset + directoryOffset, directory, sizeof directory))
        return false;
    resourceRva_ = u32(directory);
    if (resourceRva_ == 0)
        return false;

    // At most 65535 sections of 40 bytes, and only when the file holds them.
    const quint64 tableOffset = optionalOffset + optionalSize;
    const quint64 tableSize = sectionCount * SectionHeaderSize;
    if (sectionCount == 0 || !fits(tableOffset, tableSize, fileSize))
        return false;
    std::vector<char> table(tableSize);
    if (!source_.read(tableOffset, table.data(), tableSize))
        return false;
    sections_.reserve(sectionCount);
    for (quint64 i = 0; i < sectionCount; ++i) {
        const char* header = table.data() + i * SectionHeaderSize;
        Section section;
        const quint64 virtualSize = u32(header + 8);
        const quint64 rawSize = u32(header + 16);
        section.virtualAddress = u32(header + 12);
        section.virtualSize = virtualSize != 0 ? virtualSize : rawSize;
        section.backedSize = virtualSize != 0 ? std::min(virtualSize, rawSize) : rawSize;
        section.rawOffset = u32(header + 20);
        sections_.push_back(section);
    }
    return true;
}

std::optional<quint64> Image::fileOffset(quint64 rva, quint64 length) const
{
    for (const Section& section : sections_) {
        if (rva < section.virtualAddress || rva - section.virtualAddress >= section.virtualSize)
            continue;
        const quint64 delta = rva - section.virtualAddress;
        if (!fits(delta, length, section.backedSize))
            return std::nullopt;
        const quint64 offset = section.rawOffset + delta;
        if (!fits(offset, length, source_.size()))
            return std::nullopt;
        return offset;
    }
    return std::nullopt;
}

bool Image::readRva(quint64 rva, char* out, quint64 length)
{
    const std::optional<quint64> offset = fileOffset(rva, length);
    return offset && source_.read(*offset, out, length);
}

// The entries [first, first + count) of the resource directory table at the
// offset from the start of the resource directory. The whole table, as its
// header counts it, must lie inside one section, which bounds every count.
std::optional<std::vector<DirectoryEntry>> readDirectory(Image& image, quint32 offset,
                                                         bool idEntriesOnly, quint64 maxCount)
{
    const quint64 rva = image.resourceRva() + offset;
    char header[DirectoryHeaderSize];
    if (!image.readRva(rva, header, sizeof header))
        return std::nullopt;
    const quint64 nameCount = u16(header + 12);
    const quint64 idCount = u16(header + 14);
    if (!image.fileOffset(rva, DirectoryHeaderSize + (nameCount + idCount) * DirectoryEntrySize))
        return std::nullopt;

    const quint64 first = idEntriesOnly ? nameCount : 0;
    const quint64 count = std::min(idEntriesOnly ? idCount : nameCount + idCount, maxCount);
    std::vector<char> raw(count * DirectoryEntrySize);
    if (count != 0 && !image.readRva(rva + DirectoryHeaderSize + first * DirectoryEntrySize,
                                     raw.data(), raw.size()))
        return std::nullopt;
    std::vector<DirectoryEntry> entries(count);
    for (quint64 i = 0; i < count; ++i) {
        entries[i].name = u32(raw.data() + i * DirectoryEntrySize);
        entries[i].target = u32(raw.data() + i * DirectoryEntrySize + 4);
    }
    return entries;
}

// The first entry of a directory, when it has one.
std::optional<DirectoryEntry> firstEntry(Image& image, quint32 offset)
{
    const auto entries = readDirectory(image, offset, false, 1);
    if (!entries || entries->empty())
        return std::nullopt;
    return entries->front();
}

} // namespace

bool MemorySource::read(quint64 offset, char* out, quint64 length)
{
    if (!fits(offset, length, size()))
        return false;
    if (length != 0)
        std::memcpy(out, bytes_.data() + offset, length);
    return true;
}

FileSource::FileSource(const QString& path)
{
    std::optional<struct stat> status;
    const QString resolved = paths::resolve(path, status);
    // A folder cannot be read, and opening a pipe or device could block.
    if (!status || !S_ISREG(status->st_mode))
        return;
    file_.setFileName(resolved);
    if (file_.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        size_ = quint64(file_.size());
}

bool FileSource::read(quint64 offset, char* out, quint64 length)
{
    if (!file_.isOpen() || !fits(offset, length, size_))
        return false;
    return file_.seek(qint64(offset)) && file_.read(out, qint64(length)) == qint64(length);
}

std::optional<ResourceData> findVersionResource(ByteSource& source)
{
    Image image(source);
    if (!image.load())
        return std::nullopt;

    // Exactly three levels: type, name, language. A subdirectory where a data
    // entry belongs (or the reverse) ends the search, so a directory that
    // points back at itself is followed at most three times.
    const auto types = readDirectory(image, 0, true, 0xFFFF);
    if (!types)
        return std::nullopt;
    const auto type = std::find_if(types->begin(), types->end(),
                                   [](const DirectoryEntry& e) { return e.name == RtVersion; });
    if (type == types->end() || !(type->target & SubdirectoryFlag))
        return std::nullopt;

    // Only the name VS_VERSION_INFO (id 1) holds version information; a version
    // resource under any other name or a string name is not looked at.
    const auto names = readDirectory(image, type->target & ~SubdirectoryFlag, true, 0xFFFF);
    if (!names)
        return std::nullopt;
    const auto name = std::find_if(names->begin(), names->end(),
                                   [](const DirectoryEntry& e) { return e.name == VsVersionInfo; });
    if (name == names->end() || !(name->target & SubdirectoryFlag))
        return std::nullopt;

    const auto language = firstEntry(image, name->target & ~SubdirectoryFlag);
    if (!language || (language->target & SubdirectoryFlag))
        return std::nullopt;

    char dataEntry[DataEntrySize];
    if (!image.readRva(image.resourceRva() + language->target, dataEntry, sizeof dataEntry))
        return std::nullopt;
    const quint32 dataRva = u32(dataEntry);
    const quint32 dataSize = u32(dataEntry + 4);
    if (dataSize == 0)
        return std::nullopt;
    const std::optional<quint64> offset = image.fileOffset(dataRva, dataSize);
    if (!offset)
        return std::nullopt;
    return ResourceData{*offset, dataSize};
}

quint32 versionInfoSize(ByteSource& source)
{
    const std::optional<ResourceData> data = findVersionResource(source);
    return data ? data->size : 0;
}

QByteArray versionInfo(ByteSource& source, quint32 size)
{
    const std::optional<ResourceData> data = findVersionResource(source);
    if (!data || size == 0)
        return {};
    QByteArray bytes(qsizetype(std::min(size, data->size)), Qt::Uninitialized);
    if (!source.read(data->offset, bytes.data(), quint64(bytes.size())))
        return {};
    return bytes;
}

quint32 fileVersionInfoSize(const QString& path)
{
    FileSource source(path);
    return source.isOpen() ? versionInfoSize(source) : 0;
}

QByteArray fileVersionInfo(const QString& path, quint32 size)
{
    FileSource source(path);
    return source.isOpen() ? versionInfo(source, size) : QByteArray();
}

std::optional<QByteArrayView> queryRootBlock(QByteArrayView versionInfo)
{
    // wLength, wValueLength, wType, then the key with its terminator, then
    // padding to a 32-bit boundary: the value starts 40 bytes in.
    static constexpr char16_t Key[] = u"VS_VERSION_INFO";
    constexpr qsizetype KeyOffset = 6;
    constexpr qsizetype ValueOffset = 40;

    if (versionInfo.size() < ValueOffset)
        return std::nullopt;
    const char* bytes = versionInfo.data();
    for (qsizetype i = 0; i < qsizetype(std::size(Key)); ++i) {
        if (u16(bytes + KeyOffset + 2 * i) != Key[i])
            return std::nullopt;
    }
    // A buffer cut short of wLength (the caller's 64000-byte cap) still holds
    // the root value, so the block ends at whichever comes first.
    const quint64 blockLength = std::min<quint64>(u16(bytes), quint64(versionInfo.size()));
    const quint64 valueLength = u16(bytes + 2);
    if (valueLength == 0 || !fits(ValueOffset, valueLength, blockLength))
        return std::nullopt;
    // The value is not required to start with the signature 0xFEEF04BD:
    // VerQueryValue hands it out unchecked, and a version that Windows shows
    // for a file should show here too.
    return versionInfo.sliced(ValueOffset, qsizetype(valueLength));
}

} // namespace qf::pe
