#include "control/qForms.h"
#include "platform/IniFileSettingsStore.h"
#include "context/SettingsKeys.h"
#include "support/TestHost.h"

#include <QDir>
#include <gtest/gtest.h>

namespace {

// A game whose mods are the folders named, each with one pak file.
class ModSelectionTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        control.setSettingsStore(store);
        control.setQpGameName(QStringLiteral("Arena"));
        control.setQpGamePath(game.path());
        control.setQpGameApplication(QStringLiteral("arena.exe"));
        control.setQpGameBase(QStringLiteral("base"));
    }

    void scan(std::initializer_list<const char*> mods)
    {
        for (const char* mod : mods)
            game.write(QString::fromUtf8(mod) + QStringLiteral("/pak0.pk3"), "");
        control.qScanForMods();
    }

    void select(const QString& mod) { w.comModSelect.setText(mod); }

    TestHost game;
    QTemporaryDir settingsDir;
    std::shared_ptr<qf::IniFileSettingsStore> store =
        std::make_shared<qf::IniFileSettingsStore>(settingsDir.path());
    qForms control;
    qf::ControlWidgets& w = control.widgets();
};

int openFileCount()
{
    return int(QDir(QStringLiteral("/proc/self/fd"))
                   .entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)
                   .size());
}

} // namespace

TEST_F(ModSelectionTest, ShowsTheModsDescriptionAndChecksTheModBox)
{
    game.write(QStringLiteral("ctf/description.txt"), "Capture the flag");
    QByteArray longText = "Line one\r\nLine two ";
    while (longText.size() < 1000)
        longText += "0123456789";
    game.write(QStringLiteral("long/Description.TXT"), longText);
    game.write(QStringLiteral("empty/description.txt"), "");
    scan({"ctf", "empty", "long", "plain"});
    EXPECT_FALSE(w.chkModCheck.isEnabled());

    select(QStringLiteral("ctf"));
    EXPECT_EQ(w.lblModName.caption(), QStringLiteral("Capture the flag "));
    EXPECT_TRUE(w.chkModCheck.isEnabled());
    EXPECT_EQ(w.chkModCheck.value(), qf::CheckBox::Checked);

    w.chkModCheck.userClick();
    select(QStringLiteral("long"));
    EXPECT_EQ(w.lblModName.caption(), QString::fromLatin1(longText.left(255)) + u' ');
    EXPECT_EQ(w.chkModCheck.value(), qf::CheckBox::Checked) << "a new mod checks it again";

    for (const QString& mod : {QStringLiteral("empty"), QStringLiteral("plain")}) {
        select(mod);
        EXPECT_EQ(w.lblModName.caption(), QStringLiteral("? ")) << qPrintable(mod);
    }

    select(QString());
    EXPECT_EQ(w.lblModName.caption(), QStringLiteral(" /"));
    EXPECT_FALSE(w.chkModCheck.isEnabled());
    EXPECT_EQ(w.chkModCheck.value(), qf::CheckBox::Unchecked);

    const int openBefore = openFileCount();
    for (int i = 0; i < 100; ++i) {
        select(QStringLiteral("empty"));
        select(QStringLiteral("ctf"));
    }
    EXPECT_EQ(openFileCount(), openBefore);
}

TEST_F(ModSelectionTest, DecodesDescriptionsWithoutLosingACharacterCutAtTheEnd)
{
    // "€" takes three bytes; the 255-byte cut keeps only its first.
    const QString utf8Text = QStringLiteral("Größe: ") + QString(245, u'a');
    game.write(QStringLiteral("utf8/description.txt"), utf8Text.toUtf8() + "€€€");
    game.write(QStringLiteral("latin/description.txt"), "Caf\xE9 mod");
    scan({"latin", "utf8"});

    select(QStringLiteral("utf8"));
    EXPECT_EQ(w.lblModName.caption(), utf8Text + u' ');
    select(QStringLiteral("latin"));
    EXPECT_EQ(w.lblModName.caption(), QStringLiteral("Café mod "));
}

TEST_F(ModSelectionTest, SelectModSelectsTheStoredNameWhetherOrNotTheProgramIsThere)
{
    control.qSelectMod();
    EXPECT_EQ(w.comModSelect.listIndex(), -1) << "an empty list changes nothing";

    scan({"alpha", "ctf"});
    w.comModSelect.setListIndex(2);
    control.qSelectMod();
    EXPECT_EQ(w.comModSelect.listIndex(), 0) << "no stored name";

    store->saveValue(qf::settings::Application, QStringLiteral("Arena"), qf::settings::ModName,
                     QStringLiteral("CTF"));
    control.qSelectMod();
    EXPECT_EQ(w.comModSelect.text(), QStringLiteral("ctf"));

    store->saveValue(qf::settings::Application, QStringLiteral("Arena"), qf::settings::ModName,
                     QStringLiteral("removed"));
    control.qSelectMod();
    EXPECT_EQ(w.comModSelect.listIndex(), 0);
}
