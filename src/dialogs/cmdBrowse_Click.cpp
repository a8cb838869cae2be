#include "control/qForms.h"
#include "dialogs/ApplicationNames.h"

namespace {

const QString GameSection = QStringLiteral("Quillmarsh Game");
const QString GameApplicationKey = QStringLiteral("Game Application");
const QString ExeFilter = QStringLiteral("Applications (*.exe)|*.exe");
constexpr int HideReadOnly = 4;

} // namespace

void qForms::cmdBrowse_Click()
{
    // Any failure, Cancel included, ends the routine without a message; before
    // a file is chosen nothing has changed.
    try {
        const QString value =
            profileRead(GameSection, GameApplicationKey, QStringLiteral("*"),
                        componentFolder() + QStringLiteral("\\Data\\") + strQGDFile);
        const QString names = qf::applicationNameList(value);
        for (;;) {
            qf::FileDialogRequest request;
            request.filter = ExeFilter;
            request.fileName = names;
            request.title = languageText(QStringLiteral("108")) + strGameName +
                            QStringLiteral(" (") + names + QLatin1Char(')') +
                            languageText(QStringLiteral("080"));
            request.flags = HideReadOnly;
            request.cancelError = true;
            const qf::FileDialogResult chosen = fileDialog().showOpen(request);
            if (chosen.flags == 0)
                return;
            // Only a program will do: anything else opens the dialog again.
            if (chosen.fileName.right(4).toLower() != QLatin1String(".exe"))
                continue;
            if (!chosen.fileName.isEmpty()) {
                strGamePath = chosen.fileName;
                m_widgets->txtPath.setText(chosen.fileName);
            }
            return;
        }
    } catch (const qf::Error&) {
    }
}
