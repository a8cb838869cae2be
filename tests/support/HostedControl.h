#pragma once

#include "control/qForms.h"
#include "platform/IniFileSettingsStore.h"
#include "support/TestHost.h"

#include <gtest/gtest.h>

#include <memory>

// A control as a launcher sets one up: a host folder of its own as AppPath, the
// settings in that folder's "config", the game "Arena" described by game.qgd.
class HostedControl : public ::testing::Test {
protected:
    HostedControl()
    {
        control.setSettingsStore(store);
        control.setAppPath(host.path());
        control.setQpQGD(QStringLiteral("game.qgd"));
        control.setQpGameName(QStringLiteral("Arena"));
    }

    // Writes the game data file's "Custom Controls" entries and builds them.
    void build(const QByteArray& entries)
    {
        host.writeCustomControls(QStringLiteral("game.qgd"), entries);
        control.qInitCustomControls();
    }

    TestHost host;
    std::shared_ptr<qf::IniFileSettingsStore> store =
        std::make_shared<qf::IniFileSettingsStore>(host.filePath(QStringLiteral("config")));
    qForms control;
    qf::ControlWidgets& w = control.widgets();
};
