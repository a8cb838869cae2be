#include "context/ControlContext.h"
#include "context/DataPaths.h"
#include "context/SkipOnError.h"
#include "detect/Detect.h"
#include "detect/Function.h"
#include "detect/GameStatus.h"
#include "mods/Mods.h"
#include "platform/Paths.h"

namespace qf::detect {

namespace {

QString statusLine(const ControlContext& context, const QString& text)
{
    return QLatin1Char(' ') + context.strGameName + text;
}

void switchModWidgets(ControlContext& context, bool enabled)
{
    if (!context.bolUseModSelection)
        return;
    context.widgets.chkModCheck.setEnabled(enabled);
    context.widgets.comModSelect.setEnabled(enabled);
}

} // namespace

void trace(ControlContext& context, const QString& message)
{
    skipOnError(context, {},
                [&] { context.languageTextProvider().trace(message, context.strAppPath); });
}

GameLocation deriveLocation(ControlContext& context)
{
    QString& strGamePath = context.strGamePath;
    GameLocation location;
    strGamePath = context.widgets.txtPath.text();
    trace(context, QStringLiteral("strGamePath > ") + context.widgets.txtPath.text());

    if (datapaths::namesProgram(strGamePath)) {
        // The text names the program: split it into folder and program name.
        const qsizetype lastBackslash = strGamePath.lastIndexOf(u'\\');
        const qsizetype lastSlash = strGamePath.lastIndexOf(u'/');
        // A Linux path holds only "/"; it is split at its last "/" as a
        // Windows path whose last separator is "/" would be.
        const qsizetype split = lastSlash > lastBackslash ? lastSlash : lastBackslash;
        if (split >= 0) {
            location.applicationName = strGamePath.mid(split + 1);
            strGamePath = strGamePath.left(split + 1);
        }
        const QString& application = context.strGameApplication;
        if (application.contains(u'\\') || application.contains(u'/')) {
            const qsizetype baseSeparator = context.strGameBase.lastIndexOf(u'\\');
            location.base = baseSeparator >= 0 ? context.strGameBase.mid(baseSeparator) : QString();
        } else {
            location.base = context.strGameBase;
        }
    } else {
        location.applicationName = context.strGameApplication;
        location.base = context.strGameBase;
    }
    trace(context, QStringLiteral("strGameApplication > ") + context.strGameApplication);
    trace(context, QStringLiteral("strGameBase > ") + context.strGameBase);
    return location;
}

std::optional<QString> detectVersion(ControlContext& context, const GameLocation& location)
{
    // The folder and the program are joined with a separator of their own, so
    // a folder that ends in one gives two in a row, which the file check takes
    // as one.
    const QString program = context.strGamePath + QLatin1Char('\\') + location.applicationName;
    context.programPath = paths::resolve(program);
    bool found = false;
    skipOnError(context, {}, [&] { found = context.languageTextProvider().fileExists(program); });
    if (!found)
        return std::nullopt;

    QString strFV;
    const QString& type = context.strVersionType;
    if (type == QLatin1String("1")) {
        QString strVersion;
        skipOnError(context, {}, [&] { strVersion = detectPakVersion(context, location.base); });
        if (strVersion.isEmpty())
            return std::nullopt;
        skipOnError(
            [&] { strFV = context.languageText(status::TextFoundWithVersion) + strVersion; });
    } else if (type == QLatin1String("2")) {
        const QString strVersion = QLatin1Char('v') + Function::FileVersionText(program);
        skipOnError(
            [&] { strFV = context.languageText(status::TextFoundWithVersion) + strVersion; });
    } else if (type == QLatin1String("0")) {
        skipOnError(context, {},
                    [&] { strFV = context.languageText(status::TextFoundWithoutVersion); });
    }
    return strFV;
}

void qCheckGame(ControlContext& context)
{
    auto& w = context.widgets;
    const GameLocation location = deriveLocation(context);

    if (context.strGamePath.size() < 3) {
        context.programPath.clear();
        context.strGameStatusColour = status::NotConfigured.colourName;
        skipOnError(context, {}, [&] {
            w.lblStatus.setCaption(
                statusLine(context, context.languageText(status::TextNotConfigured)));
        });
        w.lblStatus.setForeColor(status::NotConfigured.textColour);
        switchModWidgets(context, false);
        return;
    }
    trace(context, QStringLiteral("strApplicationName > ") + location.applicationName);

    const std::optional<QString> strFV = detectVersion(context, location);

    // The colour name is stored before the status line changes, so a host that
    // reads both in its StatusChange handler gets the pair that belongs together.
    if (!strFV) {
        context.strGameStatusColour = status::NotFound.colourName;
        w.lblStatus.setForeColor(status::NotFound.textColour);
        skipOnError(context, {}, [&] {
            w.lblStatus.setCaption(statusLine(context, context.languageText(status::TextNotFound)));
        });
        trace(context, QStringLiteral("strFV > ") + w.lblStatus.caption());
        switchModWidgets(context, false);
        return;
    }

    context.strGameStatusColour = status::Found.colourName;
    w.lblStatus.setForeColor(status::Found.textColour);
    w.lblStatus.setCaption(statusLine(context, *strFV));
    trace(context, QStringLiteral("strFV > ") + *strFV);
    if (context.bolUseModSelection) {
        switchModWidgets(context, true);
        skipOnError(context, {}, [&] { mods::qScanForMods(context); });
        skipOnError(context, {}, [&] { mods::qModInit(context); });
    }
}

} // namespace qf::detect
