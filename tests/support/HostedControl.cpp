#include "support/HostedControl.h"

HostedControl::HostedControl()
    : store(std::make_shared<qf::IniFileSettingsStore>(host.filePath(QStringLiteral("config"))))
{
    control.setSettingsStore(store);
    control.setAppPath(host.path());
    control.setQpQGD(QStringLiteral("game.qgd"));
    control.setQpGameName(QStringLiteral("Arena"));
}

void HostedControl::build(const QByteArray& entries)
{
    host.writeCustomControls(QStringLiteral("game.qgd"), entries);
    control.qInitCustomControls();
}
