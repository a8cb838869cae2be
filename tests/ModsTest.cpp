#include "context/SettingsKeys.h"
#include "support/HostedControl.h"

#include <QDir>

using namespace Qt::Literals::StringLiterals;

namespace {

// The host folder is the game folder too; the tests create its mods.
class ModsTest : public HostedControl {
protected:
    ModsTest()
    {
        w.comModSelect.click.connect([this] { selections.append(w.comModSelect.text()); });
    }

    void scan(const QString& gamePath, const QString& application = u"arena.exe"_s,
              const QString& base = u"base"_s)
    {
        control.setQpGamePath(gamePath);
        control.setQpGameApplication(application);
        control.setQpGameBase(base);
        control.qScanForMods();
    }
    // Mods holding one pak file each, scanned in the game folder.
    void scanMods(std::initializer_list<const char*> mods)
    {
        for (const char* mod : mods)
            host.write(QString::fromUtf8(mod) + u"/pak0.pk3"_s, "");
        scan(host.path());
    }
    void storeModName(const QString& name)
    {
        store->saveValue(qf::settings::Application, u"Arena"_s, qf::settings::ModName, name);
        store->sync();
    }
    QString captionOf(const QString& mod)
    {
        w.comModSelect.setText(mod);
        return w.lblModName.caption();
    }

    QStringList selections;
};

int openFileCount()
{
    return int(QDir(u"/proc/self/fd"_s)
                   .entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)
                   .size());
}

} // namespace

TEST_F(ModsTest, OffersFoldersHoldingPakFilesExceptTheBaseAndSelectsTheNoModEntry)
{
    host.write(u"base/pak0.pk3"_s, "");
    host.write(u"ctf/map.pk3"_s, "");
    host.write(u"docs/manual.txt"_s, "");
    host.write(u"readme.txt"_s, "");
    const QStringList withoutBase{QString(), u"ctf"_s};

    for (const QString& base : {u"base"_s, u"BASE"_s}) {
        selections.clear();
        scan(host.path(), u"arena.exe"_s, base);
        EXPECT_EQ(w.comModSelect.items(), withoutBase) << base;
        EXPECT_EQ(selections, QStringList{QString()});
        EXPECT_EQ(w.lblModName.caption(), u" /"_s);
    }

    // Without a folder in the application the base name is kept whole.
    scan(host.path(), u"arena.exe"_s, u"bin\\base"_s);
    EXPECT_EQ(w.comModSelect.items(), (QStringList{QString(), u"base"_s, u"ctf"_s}));
    scan(host.path(), u"\\arena.exe"_s, u"bin\\base"_s);
    EXPECT_EQ(w.comModSelect.items(), withoutBase) << "a leading separator is a folder";
    scan(host.path() + u"\\"_s);
    EXPECT_EQ(w.comModSelect.items(), withoutBase) << "a doubled separator is accepted";
    scan(host.filePath(u"missing"_s), u"arena.exe"_s, QString());
    EXPECT_EQ(w.comModSelect.items(), QStringList{QString()});
    EXPECT_EQ(w.comModSelect.listIndex(), 0);
}

TEST_F(ModsTest, ScansTheApplicationsFolderAndFindsNamesInAnyCase)
{
    // "ß" upper-cases to "SS" in full Unicode, which would lose the game folder.
    const QString root = host.filePath(u"Große Spiele"_s);
    QDir().mkpath(root + u"/bin/Empty.pk3"_s);
    for (const char* file : {"bin/arena.exe", "bin/CTF/MAP.PK3", "bin/Team Arena/pak1.pk3",
                             "bin/alpha/a.pk3", "bin/Base/pak0.pk3", "bin/loose.pk3", "top/a.pk3"})
        host.write(u"Große Spiele/"_s + QString::fromUtf8(file), "");

    scan(root, u"bin\\arena.exe"_s, u"data\\base"_s);
    EXPECT_EQ(w.comModSelect.items(),
              (QStringList{QString(), u"alpha"_s, u"CTF"_s, u"Team Arena"_s}));
    // Only "\" separates: the game folder itself is scanned and the base kept whole.
    scan(root, u"bin/arena.exe"_s, u"bin/base"_s);
    EXPECT_EQ(w.comModSelect.items(), (QStringList{QString(), u"bin"_s, u"top"_s}));
}

