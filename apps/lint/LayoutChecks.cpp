#include "LayoutChecks.h"

#include "control/qForms.h"
#include "gamedata/GameDataKeys.h"
#include "platform/Errors.h"
#include "platform/ProfileReader.h"
#include "view/ControlView.h"
#include "view/WidgetBinding.h"
#include "view/WidgetDescriptions.h"

#include <QCoreApplication>
#include <QHash>
#include <QLabel>
#include <QRectF>

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

// The width in twips the view asks for the caption, rounded up to 15.
int neededTwips(const QWidget& view, const TwipScale& scale)
{
    const int pixels = qobject_cast<const QLabel*>(&view) ? view.minimumSizeHint().width()
                                                          : view.sizeHint().width();
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

void checkPlacement(LintContext& lint, ControlWidgets& w, const std::vector<Placed>& placed)
{
    const QRectF client(0, 0, ControlWidgets::ClientWidth, ControlWidgets::ClientHeight);
    const std::pair<const Widget*, const char*> fixed[] = {{&w.lblPath, "the folder label"},
                                                           {&w.txtPath, "the folder box"},
                                                           {&w.cmdBrowse, "the Browse button"},
                                                           {&w.frameStatus, "the status frame"}};
    for (size_t i = 0; i < placed.size(); ++i) {
        const Placed& p = placed[i];
        const QString key = entryKeyName(p.entry, gd::Location);
        const QRectF rect = rectOf(*p.model);
        if (!client.contains(rect))
            lint.add(Severity::Warning, QStringLiteral("layout-outside"),
                     QStringLiteral("%1: the widget (%2, %3 to %4, %5) reaches outside the "
                                    "control's 6735 x 4215 area")
                         .arg(key)
                         .arg(rect.left())
                         .arg(rect.top())
                         .arg(rect.right())
                         .arg(rect.bottom()),
                     p.entry, key, true);
        for (const auto& [widget, name] : fixed) {
            if (widget->isVisible() && rect.intersects(rectOf(*widget)))
                lint.add(Severity::Warning, QStringLiteral("layout-overlap-fixed"),
                         QStringLiteral("%1: the widget covers %2").arg(key, QLatin1String(name)),
                         p.entry, key, true);
        }
    }
}

// Overlaps between option widgets: frames hold others and lines cross them,
// so only the rest are compared. Each widget is noted once, with the first
// entry it overlaps; a grid of cells keeps that linear for files of any size.
void checkOverlaps(LintContext& lint, std::vector<Placed> placed)
{
    std::erase_if(placed, [](const Placed& p) {
        return dynamic_cast<const Frame*>(p.model) || dynamic_cast<const Line*>(p.model);
    });
    std::sort(placed.begin(), placed.end(),
              [](const Placed& a, const Placed& b) { return a.entry < b.entry; });
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
    QHash<qint64, QList<int>> grid; // cell -> indexes into placed, earlier entries first
    for (size_t i = 0; i < placed.size(); ++i) {
        const QRectF rect = rectOf(*placed[i].model);
        int overlapped = 0;
        cells(rect, [&](qint64 cell) {
            QList<int>& here = grid[cell];
            for (int j : std::as_const(here)) {
                if (!overlapped && rect.intersects(rectOf(*placed[j].model)))
                    overlapped = placed[j].entry;
            }
            // A crowded cell keeps its first widgets: enough to name one overlap.
            if (here.size() < 64)
                here.append(int(i));
        });
        if (!overlapped)
            continue;
        const QString key = entryKeyName(placed[i].entry, gd::Location);
        lint.add(Severity::Note, QStringLiteral("layout-overlap"),
                 QStringLiteral("%1: the widget overlaps entry %2").arg(key).arg(overlapped),
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
        if (!shown || !cutsCaption(*probe.model(shown), *shown))
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
        if (!shown || !cutsCaption(*widget, *shown) ||
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
