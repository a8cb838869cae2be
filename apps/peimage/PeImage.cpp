#include "PeImage.h"

#include <QFile>
#include <QtEndian>

namespace qf {

namespace {

constexpr qsizetype PeOffset = 0x80;
constexpr qsizetype TextOffset = 0x400;
constexpr qsizetype ResourceOffset = 0x600;
constexpr quint32 TextRva = 0x1000;
constexpr quint32 ResourceRva = 0x2000;

template <typename T> void put(QByteArray& bytes, qsizetype offset, T value)
{
    if (bytes.size() < offset + qsizetype(sizeof value))
        bytes.resize(offset + qsizetype(sizeof value), '\0');
    qToLittleEndian(value, bytes.data() + offset);
}

qsizetype alignUp(qsizetype value, qsizetype alignment)
{
    return (value + alignment - 1) / alignment * alignment;
}

QByteArray makeVersionBlock(quint32 ms, quint32 ls, quint16 valueLength, quint32 blockSize)
{
    QByteArray block;
    const char16_t key[] = u"VS_VERSION_INFO";
    for (qsizetype i = 0; i < 16; ++i)
        put<quint16>(block, 6 + 2 * i, key[i]);
    block.resize(40, '\0');
    const quint32 fixed[13] = {0xFEEF04BD, 0x10000, ms, ls, ms, ls, 0x3F, 0, 0x40004, 1, 0, 0, 0};
    for (quint32 field : fixed)
        put<quint32>(block, block.size(), field);
    block.resize(40 + std::max<qsizetype>(52, valueLength), '\xAB');
    block.resize(std::max<qsizetype>(alignUp(block.size(), 4), blockSize), '\0');
    put<quint16>(block, 0, quint16(std::min<qsizetype>(block.size(), 0xFFFF)));
    put<quint16>(block, 2, valueLength);
    return block;
}

// Appends a directory table whose entries are (id, offset) pairs.
void directory(QByteArray& bytes, std::initializer_list<std::pair<quint32, quint32>> entries)
{
    const qsizetype at = bytes.size();
    put<quint16>(bytes, at + 14, quint16(entries.size()));
    for (const auto& [id, target] : entries) {
        put<quint32>(bytes, bytes.size(), id);
        put<quint32>(bytes, bytes.size(), target);
    }
}

} // namespace

PeImage::PeImage(const PeOptions& options)
{
    const bool plus = options.pe32Plus;
    const qsizetype optional = PeOffset + 24;
    const qsizetype optionalSize = plus ? 240 : 224;
    put<quint16>(bytes, 0, 0x5A4D);
    put<quint32>(bytes, 0x3C, PeOffset);
    put<quint32>(bytes, PeOffset, 0x4550);
    put<quint16>(bytes, PeOffset + 4, plus ? 0x8664 : 0x14C);
    sectionCount = PeOffset + 6;
    put<quint16>(bytes, sectionCount, options.withResources ? 2 : 1);
    put<quint16>(bytes, PeOffset + 20, quint16(optionalSize));
    put<quint16>(bytes, PeOffset + 22, plus ? 0x22 : 0x102);

    put<quint16>(bytes, optional, plus ? 0x20B : 0x10B);
    put<quint32>(bytes, optional + 16, TextRva); // entry point
    put<quint32>(bytes, optional + 32, 0x1000);  // section alignment
    put<quint32>(bytes, optional + 36, 0x200);   // file alignment
    put<quint32>(bytes, optional + 56, 0x3000);  // size of image
    put<quint32>(bytes, optional + 60, TextOffset);
    put<quint16>(bytes, optional + 68, 2); // GUI subsystem
    put<quint32>(bytes, optional + (plus ? 108 : 92), 16);
    resourceDirectory = optional + (plus ? 112 : 96) + 2 * 8;

    const qsizetype sections = optional + optionalSize;
    bytes.append("\xC3", 1);
    bytes.resize(TextOffset, '\0');
    bytes.append("\xC3", 1);
    bytes.resize(ResourceOffset, '\0');
    bytes.replace(sections, 5, ".text");
    put<quint32>(bytes, sections + 8, 1);
    put<quint32>(bytes, sections + 12, TextRva);
    put<quint32>(bytes, sections + 16, 0x200);
    put<quint32>(bytes, sections + 20, TextOffset);
    if (!options.withResources)
        return;

    // type 3, 16, 24 -> names n, n + 1 -> languages 0x409, 0x40C -> data entries
    QByteArray rsrc;
    const quint32 sub = 0x80000000;
    const quint32 name = options.resourceName;
    directory(rsrc, {{3, sub | 104}, {16, sub | 40}, {24, sub | 104}});
    directory(rsrc, {{name, sub | 72}, {name + 1, sub | 128}});
    directory(rsrc, {{0x409, 152}, {0x40C, 168}});
    directory(rsrc, {{1, sub | 128}});
    directory(rsrc, {{0x409, 168}});
    const QByteArray block = makeVersionBlock(options.fileVersionMS, options.fileVersionLS,
                                              options.valueLength, options.blockSize);
    const QByteArray decoy = makeVersionBlock(0x90009, 0x90009, 52, 0);
    const qsizetype decoyAt = alignUp(184 + block.size(), 4);
    put<quint32>(rsrc, 152, ResourceRva + 184);
    put<quint32>(rsrc, 156, quint32(block.size()));
    put<quint32>(rsrc, 168, ResourceRva + quint32(decoyAt));
    put<quint32>(rsrc, 172, quint32(decoy.size()));
    rsrc.resize(184, '\0');
    rsrc += block;
    rsrc.resize(decoyAt, '\0');
    rsrc += decoy;

    resourceSection = sections + 40;
    bytes.replace(resourceSection, 5, ".rsrc");
    put<quint32>(bytes, resourceSection + 8, quint32(rsrc.size()));
    put<quint32>(bytes, resourceSection + 12, ResourceRva);
    put<quint32>(bytes, resourceSection + 16, quint32(alignUp(rsrc.size(), 0x200)));
    put<quint32>(bytes, resourceSection + 20, ResourceOffset);
    put<quint32>(bytes, optional + 56, quint32(ResourceRva + alignUp(rsrc.size(), 0x1000)));
    put<quint32>(bytes, resourceDirectory, ResourceRva);
    put<quint32>(bytes, resourceDirectory + 4, quint32(rsrc.size()));
    bytes += rsrc;
    bytes.resize(alignUp(bytes.size(), 0x200), '\0');

    rootDirectory = ResourceOffset;
    nameDirectory = ResourceOffset + 40;
    languageDirectory = ResourceOffset + 72;
    dataEntry = ResourceOffset + 152;
    versionBlock = ResourceOffset + 184;
    versionBlockSize = block.size();
}

void PeImage::set16(qsizetype offset, quint16 value)
{
    put(bytes, offset, value);
}

void PeImage::set32(qsizetype offset, quint32 value)
{
    put(bytes, offset, value);
}

void PeImage::makeDirectoryCyclic()
{
    for (qsizetype target : {20, 28, 36, 60, 68, 92, 100, 124, 148})
        set32(rootDirectory + target, 0x80000000);
}

bool PeImage::write(const QString& path, qint64 sparseSize) const
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
           file.write(bytes) == bytes.size() &&
           (sparseSize <= bytes.size() || file.resize(sparseSize));
}

} // namespace qf
