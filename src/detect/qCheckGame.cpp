#include "control/SkipOnError.h"
#include "control/qForms.h"
#include "detect/Function.h"
#include "detect/GameStatus.h"

namespace {

bool endsWithExe(const QString& path)
{
    return path.right(4).toLower() == QLatin1String(".exe");
}

} // namespace

void qForms::txtPath_Change()
{
    qCheckGame();
}

QVariant qForms::qCheckGame()
{
    auto& w = *m_widgets;
    const auto trace = [this](const QString& message) {
        qf::skipOnError([&] { languageTextProvider().trace(message, strAppPath); });
    };
    QString strApplicationName;
    QString strBase;
    QString strVersion;
    QString strFV;

    strGamePath = w.txtPath.text();
    trace(QStringLiteral("strGamePath > ") + w.txtPath.text());

    if (endsWithExe(strGamePath)) {
        // The text names the program: split it into folder and program name.
        const qsizetype lastBackslash = strGamePath.lastIndexOf(u'\\');
        const qsizetype lastSlash = strGamePath.lastIndexOf(u'/');
        // A Linux path holds only "/"; it is split at its last "/" as a
        // Windows path whose last separator is "/" would be.
        const qsizetype split = lastSlash > lastBackslash ? lastSlash : lastBackslash;
        if (split >= 0) {
            strApplicationName = strGamePath.mid(split + 1);
            strGamePath = strGamePath.left(split + 1);
        }
        if (strGameApplication.contains(u'\\') || strGameApplication.contains(u'/')) {
            const qsizetype baseSeparator = strGameBase.lastIndexOf(u'\\');
            strBase = baseSeparator >= 0 ? strGameBase.mid(baseSeparator) : QString();
        } else {
            strBase = strGameBase;
        }
    } else {
        strApplicationName = strGameApplication;
        strBase = strGameBase;
    }
    trace(QStringLiteral("strGameApplication > ") + strGameApplication);
    trace(QStringLiteral("strGameBase > ") + strGameBase);

    const auto statusLine = [this](const QString& text) {
        return QLatin1Char(' ') + strGameName + text;
    };
    const auto switchModWidgets = [&](bool enabled) {
        if (!bolUseModSelection)
            return;
        w.chkModCheck.setEnabled(enabled);
        w.comModSelect.setEnabled(enabled);
    };

    if (strGamePath.size() < 3) {
        strGameStatusColour = qf::status::NotConfigured.colourName;
        qf::skipOnError([&] {
            w.lblStatus.setCaption(statusLine(languageText(qf::status::TextNotConfigured)));
        });
        w.lblStatus.setForeColor(qf::status::NotConfigured.textColour);
        switchModWidgets(false);
        return {};
    }
    trace(QStringLiteral("strApplicationName > ") + strApplicationName);

    // The folder and the program are joined with a separator of their own, so
    // a folder that ends in one gives two in a row, which the file check takes
    // as one.
    const QString program = strGamePath + QLatin1Char('\\') + strApplicationName;
    bool found = false;
    qf::skipOnError([&] { found = languageTextProvider().fileExists(program); });
    if (found) {
        if (strVersionType == QLatin1String("1")) {
            qf::skipOnError([&] { strVersion = detectPakVersion(strBase); });
            found = !strVersion.isEmpty();
            if (found)
                qf::skipOnError(
                    [&] { strFV = languageText(qf::status::TextFoundWithVersion) + strVersion; });
        } else if (strVersionType == QLatin1String("2")) {
            strVersion = QLatin1Char('v') + qf::Function::FileVersionText(program);
            qf::skipOnError(
                [&] { strFV = languageText(qf::status::TextFoundWithVersion) + strVersion; });
        } else if (strVersionType == QLatin1String("0")) {
            qf::skipOnError([&] { strFV = languageText(qf::status::TextFoundWithoutVersion); });
        }
    }

    // The colour name is stored before the status line changes, so a host that
    // reads both in its StatusChange handler gets the pair that belongs together.
    if (!found) {
        strGameStatusColour = qf::status::NotFound.colourName;
        w.lblStatus.setForeColor(qf::status::NotFound.textColour);
        qf::skipOnError(
            [&] { w.lblStatus.setCaption(statusLine(languageText(qf::status::TextNotFound))); });
        trace(QStringLiteral("strFV > ") + w.lblStatus.caption());
        switchModWidgets(false);
        return {};
    }

    strGameStatusColour = qf::status::Found.colourName;
    w.lblStatus.setForeColor(qf::status::Found.textColour);
    w.lblStatus.setCaption(statusLine(strFV));
    trace(QStringLiteral("strFV > ") + strFV);
    if (bolUseModSelection) {
        switchModWidgets(true);
        qf::skipOnError([&] { qScanForMods(); });
        qf::skipOnError([&] { qModInit(); });
    }
    return {};
}