TEST_F(ModsTest, TheStoredModIsSelectedInAnyCaseAndModInitNeedsTheProgram)
{
    control.qSelectMod();
    EXPECT_EQ(w.comModSelect.listIndex(), -1) << "an empty list changes nothing";

    scanMods({"alpha", "ctf", "zeta"});
    w.comModSelect.setListIndex(2);
    control.qSelectMod();
    EXPECT_EQ(w.comModSelect.listIndex(), 0) << "no stored name";
    storeModName(u"removed"_s);
    control.qSelectMod();
    EXPECT_EQ(w.comModSelect.listIndex(), 0);

    // Without the program qModInit leaves the list alone; with it, it selects.
    storeModName(u"CTF"_s);
    w.comModSelect.setListIndex(3);
    selections.clear();
    control.qModInit();
    EXPECT_TRUE(selections.isEmpty());
    host.write(u"arena.exe"_s, "");
    control.qModInit();
    EXPECT_EQ(selections, (QStringList{QString(), u"alpha"_s, u"ctf"_s}));
    EXPECT_EQ(w.comModSelect.text(), u"ctf"_s);
}

TEST_F(ModsTest, ChoosingAModShowsItsDescriptionCutToAWholeCharacterAndChecksTheModBox)
{
    QByteArray longText = "Line one\r\nLine two ";
    while (longText.size() < 1000)
        longText += "0123456789";
    // "Größe: " is nine bytes; the cut after 255 bytes splits the "€" (three
    // bytes) after one or two of them, an emoji (four) after three, or the
    // sequence a 0xC0 lead would open.
    const QString text = u"Größe: "_s;
    const struct {
        const char* mod;
        QByteArray bytes; // no description file when empty
        QString caption;
    } cases[] = {
        {"ctf", "Capture the flag", u"Capture the flag"_s},
        {"long", longText, QString::fromLatin1(longText.left(255))},
        {"plain", "", u"?"_s},
        {"one", text.toUtf8() + QByteArray(245, 'a') + "€€", text + QString(245, u'a')},
        {"two", text.toUtf8() + QByteArray(244, 'a') + "€€", text + QString(244, u'a')},
        {"lead", QByteArray(254, 'a') + "\xC0\x80", QString(254, u'a')},
        {"four", QByteArray(252, 'a') + "\xF0\x9F\x98\x80", QString(252, u'a')},
        {"latin", "Caf\xE9 mod", u"Café mod"_s},
        // Not UTF-8 before the cut either: nothing is dropped.
        {"cp1252", "Caf\xE9 " + QByteArray(249, 'a') + "\xE9\xE9",
         u"Café "_s + QString(249, u'a') + u"é"_s},
    };
    host.write(u"empty/description.txt"_s, "");
    for (const auto& c : cases) {
        if (!c.bytes.isEmpty())
            host.write(QString::fromLatin1(c.mod) + u"/Description.TXT"_s, c.bytes);
    }
    scanMods({"ctf", "long", "plain", "one", "two", "lead", "four", "latin", "cp1252", "empty"});
    EXPECT_FALSE(w.chkModCheck.isEnabled());
    for (const auto& c : cases)
        EXPECT_EQ(captionOf(QString::fromLatin1(c.mod)), c.caption + u' ') << c.mod;
    EXPECT_EQ(captionOf(u"empty"_s), u"? "_s);

    captionOf(u"ctf"_s);
    EXPECT_TRUE(w.chkModCheck.isEnabled());
    EXPECT_EQ(w.chkModCheck.value(), qf::CheckBox::Checked);
    w.chkModCheck.userClick();
    captionOf(u"long"_s);
    EXPECT_EQ(w.chkModCheck.value(), qf::CheckBox::Checked) << "a new mod checks it again";
    EXPECT_EQ(captionOf(QString()), u" /"_s);
    EXPECT_FALSE(w.chkModCheck.isEnabled());
    EXPECT_EQ(w.chkModCheck.value(), qf::CheckBox::Unchecked);

    const int openBefore = openFileCount();
    for (int i = 0; i < 100; ++i) {
        captionOf(u"empty"_s);
        captionOf(u"ctf"_s);
    }
    EXPECT_EQ(openFileCount(), openBefore);
}
