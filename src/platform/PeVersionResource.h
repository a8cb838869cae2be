#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QFile>
#include <QString>

#include <optional>

// The version library of a Windows program file, read on any system: the
// version resource of a PE/COFF image (PE32 or PE32+). Every offset, size and
// count in the file is treated as hostile; anything that does not check out
// reads as "no version information".
namespace qf::pe {

// Random access to the bytes of an image, so that the parser runs on a file as
// well as on a buffer in memory.
class ByteSource {
public:
    virtual ~ByteSource() = default;
    virtual quint64 size() const = 0;
    // Copies the bytes [offset, offset + length) to out; false, with out left
    // undefined, when any of them lies outside the source or cannot be read.
    virtual bool read(quint64 offset, char* out, quint64 length) = 0;
};

class MemorySource final : public ByteSource {
public:
    explicit MemorySource(QByteArrayView bytes) : bytes_(bytes) {}
    quint64 size() const override { return quint64(bytes_.size()); }
    bool read(quint64 offset, char* out, quint64 length) override;

private:
    QByteArrayView bytes_;
};

// A regular file, read piece by piece with seek and read, never as a whole.
class FileSource final : public ByteSource {
public:
    // The path is resolved by paths::resolve; folders, devices and missing
    // files leave the source closed.
    explicit FileSource(const QString& path);
    bool isOpen() const { return file_.isOpen(); }
    quint64 size() const override { return size_; }
    bool read(quint64 offset, char* out, quint64 length) override;

private:
    QFile file_;
    quint64 size_ = 0;
};

// Where the data of the version resource lies in the source.
struct ResourceData {
    quint64 offset = 0;
    quint32 size = 0;
};

// The type 16 (RT_VERSION) entry of the resource directory, its entry with id 1
// (VS_VERSION_INFO), the first language of that, and the data entry there;
// nullopt when any step fails.
std::optional<ResourceData> findVersionResource(ByteSource& source);

// Size in bytes of the version information block (the VS_VERSIONINFO resource
// data); 0 when there is none or the image is damaged.
quint32 versionInfoSize(ByteSource& source);

// Up to size bytes of the version information block; empty on failure.
QByteArray versionInfo(ByteSource& source, quint32 size);

// The same for the file at the path (GetFileVersionInfoSize and
// GetFileVersionInfo): 0 or empty for a missing file, a folder, a file that is
// not a PE image, or a damaged one.
quint32 fileVersionInfoSize(const QString& path);
QByteArray fileVersionInfo(const QString& path, quint32 size);

// The value of the root block "\" of a version information block: the
// VS_FIXEDFILEINFO after the VS_VERSIONINFO header, wValueLength bytes long
// (VerQueryValue with sub-block "\"). The view points into versionInfo.
// nullopt when the block is too short, its key is not "VS_VERSION_INFO", the
// value is empty or the value reaches beyond the block.
std::optional<QByteArrayView> queryRootBlock(QByteArrayView versionInfo);

} // namespace qf::pe
