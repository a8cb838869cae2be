#include "detect/Function.h"
#include "platform/PeVersionResource.h"

#include <cstddef>
#include <cstdint>

#ifdef QFORMS_WRITE_SEEDS

#include "PeImage.h"

#include <QDir>

#include <cstdio>

// Writes PE32 and PE32+ images, intact and damaged, into the folder given.
int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s corpus-folder\n", argv[0]);
        return 2;
    }
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    if (!folder.mkpath(QStringLiteral(".")))
        return 1;
    int written = 0;
    const auto write = [&](const qf::PeImage& image) {
        written += image.write(folder.filePath(QStringLiteral("seed-%1.exe").arg(written)));
    };
    for (bool plus : {false, true}) {
        write(qf::PeImage({.pe32Plus = plus, .fileVersionMS = 0x40000, .fileVersionLS = 40000}));
        write(qf::PeImage({.pe32Plus = plus, .withResources = false}));
        write(qf::PeImage({.pe32Plus = plus, .fileVersionMS = 0x40000, .resourceName = 2}));
        write(qf::PeImage({.pe32Plus = plus, .fileVersionMS = 0x1FFFF, .valueLength = 14}));
        write(qf::PeImage({.pe32Plus = plus, .fileVersionMS = 0x1FFFF, .valueLength = 60}));
        qf::PeImage cyclic({.pe32Plus = plus});
        cyclic.makeDirectoryCyclic();
        write(cyclic);
    }
    std::printf("%d seeds\n", written);
    return 0;
}

#else

// Runs arbitrary bytes through the reader as a program image in memory, and
// through the root block lookup as a version block.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArrayView bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    qf::pe::MemorySource source(bytes);
    const qf::Function::VS_FIXEDFILEINFO info = qf::Function::ReadFixedFileInfo(source);

    // A size that is answered must be readable in full from the image.
    const quint32 infoSize = qf::pe::versionInfoSize(source);
    if (infoSize > size || qf::pe::versionInfo(source, infoSize).size() != qsizetype(infoSize))
        __builtin_trap();
    if (infoSize == 0 && info.dwFileVersionMS != 0)
        __builtin_trap();

    if (const auto root = qf::pe::queryRootBlock(bytes)) {
        if (root->empty() || root->data() < bytes.data() ||
            root->data() + root->size() > bytes.data() + bytes.size())
            __builtin_trap();
    }
    return 0;
}

#endif
