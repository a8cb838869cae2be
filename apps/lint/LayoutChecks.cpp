#include "LayoutChecks.h"

#include "control/qForms.h"
#include "gamedata/GameDataKeys.h"
#include "platform/Errors.h"
#include "platform/ProfileReader.h"
#include "view/ControlView.h"
#include "view/WidgetBinding.h"
#include "view/WidgetDescriptions.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QCoreApplication>
#include <QHash>
#include <QLabel>
#include <QRadioButton>
#include <QRectF>
#include <QStyle>
#include <QStyleOptionButton>

#include <algorithm>
#include <cmath>

namespace qf::lint {

namespace {

namespace gd = gamedata;

struct Placed {
    int entry;
    const Widget* model;
    QString caption;
};

QRectF rectOf(const Widget& widget)
{
    return {widget.left(), widget.top(), widget.width(), widget.height()};
}

template <typename T>
void collect(const LintContext& lint, const QString& kind, WidgetArray<T>& array,
             std::vector<Placed>& placed)
{
    for (int element = 1; element <= array.upperBound(); ++element) {
        if (!array.exists(element) || !array.at(element).isVisible())
            continue;
        QString caption;
        if constexpr (requires(T t) { t.caption(); })
            caption = array.at(element).caption();
        placed.push_back({lint.entryOf(kind, element), &array.at(element), caption});
    }
}

// The pixels from the widget's left edge to the end of its caption as the
// style draws it: the text goes into the style's contents rectangle, after
// the indicator, in the widget's own font. nullopt for the kinds the view's
// own test measures.
std::optional<int> captionEnd(const QWidget& view)
{
    QStyle::SubElement contents;
    if (qobject_cast<const QCheckBox*>(&view))
        contents = QStyle::SE_CheckBoxContents;
    else if (qobject_cast<const QRadioButton*>(&view))
        contents = QStyle::SE_RadioButtonContents;
    else
        return std::nullopt;
    QStyleOptionButton option;
    option.initFrom(&view);
    option.text = static_cast<const QAbstractButton&>(view).text();
    const QRect area = view.style()->subElementRect(contents, &option, &view);
    return area.left() + QFontMetrics(view.font()).size(Qt::TextShowMnemonic, option.text).width();
}

bool cutsShownCaption(const Widget& model, const QWidget& view)
{
    const std::optional<int> end = captionEnd(view);
    return end ? *end > view.width() : cutsCaption(model, view);
}

// The width in twips the caption needs, rounded up to 15.
int neededTwips(const QWidget& view, const TwipScale& scale)
{
    const int pixels = captionEnd(view).value_or(qobject_cast<const QLabel*>(&view)
                                                     ? view.minimumSizeHint().width()
                                                     : view.sizeHint().width());
    const int perPixel = std::max(1, int(std::lround(1.0 / scale.pixels(1440) * 1440)));
    return pixels * perPixel;
}

// One widget of a kind, shown the way the view shows the option widgets, that
// takes each caption and size in turn: measuring a 32767-entry page needs no
// 32767 QWidgets.
class Probe {
public:
    Probe(QWidget& parent, const TwipScale& scale)
        : m_check(QStringLiteral("probe"), &m_container),
          m_option(QStringLiteral("probe"), &m_container),
          m_label(QStringLiteral("probe"), &m_container),
          m_frame(QStringLiteral("probe"), &m_container)
    {
        for (Widget* model :
             std::initializer_list<Widget*>{&m_check, &m_option, &m_label, &m_frame})
            m_bindings.push_back(WidgetBinding::create(*model, &parent, scale));
    }

    // The probe's view showing the caption at the widget's size; nullptr for
    // a kind without a caption.
    const QWidget* show(const Widget& widget, const QString& caption)
    {
        Widget* model = nullptr;
        if (dynamic_cast<const CheckBox*>(&widget))
            model = &m_check, m_check.setCaption(caption);
        else if (dynamic_cast<const OptionButton*>(&widget))
            model = &m_option, m_option.setCaption(caption);
        else if (dynamic_cast<const Label*>(&widget))
            model = &m_label, m_label.setCaption(caption);
        else if (dynamic_cast<const Frame*>(&widget))
            model = &m_frame, m_frame.setCaption(caption);
        if (!model)
            return nullptr;
        model->setGeometry(0, 0, widget.width(), widget.height());
        for (const auto& binding : m_bindings)
            if (&binding->model() == model)
                return binding->view();
        return nullptr;
    }

