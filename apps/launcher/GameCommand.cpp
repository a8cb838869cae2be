#include "GameCommand.h"

#include <QProcess>

GameCommand gameCommand(const PlayerChoices& choices)
{
    GameCommand command{choices.program, {}};
    if (!choices.mod.isEmpty())
        command.arguments << QStringLiteral("+set") << QStringLiteral("fs_game") << choices.mod;
    if (!choices.config.isEmpty())
        command.arguments << QStringLiteral("+exec") << choices.config;
    command.arguments << QProcess::splitCommand(choices.parameters);
    return command;
}

QString GameCommand::text() const
{
    QStringList quoted;
    for (const QString& argument : QStringList{program} + arguments) {
        if (!argument.isEmpty() && !argument.contains(QLatin1Char(' ')) &&
            !argument.contains(QLatin1Char('"')))
            quoted << argument;
        else
            quoted << QLatin1Char('"') +
                          QString(argument).replace(QLatin1Char('"'), QStringLiteral("\\\"")) +
                          QLatin1Char('"');
    }
    return quoted.join(QLatin1Char(' '));
}
