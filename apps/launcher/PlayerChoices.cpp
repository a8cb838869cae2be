#include "PlayerChoices.h"

#include "control/qForms.h"

PlayerChoices readPlayerChoices(const qForms& control, const GameEntry& game)
{
    const qf::ControlWidgets& w = control.widgets();
    QString folder = control.qpGamePath();
    if (!folder.isEmpty() && !folder.endsWith(QLatin1Char('/')) &&
        !folder.endsWith(QLatin1Char('\\')))
        folder += QLatin1Char('/');
    const QString typed = w.txtPath.text();
    PlayerChoices choices;
    choices.program = typed.endsWith(QStringLiteral(".exe"), Qt::CaseInsensitive)
                          ? typed
                          : folder + game.application;
    if (game.modSelection)
        choices.mod = w.comModSelect.text();
    if (game.configs)
        choices.config = w.lstConfig.fileName();
    if (game.commandLineParameters)
        choices.parameters = w.txtCLP.text();
    return choices;
}
