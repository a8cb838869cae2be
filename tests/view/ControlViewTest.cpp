#include "view/ControlView.h"
#include "control/qForms.h"
#include "support/TestHost.h"
#include "view/CaptionPairing.h"
#include "view/QtFileDialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStyle>
#include <QTest>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using qf::ControlView;

namespace {

template <typename T = QWidget> T* viewAs(const ControlView& view, const qf::Widget& model)
{
    auto* shown = qobject_cast<T*>(view.viewOf(model));
    EXPECT_NE(shown, nullptr) << model.name();
    return shown;
}

} // namespace

TEST(ControlView, MirrorsTheFixedWidgetsAndPassesKeystrokesAndClicksBothWays)
{
    qForms control;
    ControlView view(control);
    auto& w = control.widgets();

    EXPECT_EQ(view.viewOf(w.txtPath)->geometry(), view.scale().rect(120, 480, 5175, 285));
    const QSize design(view.scale().pixels(6735), view.scale().pixels(4215));
    EXPECT_EQ(view.size(), design);
    EXPECT_EQ(view.sizeHint(), design) << "what a layout gives it";
    EXPECT_EQ(view.minimumSizeHint(), design);
    EXPECT_EQ(viewAs<QPushButton>(view, w.cmdBrowse)->text(), u"038"_s);

    auto* status = viewAs<QLabel>(view, w.lblStatus);
    EXPECT_EQ(status->parentWidget(), view.viewOf(w.frameStatus));
    EXPECT_EQ(status->palette().color(QPalette::Window), QColor(Qt::black));
    EXPECT_EQ(status->palette().color(QPalette::WindowText), QColor(0, 255, 0));
    EXPECT_TRUE(status->font().bold() && status->autoFillBackground());
    EXPECT_TRUE(status->wordWrap()) << "a caption wraps within its box, as the tooltips measure";
    w.lblStatus.setForeColor(0x0000FF); // blue, green, red
    EXPECT_EQ(status->palette().color(QPalette::WindowText), QColor(255, 0, 0));

    int changes = 0;
    w.txtPath.change.connect([&] { ++changes; });
    auto* path = viewAs<QLineEdit>(view, w.txtPath);
    QTest::keyClicks(path, u"C:"_s);
    EXPECT_EQ(changes, 2) << "each keystroke is a change";
    w.txtPath.setText(u"D:/games"_s);
    EXPECT_EQ(path->text(), u"D:/games"_s);

    // A greyed box shows as partly checked, and a click checks it.
    auto* box = viewAs<QCheckBox>(view, w.chkModCheck);
    w.chkModCheck.setValue(2);
    EXPECT_EQ(box->checkState(), Qt::PartiallyChecked);
    box->click();
    EXPECT_EQ(w.chkModCheck.value(), 1);
}

TEST(ControlView, ABuiltCheckBoxRunsItsRuleAtOnceAndTheFocusChainTakesTheFixedWidgetsThenTheEntries)
{
    TestHost host;
    host.writeCustomControls(
        u"game.qgd"_s, "Count=4\nControl1Type=frame\nControl2Type=checkbox\n"
                       "Control2Caption=Safe mode\nControl2VisualFunction=combo1;;ifonthendisable\n"
                       "Control3Type=combo\nControl3Caption=a;;b;;(b);;\nControl4Type=line\n"
                       "Control4X-Location=0x1500\nControl4Y-Location=300x300\nControl4Width=3\n");
    qForms control;
    control.setAppPath(host.path());
    control.setQpQGD(u"game.qgd"_s);
    ControlView view(control);
    view.show();
    control.qInitCustomControls();
    const auto& w = control.widgets();

    auto* box = viewAs<QCheckBox>(view, w.Check1.at(1));
    auto* combo = viewAs<QComboBox>(view, w.Combo1.at(1));
    EXPECT_EQ(box->text(), u"safe mode"_s);
    EXPECT_EQ(combo->currentText(), u"b"_s);
    EXPECT_TRUE(combo->isEnabled());
    EXPECT_EQ(view.childAt(box->mapTo(&view, box->rect().center())), box)
        << "no frame lies over it";
    box->click();
    EXPECT_FALSE(combo->isEnabled());

    // The line covers its two ends, thickness included.
    const QRect line = view.viewOf(w.Line1.at(1))->geometry();
    EXPECT_TRUE(line.contains(QPoint(0, view.scale().pixels(300))));
    EXPECT_TRUE(line.contains(QPoint(view.scale().pixels(1500), view.scale().pixels(300))));

    // Only widgets that take the keyboard, each once.
    QCoreApplication::processEvents();
    QStringList names;
    for (QWidget* widget : view.focusChain())
        names << widget->objectName();
    EXPECT_EQ(names.join(u' '), u"txtPath cmdBrowse chkModCheck comModSelect txtCLP lstConfig "
                                "cmdEdit lstFiles lstAVA Check1(0) Option1(0) Combo1(0) Text1(0) "
                                "Check1(1) Combo1(1)"_s);
}

