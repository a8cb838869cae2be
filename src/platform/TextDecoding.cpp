#include "platform/TextDecoding.h"

#include <QStringDecoder>

#include <array>

namespace qf {

namespace {

// Windows-1252 differs from Latin-1 only in 0x80..0x9F.
constexpr std::array<char16_t, 32> Cp1252High = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, // 0x80
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F, // 0x88
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, // 0x90
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178, // 0x98
};

bool startsWith(const QByteArray& bytes, std::initializer_list<unsigned char> prefix)
{
    if (bytes.size() < qsizetype(prefix.size()))
        return false;
    qsizetype i = 0;
    for (const unsigned char b : prefix) {
        if (static_cast<unsigned char>(bytes.at(i++)) != b)
            return false;
    }
    return true;
}

QString decodeWith(QStringConverter::Encoding encoding, QByteArrayView bytes)
{
    QStringDecoder decoder(encoding, QStringDecoder::Flag::Stateless);
    return decoder(bytes);
}

} // namespace

QString decodeWindows1252(const QByteArray& bytes)
{
    QString text(bytes.size(), Qt::Uninitialized);
    QChar* out = text.data();
    for (const char c : bytes) {
        const auto b = static_cast<unsigned char>(c);
        *out++ = (b >= 0x80 && b <= 0x9F) ? QChar(Cp1252High[b - 0x80]) : QChar(char16_t(b));
    }
    return text;
}

QString decodeText(const QByteArray& bytes)
{
    const QByteArrayView view(bytes);
    if (startsWith(bytes, {0xEF, 0xBB, 0xBF}))
        return decodeWith(QStringConverter::Utf8, view.sliced(3));
    if (startsWith(bytes, {0xFF, 0xFE}))
        return decodeWith(QStringConverter::Utf16LE, view.sliced(2));
    if (startsWith(bytes, {0xFE, 0xFF}))
        return decodeWith(QStringConverter::Utf16BE, view.sliced(2));

    QStringDecoder utf8(QStringConverter::Utf8, QStringDecoder::Flag::Stateless);
    QString text = utf8(view);
    if (!utf8.hasError())
        return text;
    return decodeWindows1252(bytes);
}

} // namespace qf