    const Widget* model(const QWidget* view) const
    {
        for (const auto& binding : m_bindings)
            if (binding->view() == view)
                return &binding->model();
        return nullptr;
    }

private:
    Container m_container{QStringLiteral("probes")};
    CheckBox m_check;
    OptionButton m_option;
    Label m_label;
    Frame m_frame;
    std::vector<std::unique_ptr<WidgetBinding>> m_bindings;
};

QString corners(const QRectF& rect)
{
    return QStringLiteral("(%1,%2)-(%3,%4)")
        .arg(rect.left())
        .arg(rect.top())
        .arg(rect.right())
        .arg(rect.bottom());
}

struct FixedArea {
    const Widget* widget;
    const char* name;
    // The host switch that shows it; nullptr for the widgets always shown.
    bool LintContext::HostGroups::*group;
};

// A size written width first makes a widget far taller than wide: the
// overflow is then the Size's fault, and the swapped size would fit.
bool looksWidthFirst(const Widget& widget, const QRectF& client)
{
    const QRectF swapped(widget.left(), widget.top(), widget.height(), widget.width());
    return widget.height() > 2 * widget.width() && client.contains(swapped);
}

void checkPlacement(LintContext& lint, ControlWidgets& w, const std::vector<Placed>& placed)
{
    using Groups = LintContext::HostGroups;
    const QRectF client(0, 0, ControlWidgets::ClientWidth, ControlWidgets::ClientHeight);
    const FixedArea fixed[] = {
        {&w.lblPath, "the folder label", nullptr},
        {&w.txtPath, "the folder box", nullptr},
        {&w.cmdBrowse, "the Browse button", nullptr},
        {&w.chkModCheck, "the \"always load the mod\" check box", &Groups::modSelection},
        {&w.comModSelect, "the mod box", &Groups::modSelection},
        {&w.lblModName, "the mod name", &Groups::modSelection},
        {&w.lblCLP, "the parameters label", &Groups::parameters},
        {&w.txtCLP, "the parameters box", &Groups::parameters},
        {&w.lblSelectConfig, "the config label", &Groups::configs},
        {&w.lstConfig, "the config list", &Groups::configs},
        {&w.cmdEdit, "the Edit button", &Groups::configs},
        {&w.frameStatus, "the status frame", nullptr}};
    std::optional<std::pair<int, QString>> unknownHost; // the first overlap with a group
    int moreInGroups = 0;
    for (const Placed& p : placed) {
        const QString key = entryKeyName(p.entry, gd::Location);
        const QRectF rect = rectOf(*p.model);
        if (!client.contains(rect)) {
            const bool sizeFirst =
                looksWidthFirst(*p.model, client) && lint.entryValue(p.entry, gd::Size).has_value();
            const QString sizeKey = entryKeyName(p.entry, gd::Size);
            lint.add(Severity::Warning, QStringLiteral("layout-outside"),
                     sizeFirst ? QStringLiteral("%1: the widget is %2 twips high and %3 wide and "
                                                "reaches outside the control's 6735 x 4215 "
                                                "area; Size is HEIGHTxWIDTH: write %1=%3x%2")
                                     .arg(sizeKey)
                                     .arg(p.model->height())
                                     .arg(p.model->width())
                               : QStringLiteral("%1: the widget %2 reaches outside the "
                                                "control's 6735 x 4215 area")
                                     .arg(key, corners(rect)),
                     p.entry, sizeFirst ? sizeKey : key, true);
        }
        for (const FixedArea& area : fixed) {
            const QRectF covered = rectOf(*area.widget);
            if (!rect.intersects(covered))
                continue;
            const QString what =
                QStringLiteral("%1: the widget %2 covers %3 %4")
                    .arg(key, corners(rect), QLatin1String(area.name), corners(covered));
            if (!area.group) {
                lint.add(Severity::Warning, QStringLiteral("layout-overlap-fixed"), what, p.entry,
                         key, true);
            } else if (lint.hostGroups) {
                if ((*lint.hostGroups).*area.group)
                    lint.add(Severity::Warning, QStringLiteral("layout-overlap-fixed"),
                             what + QStringLiteral(" that the host shows for %1")
                                        .arg(lint.hostGroups->game),
                             p.entry, key, true);
            } else if (!unknownHost) {
                unknownHost = {p.entry, what};
            } else {
                ++moreInGroups;
            }
        }
    }
    // No game of launcher.ini names the file: a host may show the groups or
    // not, and a file meant for one that does not should not fill the list.
    // One note says what the lint could not tell.
    if (unknownHost) {
        const QString key = entryKeyName(unknownHost->first, gd::Location);
        lint.add(
            Severity::Note, QStringLiteral("layout-overlap-fixed"),
            unknownHost->second +
                QStringLiteral(" if the host shows it; no game in the host folder's launcher.ini "
                               "names this file, so the lint cannot tell%1")
                    .arg(moreInGroups ? QStringLiteral(" (%1 more such overlaps)").arg(moreInGroups)
                                      : QString()),
            unknownHost->first, key, true);
    }
}

// The first earlier widget each one meets by `meets`; a grid of cells keeps
// that linear for files of any size.
template <typename Meets>
std::vector<int> firstMet(const std::vector<Placed>& placed, const Meets& meets)
{
    constexpr double Cell = 480;
    const auto cells = [](const QRectF& r, const auto& visit) {
        const int left = int(std::floor(std::max(0.0, r.left()) / Cell));
        const int right = int(std::floor(std::clamp(r.right(), 0.0, 1e6) / Cell));
        const int top = int(std::floor(std::max(0.0, r.top()) / Cell));
        const int bottom = int(std::floor(std::clamp(r.bottom(), 0.0, 1e6) / Cell));
        for (int x = left; x <= std::min(right, left + 64); ++x)
            for (int y = top; y <= std::min(bottom, top + 64); ++y)
                visit(qint64(x) << 32 | quint32(y));
    };
    std::vector<int> met(placed.size(), -1);
    QHash<qint64, QList<int>> grid; // cell -> indexes into placed, earlier entries first
    for (size_t i = 0; i < placed.size(); ++i) {
        const QRectF rect = rectOf(*placed[i].model);
        cells(rect, [&](qint64 cell) {
            QList<int>& here = grid[cell];
            for (int j : std::as_const(here)) {
                if (met[i] < 0 && meets(rect, rectOf(*placed[j].model)))
                    met[i] = j;
            }
            // A crowded cell keeps its first widgets: enough to name one overlap.
            if (here.size() < 64)
                here.append(int(i));
        });
    }
    return met;
}

// Overlaps between option widgets. Frames hold others and lines cross them,
// so a frame is compared only with frames, where crossing edges are the
// fault, and lines not at all. A widget mostly hidden by another is a
// mistake; a slight overlap may be meant. Each widget is said once, with the
// first entry it meets.
void checkOverlaps(LintContext& lint, std::vector<Placed> placed)
{
    std::erase_if(placed, [](const Placed& p) { return dynamic_cast<const Line*>(p.model); });
    std::sort(placed.begin(), placed.end(),
              [](const Placed& a, const Placed& b) { return a.entry < b.entry; });
    std::vector<Placed> frames;
    std::copy_if(placed.begin(), placed.end(), std::back_inserter(frames),
                 [](const Placed& p) { return dynamic_cast<const Frame*>(p.model); });
    std::erase_if(placed, [](const Placed& p) { return dynamic_cast<const Frame*>(p.model); });

    const auto crosses = [](const QRectF& a, const QRectF& b) {
        return a.intersects(b) && !a.contains(b) && !b.contains(a);
    };
    const std::vector<int> crossed = firstMet(frames, crosses);
    for (size_t i = 0; i < frames.size(); ++i) {
        if (crossed[i] < 0)
            continue;
        const QString key = entryKeyName(frames[i].entry, gd::Location);
        lint.add(Severity::Warning, QStringLiteral("layout-overlap"),
                 QStringLiteral("%1: the frame's edges cross those of the frame of entry %2; "
                                "move one inside the other or apart")
                     .arg(key)
                     .arg(frames[crossed[i]].entry),
                 frames[i].entry, key, true);
    }

    const std::vector<int> met =
        firstMet(placed, [](const QRectF& a, const QRectF& b) { return a.intersects(b); });
    for (size_t i = 0; i < placed.size(); ++i) {
        if (met[i] < 0)
            continue;
        const QRectF a = rectOf(*placed[i].model);
        const QRectF b = rectOf(*placed[met[i]].model);
        const QRectF common = a.intersected(b);
        const double smaller = std::min(a.width() * a.height(), b.width() * b.height());
        const bool mostly = common.width() * common.height() * 2 >= smaller;
        const QString key = entryKeyName(placed[i].entry, gd::Location);
        lint.add(mostly ? Severity::Warning : Severity::Note, QStringLiteral("layout-overlap"),
                 mostly ? QStringLiteral("%1: the widget lies over entry %2 and hides most of "
                                         "one of them; move one")
                              .arg(key)
                              .arg(placed[met[i]].entry)
                        : QStringLiteral("%1: the widget overlaps entry %2")
                              .arg(key)
                              .arg(placed[met[i]].entry),
                 placed[i].entry, key, true);
    }
}

void checkCaptions(LintContext& lint, qForms& control, const std::vector<Placed>& placed,
                   int language)
{
    // The fixed widgets in this language, on a control without option widgets.
    qForms fixedOnly;
    fixedOnly.setAppPath(control.AppPath());
    fixedOnly.setQpGameName(control.qpGameName());
    try {
        fixedOnly.setQpLanguageIndex(qint16(language));
    } catch (const Error&) {
    }
    ControlView view(fixedOnly);
    Probe probe(view, view.scale());
    // Polished as a shown window would be, in one pass.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::PolishRequest);

    for (const Placed& p : placed) {
        if (p.caption.isEmpty())
            continue;
        const QWidget* shown = probe.show(*p.model, p.caption);
        if (!shown || !cutsShownCaption(*probe.model(shown), *shown))
            continue;
        const QString key = entryKeyName(p.entry, gd::Caption);
        lint.add(Severity::Warning, QStringLiteral("layout-caption-fit"),
                 QStringLiteral("%1: \"%2\" does not fit its %3-twip width in language %4 "
                                "(it needs about %5)")
                     .arg(key, p.caption)
                     .arg(p.model->width())
                     .arg(language)
                     .arg(neededTwips(*shown, view.scale())),
                 p.entry, key, true);
    }

    // The fixed captions come from the language file itself.
    ControlWidgets& w = fixedOnly.widgets();
    const std::pair<const Widget*, const char*> fixed[] = {{&w.cmdBrowse, "038"},
                                                           {&w.chkModCheck, "055"},
                                                           {&w.lblCLP, "026"},
                                                           {&w.lblSelectConfig, "050"},
                                                           {&w.cmdEdit, "049"}};
    const QString languageFile =
        lint.appPath + QStringLiteral("/Data/Languages/%1.ini").arg(language);
    const auto texts = loadProfile(languageFile);
    if (!texts)
        return;
    for (const auto& [widget, number] : fixed) {
        const QWidget* shown = view.viewOf(*widget);
        const QString textKey = QLatin1String(number);
        if (!shown || !cutsShownCaption(*widget, *shown) ||
            !texts->value(QStringLiteral("Texts"), textKey))
            continue;
        lint.addAt(Severity::Warning, QStringLiteral("layout-caption-fit"),
                   QStringLiteral("%1: \"%2\" does not fit the fixed %3-twip widget (it "
                                  "needs about %4)")
                       .arg(textKey, *texts->value(QStringLiteral("Texts"), textKey))
                       .arg(widget->width())
                       .arg(neededTwips(*shown, view.scale())),
                   0, languageFile, texts->keyPosition(QStringLiteral("Texts"), textKey));
    }
}

} // namespace

void checkLayout(LintContext& lint, qForms& control, int language, bool placement)
{
    ControlWidgets& w = control.widgets();
    std::vector<Placed> placed;
    collect(lint, gd::KindCheckBox, w.Check1, placed);
    collect(lint, gd::KindOptionButton, w.Option1, placed);
    collect(lint, gd::KindFrame, w.Frame1, placed);
    collect(lint, gd::KindCombo, w.Combo1, placed);
    collect(lint, gd::KindLabel, w.Label1, placed);
    collect(lint, gd::KindText, w.Text1, placed);
    if (placement) {
        checkPlacement(lint, w, placed);
        checkOverlaps(lint, placed);
    }
    checkCaptions(lint, control, placed, language);
}

} // namespace qf::lint
