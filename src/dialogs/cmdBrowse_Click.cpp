#include "context/ControlContext.h"
#include "context/DataPaths.h"
#include "dialogs/ApplicationNames.h"
#include "dialogs/Dialogs.h"
#include "gamedata/GameData.h"
#include "gamedata/GameDataKeys.h"
#include "platform/Errors.h"

namespace qf::dialogs {

namespace {

const QString ExeFilter = QStringLiteral("Applications (*.exe)|*.exe");
constexpr int HideReadOnly = 4;

} // namespace

void cmdBrowse_Click(ControlContext& context)
{
    // Any failure, Cancel included, ends the routine without a message; before
    // a file is chosen nothing has changed.
    try {
        const QString value = gamedata::profileRead(
            context, gamedata::GameSection, gamedata::GameApplication, QStringLiteral("*"),
            datapaths::dataPath(context.componentFolder(), context.strQGDFile));
        const QString names = applicationNameList(value);
        for (;;) {
            FileDialogRequest request;
            request.filter = ExeFilter;
            request.fileName = names;
            request.title = context.languageText(QStringLiteral("108")) + context.strGameName +
                            QStringLiteral(" (") + names + QLatin1Char(')') +
                            context.languageText(QStringLiteral("080"));
            request.flags = HideReadOnly;
            request.cancelError = true;
            const FileDialogResult chosen = context.fileDialog().showOpen(request);
            if (chosen.flags == 0)
                return;
            // Only a program will do: anything else opens the dialog again.
            if (!datapaths::namesProgram(chosen.fileName))
                continue;
            if (!chosen.fileName.isEmpty()) {
                context.strGamePath = chosen.fileName;
                context.widgets.txtPath.setText(chosen.fileName);
            }
            return;
        }
    } catch (const Error& error) {
        context.reportSkip({}, error.message());
    }
}

} // namespace qf::dialogs