TEST(CaptionPairing, ALabelCaptionsTheOneWidgetASightedPlayerReadsItFor)
{
    using K = qf::WidgetKind;
    const auto at = [](double x, double y, double w, double h, K kind, bool captioned = true) {
        return qf::PlacedWidget{QRectF(x, y, w, h), kind, captioned};
    };
    // The box lies at 1000-2000 across, 1000-1300 down, in twips; a caption may
    // reach 60 into it and lie up to 240 above it.
    const qf::PlacedWidget box = at(1000, 1000, 1000, 300, K::TextBox, false);
    const struct {
        std::vector<qf::PlacedWidget> widgets;
        const char* pairs;
    } cases[] = {
        {{box, at(0, 1000, 1060, 300, K::Label)}, "1>0"},  // on its row, reaching 60 in
        {{box, at(1500, 460, 900, 300, K::Label)}, "1>0"}, // above, 240 up
        {{box, at(1500, 459, 900, 300, K::Label)}, ""},    // further up
        {{box, at(1000, 700, 500, 250, K::Label), at(900, 980, 1500, 0, K::Line)}, ""},  // a line
        {{box, at(0, 1000, 900, 300, K::Label), at(950, 900, 1200, 500, K::Frame)}, ""}, // an edge
        {{box, at(0, 1000, 900, 300, K::Label), at(-90, 900, 2200, 500, K::Frame)}, "1>0"},
        {{box, at(0, 1000, 900, 300, K::Label), at(0, 1350, 900, 300, K::ComboBox, false)},
         "1>0"}, // beside one, above the other: the one beside takes it
        {{at(1000, 1000, 900, 300, K::OptionButton), at(0, 0, 3000, 3000, K::Frame),
          at(900, 900, 1200, 600, K::Frame), at(950, 950, 1100, 400, K::Frame, false)},
         "2>0"}, // the innermost captioned frame is its group
    };
    for (const auto& c : cases) {
        QStringList pairs;
        for (const qf::CaptionPair& pair : qf::pairCaptions(c.widgets))
            pairs << u"%1>%2"_s.arg(pair.caption).arg(pair.widget);
        EXPECT_EQ(pairs.join(u' '), QLatin1String(c.pairs)) << "case " << &c - cases;
    }
}

