#include "EditHistory.h"
#include "EntryEdits.h"
#include "LineChanges.h"
#include "PageEntries.h"
#include "control/qForms.h"
#include "platform/IniDocument.h"
#include "platform/IniFileSettingsStore.h"
#include "platform/TextDecoding.h"
#include "support/TestHost.h"

#include <QDirIterator>
#include <QProcess>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace qf::editing;

namespace {

QByteArray readBytes(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

QStringList filesUnder(const QString& folder, const QString& pattern)
{
    QStringList files;
    for (QDirIterator it(QFORMS_SOURCE_DIR u"/"_s + folder, {pattern}, QDir::Files,
                         QDirIterator::Subdirectories);
         it.hasNext();)
        files << it.next();
    files.sort();
    return files;
}

class Recorder : public qf::SkipObserver {
public:
    void stepSkipped(const qf::SkippedStep&) override {}
    void entryBuilt(int entry, const QString& kind, int element) override
    {
        widgets[entry] = {kind, element};
    }
    std::map<int, Widget> widgets;
};

// What the player sees of each entry's widget, keyed by entry: after the
// build and the defaults, and after a click on each check box and option button.
using Page = std::map<int, std::map<int, QString>>;

Page playPage(const QByteArray& qgd)
{
    const auto state = [](qForms& control, const std::map<int, Widget>& widgets) {
        qf::ControlWidgets& w = control.widgets();
        std::map<int, QString> seen;
        for (const auto& [entry, widget] : widgets) {
            const int n = widget.element;
            if (widget.kind == u"checkbox")
                seen[entry] = u"%1 %2 %3"_s.arg(w.Check1.at(n).caption())
                                  .arg(w.Check1.at(n).value())
                                  .arg(w.Check1.at(n).isEnabled());
            else if (widget.kind == u"option button")
                seen[entry] = u"%1 %2 %3"_s.arg(w.Option1.at(n).caption())
                                  .arg(w.Option1.at(n).value())
                                  .arg(w.Option1.at(n).isEnabled());
            else if (widget.kind == u"combo")
                seen[entry] = u"%1 %2"_s.arg(w.Combo1.at(n).text()).arg(w.Combo1.at(n).isEnabled());
            else if (widget.kind == u"text")
                seen[entry] = w.Text1.at(n).text();
        }
        return seen;
    };
    TestHost host;
    host.write(u"Data/game.qgd"_s, qgd);
    const auto build = [&](std::map<int, Widget>& widgets) {
        auto control = std::make_unique<qForms>();
        auto recorder = std::make_shared<Recorder>();
        control->setSettingsStore(
            std::make_shared<qf::IniFileSettingsStore>(host.filePath(u"c"_s)));
        control->setAppPath(host.path());
        control->setQpGameName(u"Arena"_s);
        control->setQpQGD(u"game.qgd"_s);
        control->setSkipObserver(recorder);
        control->qInitCustomControls();
        control->qLoadSettings();
        widgets = recorder->widgets;
        return control;
    };
    std::map<int, Widget> widgets;
    Page page{{0, state(*build(widgets), widgets)}};
    for (const auto& [entry, widget] : widgets) {
        if (widget.kind != u"checkbox" && widget.kind != u"option button")
            continue;
        std::map<int, Widget> same;
        const std::unique_ptr<qForms> control = build(same);
        qf::ControlWidgets& w = control->widgets();
        try {
            if (widget.kind == u"checkbox")
                w.Check1.at(widget.element)
                    .setValue(w.Check1.at(widget.element).value() == 1 ? 0 : 1);
            else
                w.Option1.at(widget.element).setValue(true);
        } catch (const qf::Error&) {
            // A chain of rules without end: the state it stopped in is compared.
        }
        page[entry] = state(*control, same);
    }
    return page;
}

// The page with its entries renumbered, the removed entry left out.
Page renumbered(const Page& page, const std::function<std::optional<int>(int)>& newNumber)
{
    const auto map = [&](const std::map<int, QString>& states) {
        std::map<int, QString> out;
        for (const auto& [entry, state] : states)
            if (const auto n = newNumber(entry))
                out[*n] = state;
        return out;
    };
    Page out;
    for (const auto& [clicked, states] : page)
        if (const auto n = clicked == 0 ? std::optional(0) : newNumber(clicked))
            out[*n] = map(states);
    return out;
}

} // namespace

TEST(EditingCore, ReadsEveryFileLikeTheProfileReaderAndKeepsItsBytes)
{
    const QStringList files =
        filesUnder(u"data/host/Data"_s, u"*.qgd"_s) + filesUnder(u"tests/lint"_s, u"*.qgd"_s);
    ASSERT_GE(files.size(), 10);
    for (const QString& path : files) {
        const QByteArray bytes = readBytes(path);
        const GameDataDocument doc = GameDataDocument::parse(bytes);
        EXPECT_EQ(LineChanges(doc).result(), bytes) << path.toStdString();
        // Every key the control reads is found where the reader finds it.
        const qf::IniDocument ini = qf::IniDocument::parse(qf::decodeText(bytes));
        for (const auto& section : ini.lines())
            for (const auto& key : section.keys)
                EXPECT_EQ(doc.value(section.name.toString(), key.name.toString()).value_or(u"-"_s),
                          ini.value(section.name, key.name).value_or(u"-"_s).left(1023))
                    << path.toStdString() << " " << key.name.toString().toStdString();
    }
}

TEST(EditingCore, DeleteAndReorderKeepEveryIndexAndRuleOnItsWidget)
{
    for (const QString& path : filesUnder(u"data/host/Data"_s, u"*.qgd"_s)) {
        const GameDataDocument doc = GameDataDocument::parse(readBytes(path));
        const PageEntries entries = PageEntries::read(doc);
        const Page before = playPage(doc.bytes());
        const int count = *entries.count;
        for (int n = 1; n <= count; ++n) {
            SCOPED_TRACE(u"%1 entry %2"_s.arg(path).arg(n).toStdString());
            // Rules aimed at the deleted widget go with it; so does what they did.
            GameDataDocument kept = doc;
            for (const auto& [entry, widget] : entries.widgets) {
                const auto rule =
                    doc.value(u"Custom Controls"_s, u"Control%1VisualFunction"_s.arg(entry));
                const auto target = rule ? parseRuleTarget(*rule) : std::nullopt;
                if (target && entries.widgets.count(n) && target->widget == entries.widgets.at(n))
                    kept = GameDataDocument::parse(
                        setKey(kept, u"Control%1VisualFunction"_s.arg(entry), {}).bytes);
            }
            const auto deleted = [n](int e) -> std::optional<int> {
                return e == n ? std::nullopt : std::optional(e > n ? e - 1 : e);
            };
            EXPECT_EQ(playPage(deleteEntry(doc, n).bytes),
                      renumbered(playPage(kept.bytes()), deleted));
            const auto first = [n](int e) { return std::optional(e == n ? 1 : e < n ? e + 1 : e); };
            EXPECT_EQ(playPage(reorderEntry(doc, n, 1).bytes), renumbered(before, first));
        }
    }
}

// Each case: the file before, the edit, and the file after byte for byte, or
// the message when the edit is refused.
TEST(EditingCore, EachEditChangesOnlyItsLinesAndUndoRestoresTheBytes)
{
    const QStringList cases = filesUnder(u"tests/editing"_s, u"*.case"_s);
    ASSERT_GE(cases.size(), 5);
    for (const QString& path : cases) {
        SCOPED_TRACE(path.toStdString());
        const QList<QByteArray> parts = readBytes(path).split('|');
        ASSERT_EQ(parts.size(), 4);
        const QStringList edit = QString::fromUtf8(parts[1]).trimmed().split(u'\n');
        const QByteArray before = parts[0].sliced(parts[0].indexOf('\n') + 1);
        EditHistory history(before);
        try {
            const GameDataDocument doc = GameDataDocument::parse(before);
            const QString& op = edit[0];
            const EditResult result = op == u"set"      ? setKey(doc, edit[1], edit.value(2))
                                      : op == u"add"    ? addEntry(doc, edit[1])
                                      : op == u"delete" ? deleteEntry(doc, edit[1].toInt())
                                      : op == u"move"   ? moveEntry(doc, edit[1].toInt(), edit[2])
                                      : op == u"resize"
                                          ? resizeEntry(doc, edit[1].toInt(), edit[2])
                                          : reorderEntry(doc, edit[1].toInt(), edit[2].toInt());
            EXPECT_EQ(result.bytes, parts[2].sliced(1));
            EXPECT_EQ(result.notes.join(u'\n'), QString::fromUtf8(parts[3]).trimmed());
            history.record(result.bytes);
            EXPECT_EQ(history.undo(), before);
            EXPECT_EQ(history.redo(), result.bytes);
        } catch (const EditError& error) {
            EXPECT_EQ(error.message(), QString::fromUtf8(parts[3]).trimmed());
        }
    }
}

TEST(EditingCore, TheCommandWritesTheEditOrLeavesTheFileAsItWas)
{
    TestHost host;
    const QByteArray original = "[Custom Controls]\r\nCount=1\r\nControl1Type=label\r\n";
    host.write(u"game.qgd"_s, original);
    const auto edit = [&](const QStringList& args) {
        QProcess process;
        process.start(QStringLiteral(QFORMS_CLI_PATH),
                      QStringList{u"edit"_s, host.filePath(u"game.qgd"_s)} + args);
        EXPECT_TRUE(process.waitForFinished(60000));
        return std::pair(process.exitCode(), QString::fromUtf8(process.readAllStandardError()));
    };
    for (const QStringList& bad : {QStringList{u"set"_s, u"Control1Tipe"_s, u"x"_s},
                                   {u"delete"_s, u"2"_s},
                                   {u"add"_s, u"button"_s},
                                   {u"move"_s, u"1"_s, u"120"_s},
                                   {u"set"_s, u"Control1Caption"_s, u"two\rlines"_s},
                                   {u"frob"_s}}) {
        const auto [code, err] = edit(bad);
        EXPECT_EQ(code, 2) << bad.join(u' ').toStdString();
        EXPECT_TRUE(err.startsWith(u"qforms: "_s)) << err.toStdString();
        EXPECT_EQ(readBytes(host.filePath(u"game.qgd"_s)), original);
    }
    EXPECT_EQ(edit({u"move"_s, u"1"_s, u"240x360"_s}).first, 0);
    EXPECT_EQ(readBytes(host.filePath(u"game.qgd"_s)), original + "Control1Location=240x360\r\n");
}
