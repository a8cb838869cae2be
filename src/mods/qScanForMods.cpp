#include "context/ControlContext.h"
#include "context/SkipOnError.h"
#include "mods/Mods.h"
#include "platform/Errors.h"
#include "platform/Paths.h"

namespace qf::mods {

namespace {

// One code point at a time, as Windows upper-cases: a full mapping can change
// the length ("ß" becomes "SS"), and the path would then match no folder when
// it is resolved without regard to case.
QString upperCasedByCharacter(const QString& text)
{
    QList<uint> codePoints = text.toUcs4();
    for (uint& codePoint : codePoints)
        codePoint = QChar::toUpper(codePoint);
    return QString::fromUcs4(reinterpret_cast<const char32_t*>(codePoints.constData()),
                             codePoints.size());
}

void AddModEntry(ControlContext& context, const QString& entry)
{
    context.widgets.comModSelect.addItem(entry);
}

void ListModFolders(ControlContext& context, QString& folder, const QString& baseName)
{
    auto& w = context.widgets;
    if (!folder.endsWith(u'\\'))
        folder.append(u'\\');
    // Names below keep their own case; the folder is found again by resolving
    // it without regard to case.
    folder = upperCasedByCharacter(folder);

    // The listing leaves out "." and "..". A folder that cannot be listed
    // yields no names, and the list holds only the no-mod entry.
    QStringList names;
    skipOnError(context, {}, [&] { names = paths::listEntries(folder); });
    skipOnError(context, {}, [&] { AddModEntry(context, QString()); });

    // Resolved once: folder + name would resolve every upper-cased component
    // again for each name, listing each parent folder.
    const QString resolvedFolder = paths::resolve(folder) + u'/';
    const QString lowerBaseName = baseName.toLower();
    for (const QString& name : names) {
        const QString candidate = resolvedFolder + name;
        if (!paths::isDirectory(candidate))
            continue;
        // A failed listing leaves lstFiles on its old folder, whose count must
        // not be taken for this one.
        bool hasPakFiles = false;
        skipOnError(context, {}, [&] {
            w.lstFiles.setPath(candidate);
            hasPakFiles = w.lstFiles.listCount() > 0;
        });
        if (!hasPakFiles)
            continue;
        if (name.toLower() == lowerBaseName)
            continue;
        skipOnError(context, {}, [&] { AddModEntry(context, name); });
    }

    skipOnError(context, {}, [&] { w.comModSelect.setListIndex(0); });
}

} // namespace

void qScanForMods(ControlContext& context)
{
    const QString& strGamePath = context.strGamePath;
    const QString& strGameBase = context.strGameBase;
    const QString& strGameApplication = context.strGameApplication;
    // Not guarded: a failure of the list itself reaches the caller.
    context.widgets.comModSelect.clear();

    QString folder = strGamePath;
    QString baseName = strGameBase;
    const qsizetype applicationSeparator = strGameApplication.indexOf(u'\\');
    if (applicationSeparator >= 0) {
        folder =
            strGamePath + QLatin1Char('\\') + strGameApplication.left(applicationSeparator + 1);
        const qsizetype baseSeparator = strGameBase.indexOf(u'\\');
        if (baseSeparator >= 0)
            baseName = strGameBase.mid(baseSeparator + 1);
    }
    ListModFolders(context, folder, baseName);
}

void qModInit(ControlContext& context)
{
    // A file check that fails is a skipped step, as every failing step here:
    // only a check that answers "no file" ends the call.
    bool programExists = true;
    skipOnError(context, {}, [&] {
        programExists = context.languageTextProvider().fileExists(
            context.strGamePath + QLatin1Char('\\') + context.strGameApplication);
    });
    if (!programExists)
        return;
    // The rest is what qSelectMod does.
    qSelectMod(context);
}

} // namespace qf::mods