TEST(ControlView, NamesAFieldByItsCaptionAnewWhenTheLabelMovesAndTooltipsACutCaption)
{
    qForms control;
    ControlView view(control);
    auto& w = control.widgets();
    qf::TextBox& box = w.Text1.load(1);
    box.setGeometry(10000, 10000, 1000, 300);
    box.setVisible(true);
    qf::Label& first = w.Label1.load(1);
    first.setCaption(u"&First "_s);
    first.setVisible(true);
    for (const auto& [left, name] : {std::pair{8000, "First"}, {5000, "First"}, {12000, ""}}) {
        first.setGeometry(left, 10000, 1000, 300);
        QCoreApplication::processEvents(); // moving a label names the box anew
        EXPECT_EQ(view.viewOf(box)->accessibleName(), QLatin1String(name)) << left;
        EXPECT_EQ(viewAs<QLabel>(view, first)->buddy(), *name ? view.viewOf(box) : nullptr);
    }

    // A caption with exactly the room it needs fits; a pixel less cuts it (a
    // label's caption wraps, so there a pixel less height cuts it too).
    const QFontMetrics metrics(viewAs(view, first)->font());
    const int buttonMargins = 2 * view.style()->pixelMetric(QStyle::PM_ButtonMargin);
    qf::CheckBox& check = w.Check1.load(1);
    check.setCaption(u"Arena"_s);
    w.cmdBrowse.setCaption(u"Arena"_s);
    first.setCaption(u"Arena"_s);
    const std::pair<qf::Widget*, QSize> edges[] = {
        {&first,
         metrics.boundingRect(QRect(0, 0, 1000, 1000), Qt::TextWordWrap, u"Arena"_s).size()},
        {&check, {viewAs(view, check)->sizeHint().width(), 20}},
        {&w.cmdBrowse, {metrics.horizontalAdvance(u"Arena"_s) + buttonMargins, 20}},
    };
    const double twips = 1440.0 / view.logicalDpiX();
    for (const auto& [model, needs] : edges) {
        const QSize shorter = needs - QSize(0, model == &first ? 1 : 0);
        for (const QSize size : {needs, needs - QSize(1, 0), shorter}) {
            model->setGeometry(0, 0, size.width() * twips, size.height() * twips);
            QCoreApplication::processEvents();
            ASSERT_EQ(view.viewOf(*model)->size(), size);
            EXPECT_EQ(view.viewOf(*model)->toolTip(), size == needs ? QString() : u"Arena"_s)
                << model->name() << size.width() << 'x' << size.height();
        }
    }
}

TEST(ControlView, WidgetsGoWhenUnloadedClearedOrWithTheControlAndTheRestStayStackedAsBefore)
{
    QByteArray lines = "Count=60\n";
    for (int i = 1; i <= 60; ++i)
        lines += "Control" + QByteArray::number(i) + "Type=" + (i % 3 ? "label" : "frame") + "\n";
    TestHost host;
    host.writeCustomControls(u"game.qgd"_s, lines);
    auto control = std::make_unique<qForms>();
    control->setAppPath(host.path());
    ControlView view(*control);
    QWidget* page = view.viewOf(control->widgets().frame);
    QObjectList before;
    for (int round = 0; round < 2; ++round) {
        control->setQpQGD(u"game.qgd"_s);
        control->qInitCustomControls();
        auto* frames = view.findChild<QWidget*>(u"frames"_s);
        ASSERT_NE(frames, nullptr);
        EXPECT_EQ(frames->children().size(), 20);
        if (round == 0) {
            before = page->children();
            before.removeIf([](const QObject* child) {
                return child->objectName().endsWith(u')') && !child->objectName().endsWith(u"(0)");
            });
        }
        control->qClear();
        EXPECT_EQ(page->children(), before);
        EXPECT_TRUE(frames->children().isEmpty());
    }

    auto& combos = control->widgets().Combo1;
    QPointer<QComboBox> combo = viewAs<QComboBox>(view, combos.load(1));
    combos.unload(1);
    EXPECT_TRUE(combo.isNull()) << "an element unloaded alone goes at once";
    combos.load(1);
    control.reset();
    EXPECT_TRUE(view.findChildren<QComboBox*>().isEmpty());
}

TEST(QtFileDialog, FiltersMatchTheirPatternsInEitherLetterCase)
{
    EXPECT_EQ(qf::QtFileDialog::nameFilters(u"Programs|*.exe;GAME_2.bat|Maps (ß)|*.ß|Odd"_s),
              QStringList({u"Programs (*.[eE][xX][eE] [gG][aA][mM][eE]_2.[bB][aA][tT])"_s,
                           u"Maps (ß) (*.ß)"_s}));
}
