#include "DesignerWindow.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using qf::designer::DesignerQuestions;

namespace {

struct KeepMine : DesignerQuestions {
    int asked = 0;
    bool reloadOverEdits(QWidget*, const QString&) override { return ++asked, false; }
    Unsaved closeWithEdits(QWidget*, const QString&) override { return Unsaved::Discard; }
};

QByteArray contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

TEST(Designer, DragResizeAndArrowKeysSnapUndoSaveAndKeepUnsavedEditsOverAnOutsideChange)
{
    QTemporaryDir dir;
    const QString host = dir.filePath(u"host"_s);
    ASSERT_EQ(
        QProcess::execute(u"cp"_s, {u"-r"_s, QStringLiteral(QFORMS_SOURCE_DIR "/data/host"), host}),
        0);
    const QString file = host + u"/Data/emberfall.qgd"_s;
    const QByteArray original = contents(file);
    auto questions = std::make_shared<KeepMine>();
    qf::designer::DesignerWindow window({file, host, 0}, questions);
    window.setGrid(120);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    qf::designer::PageOverlay* overlay = window.overlay();
    ASSERT_DOUBLE_EQ(overlay->pixelsPerTwip(), 1 / 15.0);

    // Entry 4, a check box at 240x1380 of 255x1455 inside a frame: the click
    // picks it over the frame; 17, 9 pixels on is 495x1515, snapped 480x1560.
    const QPoint grab = overlay->pixels({240, 1380, 1455, 255}).center();
    QTest::mousePress(overlay, Qt::LeftButton, {}, grab);
    QTest::mouseMove(overlay, grab + QPoint(8, 4));
    QTest::mouseRelease(overlay, Qt::LeftButton, {}, grab + QPoint(17, 9));
    EXPECT_EQ(overlay->selected(), 4);
    // The bottom right handle 30, 5 pixels on: edges 2385, 1890 snap to 2400, 1920.
    const QPoint corner = overlay->handles().at(4).center();
    QTest::mousePress(overlay, Qt::LeftButton, {}, corner);
    QTest::mouseMove(overlay, corner + QPoint(15, 2));
    QTest::mouseRelease(overlay, Qt::LeftButton, {}, corner + QPoint(30, 5));
    // The line (entry 18) is grabbed on its one-pixel stroke and moved by both
    // ends: 8, 4 pixels from 120, 2580 snap to 240, 2640.
    const QPoint stroke = overlay->pixels({3000, 2580, 0, 0}).topLeft();
    QTest::mousePress(overlay, Qt::LeftButton, {}, stroke);
    QTest::mouseMove(overlay, stroke + QPoint(4, 2));
    QTest::mouseRelease(overlay, Qt::LeftButton, {}, stroke + QPoint(8, 4));
    EXPECT_EQ(overlay->selected(), 18);
    overlay->select(4);
    // One pixel right, unsnapped, then taken back.
    QTest::keyClick(overlay, Qt::Key_Right);
    EXPECT_TRUE(window.bytes().contains("Control4Location=495x1560"));
    window.undo();
    ASSERT_TRUE(window.save());

    QByteArray expected = original;
    expected.replace("Control4Location=240x1380", "Control4Location=480x1560")
        .replace("Control4Size=255x1455", "Control4Size=360x1920")
        .replace("Control18X-Location=120x6615", "Control18X-Location=240x6735")
        .replace("Control18Y-Location=2580x2580", "Control18Y-Location=2640x2640");
    EXPECT_EQ(contents(file), expected);
    EXPECT_FALSE(window.isModified());

    // Shift moves eight pixels; an outside save then asks, and "keep mine"
    // keeps the edit for the next Save.
    QTest::keyClick(overlay, Qt::Key_Down, Qt::ShiftModifier);
    const QByteArray mine = window.bytes();
    EXPECT_TRUE(mine.contains("Control4Location=480x1680"));
    QFile outside(file);
    ASSERT_TRUE(outside.open(QIODevice::WriteOnly | QIODevice::Truncate));
    outside.write(QByteArray(expected).replace("Control4Caption=201", "Control4Caption=202"));
    outside.close();
    ASSERT_TRUE(QTest::qWaitFor([&] { return questions->asked == 1; }, 5000));
    EXPECT_EQ(window.bytes(), mine);
    EXPECT_TRUE(window.isModified());
    ASSERT_TRUE(window.save());
    EXPECT_EQ(contents(file), mine);
}
