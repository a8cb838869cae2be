#include "context/ControlContext.h"
#include "context/DataPaths.h"
#include "context/SkipOnError.h"
#include "platform/Errors.h"
#include "platform/Paths.h"
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
    const QString file =
        datapaths::configFolder(context.componentFolder(), context.strGameName) +
        QLatin1Char('\\') + fileName;
    const auto failed = [report = context.editorFailed,
                         onDisk = paths::resolve(file)](const QString& reason) {
        if (report)
            report(onDisk, reason);
    };
    try {
        context.programStarter().startWatched(QStringLiteral("Notepad.exe ") + file, 1, failed);
    } catch (const Error& error) {
        // The caller gets the error as well: the host hears of it either way.
        failed(error.message());
        throw;
    }
}

} // namespace qf::settings
