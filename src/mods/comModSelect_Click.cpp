#include "context/ControlContext.h"
#include "context/SettingsKeys.h"
#include "context/SkipOnError.h"
#include "mods/Mods.h"
#include "platform/Errors.h"
#include "platform/Paths.h"
#include "platform/TextDecoding.h"

#include <QFile>
#include <QStringDecoder>

namespace qf::mods {

namespace {

constexpr qint64 DescriptionLength = 255;

bool isValidUtf8(QByteArrayView bytes)
{
    QStringDecoder decoder(QStringConverter::Utf8, QStringDecoder::Flag::Stateless);
    // decode() only wraps the bytes; the conversion, and so the error, happens
    // when the result becomes a string.
    const QString decoded = decoder.decode(bytes);
    return !decoder.hasError();
}

// Bytes at the end that begin a UTF-8 sequence without completing it.
qsizetype incompleteUtf8Tail(const QByteArray& bytes)
{
    for (qsizetype tail = 1; tail <= 3 && tail <= bytes.size(); ++tail) {
        const auto byte = static_cast<unsigned char>(bytes.at(bytes.size() - tail));
        if ((byte & 0xC0) == 0x80)
            continue; // continuation byte: look further back for the lead
        const qsizetype needed = byte >= 0xF0 ? 4 : byte >= 0xE0 ? 3 : byte >= 0xC0 ? 2 : 1;
        return needed > tail ? tail : 0;
    }
    return 0;
}

// The first bytes of the description file. A shorter file gives only its own
// bytes: nothing pads them, so the caption ends with the file's last byte.
QByteArray readDescription(const QString& path)
{
    QFile file(paths::resolve(path));
    if (!file.open(QIODevice::ReadOnly))
        throw PathError(QStringLiteral("Cannot read %1").arg(path));
    // Closed when `file` goes out of scope, whatever the length.
    const qint64 length = file.size();
    if (length == 0)
        return {};
    QByteArray bytes = file.read(DescriptionLength);
    // Cutting at a fixed byte count may split the last character of a UTF-8
    // text; that tail is dropped rather than taking the whole text for
    // Windows-1252.
    if (length > DescriptionLength) {
        const qsizetype tail = incompleteUtf8Tail(bytes);
        if (tail > 0 && isValidUtf8(QByteArrayView(bytes).chopped(tail)))
            bytes.chop(tail);
    }
    return bytes;
}

} // namespace

void comModSelect_Click(ControlContext& context)
{
    auto& w = context.widgets;
    const QString modName = w.comModSelect.text();
    if (modName.isEmpty()) {
        skipOnError(context, {}, [&] { w.chkModCheck.setValue(CheckBox::Unchecked); });
        w.chkModCheck.setEnabled(false);
        w.lblModName.setCaption(QStringLiteral(" /"));
        return;
    }
    w.chkModCheck.setEnabled(true);

    QString description;
    skipOnError(context, {}, [&] {
        const QString path =
            context.strGamePath + QLatin1Char('\\') + modName + QStringLiteral("\\description.txt");
        if (context.languageTextProvider().fileExists(path))
            description = decodeText(readDescription(path));
    });
    if (description.isEmpty())
        description = QStringLiteral("?");
    w.lblModName.setCaption(description + QLatin1Char(' '));

    if (w.comModSelect.listIndex() >= 1)
        skipOnError(context, {}, [&] { w.chkModCheck.setValue(CheckBox::Checked); });
}

void qSelectMod(ControlContext& context)
{
    auto& w = context.widgets;
    QString storedName;
    skipOnError(context, {}, [&] {
        storedName = context.settingsStore().readValue(settings::Application, context.strGameName,
                                                       settings::ModName, QString());
    });
    const QString lowerStoredName = storedName.toLower();

    const int count = w.comModSelect.listCount();
    for (int i = 0; i < count; ++i) {
        skipOnError(context, {}, [&] { w.comModSelect.setListIndex(i); });
        if (w.comModSelect.text().toLower() == lowerStoredName)
            return;
    }
    // On an empty list this fails too, and nothing changes.
    skipOnError(context, {}, [&] { w.comModSelect.setListIndex(0); });
}

} // namespace qf::mods
