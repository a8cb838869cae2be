#include "context/ControlContext.h"
#include "context/DataPaths.h"
#include "context/SkipOnError.h"
#include "settings/Settings.h"

namespace qf::settings {

void showConfigFolder(ControlContext& context)
{
    auto& w = context.widgets;
    skipOnError(context, {}, [&] {
        w.lstConfig.setPath(
            datapaths::configFolder(context.componentFolder(), context.strGameName));
    });
    skipOnError(context, {}, [&] { w.lstConfig.setListIndex(0); });
}

void cmdEdit_Click(ControlContext& context)
{
    const QString fileName = context.widgets.lstConfig.fileName();
    if (fileName.isEmpty()) {
        context.messageBox().show(context.languageText(QStringLiteral("077")), 64,
                                  QStringLiteral("Quillmarsh"));
        return;
    }
    // The path goes unquoted: the starter takes everything after the program
    // name as one argument.
    context.programStarter().start(
        QStringLiteral("Notepad.exe ") +
            datapaths::configFolder(context.componentFolder(), context.strGameName) +
            QLatin1Char('\\') + fileName,
        1);
}

} // namespace qf::settings
