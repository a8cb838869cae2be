#include "control/SkipOnError.h"
#include "control/qForms.h"
#include "platform/Errors.h"
#include "platform/Paths.h"

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

} // namespace

QVariant qForms::qScanForMods()
{
    // Not guarded: a failure of the list itself reaches the caller.
    m_widgets->comModSelect.clear();

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
    ListModFolders(folder, baseName);
    return {};
}

void qForms::ListModFolders(QString& folder, const QString& baseName)
{
    auto& w = *m_widgets;
    if (!folder.endsWith(u'\\'))
        folder.append(u'\\');
    // Names below keep their own case; the folder is found again by resolving
    // it without regard to case.
    folder = upperCasedByCharacter(folder);

    // The listing leaves out "." and "..". A folder that cannot be listed
    // yields no names, and the list holds only the no-mod entry.
    QStringList names;
    qf::skipOnError([&] { names = qf::paths::listEntries(folder); });
    qf::skipOnError([&] { AddModEntry(QString()); });

    // Resolved once: folder + name would resolve every upper-cased component
    // again for each name, listing each parent folder.
    const QString resolvedFolder = qf::paths::resolve(folder) + u'/';
    const QString lowerBaseName = baseName.toLower();
    for (const QString& name : names) {
        const QString candidate = resolvedFolder + name;
        if (!qf::paths::isDirectory(candidate))
            continue;
        // A failed listing leaves lstFiles on its old folder, whose count must
        // not be taken for this one.
        bool hasPakFiles = false;
        qf::skipOnError([&] {
            w.lstFiles.setPath(candidate);
            hasPakFiles = w.lstFiles.listCount() > 0;
        });
        if (!hasPakFiles)
            continue;
        if (name.toLower() == lowerBaseName)
            continue;
        qf::skipOnError([&] { AddModEntry(name); });
    }

    qf::skipOnError([&] { w.comModSelect.setListIndex(0); });
}

void qForms::AddModEntry(const QString& entry)
{
    m_widgets->comModSelect.addItem(entry);
}

QVariant qForms::qModInit()
{
    // A file check that fails is a skipped step, as every failing step here:
    // only a check that answers "no file" ends the call.
    bool programExists = true;
    qf::skipOnError([&] {
        programExists =
            languageTextProvider().fileExists(strGamePath + QLatin1Char('\\') + strGameApplication);
    });
    if (!programExists)
        return {};
    // The rest is what qSelectMod does.
    return qSelectMod();
}
