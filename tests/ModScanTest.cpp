#include "control/qForms.h"
#include "platform/IniFileSettingsStore.h"
#include "context/SettingsKeys.h"
#include "support/TestHost.h"

#include <QDir>
#include <gtest/gtest.h>

namespace {

class ModScanTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        control.setSettingsStore(store);
        control.setQpGameName(QStringLiteral("Arena"));
        w.comModSelect.click.connect([this] { selections.append(w.comModSelect.text()); });
    }

    void scan(const QString& gamePath, const QString& application, const QString& base)
    {
        control.setQpGamePath(gamePath);
        control.setQpGameApplication(application);
        control.setQpGameBase(base);
        control.qScanForMods();
    }

    TestHost game;
    QTemporaryDir settingsDir;
    std::shared_ptr<qf::IniFileSettingsStore> store =
        std::make_shared<qf::IniFileSettingsStore>(settingsDir.path());
    qForms control;
    qf::ControlWidgets& w = control.widgets();
    QStringList selections;
};

} // namespace

TEST_F(ModScanTest, OffersFoldersHoldingPakFilesExceptTheBaseAndSelectsTheNoModEntry)
{
    game.write(QStringLiteral("base/pak0.pk3"), "");
    game.write(QStringLiteral("ctf/map.pk3"), "");
    game.write(QStringLiteral("docs/manual.txt"), "");
    game.write(QStringLiteral("readme.txt"), "");
    const QStringList withoutBase{QString(), QStringLiteral("ctf")};

    for (const QString& base : {QStringLiteral("base"), QStringLiteral("BASE")}) {
        selections.clear();
        scan(game.path(), QStringLiteral("arena.exe"), base);
        EXPECT_EQ(w.comModSelect.items(), withoutBase) << qPrintable(base);
        EXPECT_EQ(selections, QStringList{QString()});
        EXPECT_EQ(w.lblModName.caption(), QStringLiteral(" /"));
    }

    // Without a folder in the application the base name is kept whole.
    scan(game.path(), QStringLiteral("arena.exe"), QStringLiteral("bin\\base"));
    EXPECT_EQ(w.comModSelect.items(),
              (QStringList{QString(), QStringLiteral("base"), QStringLiteral("ctf")}));

    scan(game.path() + QStringLiteral("\\"), QStringLiteral("arena.exe"), QStringLiteral("base"));
    EXPECT_EQ(w.comModSelect.items(), withoutBase) << "a doubled separator is accepted";

    scan(game.filePath(QStringLiteral("missing")), QStringLiteral("arena.exe"), QString());
    EXPECT_EQ(w.comModSelect.items(), QStringList{QString()});
    EXPECT_EQ(w.comModSelect.listIndex(), 0);
}

TEST_F(ModScanTest, ScansTheApplicationsFolderAndFindsNamesInAnyCase)
{
    // "ß" upper-cases to "SS" in full Unicode, which would lose the game folder.
    const QString root = game.filePath(QStringLiteral("Große Spiele"));
    QDir().mkpath(root + QStringLiteral("/bin/Empty.pk3"));
    for (const char* file : {"bin/arena.exe", "bin/CTF/MAP.PK3", "bin/Team Arena/pak1.pk3",
                             "bin/alpha/a.pk3", "bin/Base/pak0.pk3", "bin/loose.pk3", "top/a.pk3"})
        game.write(QStringLiteral("Große Spiele/") + QString::fromUtf8(file), "");

    scan(root, QStringLiteral("bin\\arena.exe"), QStringLiteral("data\\base"));
    EXPECT_EQ(w.comModSelect.items(),
              (QStringList{QString(), QStringLiteral("alpha"), QStringLiteral("CTF"),
                           QStringLiteral("Team Arena")}));

    // Only "\" separates: the game folder itself is scanned and the base kept whole.
    scan(root, QStringLiteral("bin/arena.exe"), QStringLiteral("bin/base"));
    EXPECT_EQ(w.comModSelect.items(),
              (QStringList{QString(), QStringLiteral("bin"), QStringLiteral("top")}));
}

TEST_F(ModScanTest, ModInitSelectsTheStoredModOnlyWhenTheProgramIsPresent)
{
    for (const char* file : {"arena.exe", "alpha/a.pk3", "ctf/a.pk3", "zeta/a.pk3"})
        game.write(QString::fromUtf8(file), "");
    store->saveValue(qf::settings::Application, QStringLiteral("Arena"), qf::settings::ModName,
                     QStringLiteral("CTF"));
    store->sync();
    scan(game.path(), QStringLiteral("arena.exe"), QStringLiteral("base"));

    selections.clear();
    control.qModInit();
    EXPECT_EQ(selections, (QStringList{QString(), QStringLiteral("alpha"), QStringLiteral("ctf")}));
    EXPECT_EQ(w.comModSelect.listIndex(), 2);

    w.comModSelect.setListIndex(3);
    selections.clear();
    control.setQpGameApplication(QStringLiteral("missing.exe"));
    control.qModInit();
    EXPECT_TRUE(selections.isEmpty());
    EXPECT_EQ(w.comModSelect.listIndex(), 3);
}
