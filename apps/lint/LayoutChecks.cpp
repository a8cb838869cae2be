#include "LayoutChecks.h"

#include "control/qForms.h"
#include "gamedata/GameDataKeys.h"
#include "platform/ProfileReader.h"
#include "toolkit/qt/ControlView.h"

#include <QLabel>
#include <QRectF>

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

// Whether the view shows the whole caption: a word-wrapped label needs the
// height of its wrapped lines, anything else the width its size hint asks.
bool fits(const QWidget& view)
{
    if (const auto* label = qobject_cast<const QLabel*>(&view))
        return label->heightForWidth(label->width()) <= label->height() &&
               label->minimumSizeHint().width() <= label->width();
    return view.sizeHint().width() <= view.width();
}

// The width in twips the view asks for the caption, rounded up to 15.
int neededTwips(const QWidget& view, const TwipScale& scale)
{
    const int pixels = qobject_cast<const QLabel*>(&view) ? view.minimumSizeHint().width()
                                                          : view.sizeHint().width();
    const int perPixel = std::max(1, int(std::lround(1.0 / scale.pixels(1440) * 1440)));
    return pixels * perPixel;
}

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
// so only the rest are compared, sorted by left edge.
void checkOverlaps(LintContext& lint, std::vector<Placed> placed)
{
    std::erase_if(placed, [](const Placed& p) {
        return dynamic_cast<const Frame*>(p.model) || dynamic_cast<const Line*>(p.model);
    });
    std::sort(placed.begin(), placed.end(),
              [](const Placed& a, const Placed& b) { return a.model->left() < b.model->left(); });
    for (size_t i = 0; i < placed.size(); ++i) {
        const QRectF a = rectOf(*placed[i].model);
        for (size_t j = i + 1; j < placed.size() && placed[j].model->left() < a.right(); ++j) {
            if (!a.intersects(rectOf(*placed[j].model)))
                continue;
            const int first = std::min(placed[i].entry, placed[j].entry);
            const int second = std::max(placed[i].entry, placed[j].entry);
            const QString key = entryKeyName(second, gd::Location);
            lint.add(Severity::Note, QStringLiteral("layout-overlap"),
                     QStringLiteral("%1: the widget overlaps entry %2").arg(key).arg(first), second,
                     key, true);
        }
    }
}

void checkCaptions(LintContext& lint, qForms& control, const std::vector<Placed>& placed,
                   int language)
{
    ControlView view(control);
    view.ensurePolished();
    for (const Placed& p : placed) {
        if (p.caption.isEmpty())
            continue;
        const QWidget* shown = view.viewOf(*p.model);
        if (!shown || fits(*shown))
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
    ControlWidgets& w = control.widgets();
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
        if (!shown || fits(*shown) || !texts->value(QStringLiteral("Texts"), textKey))
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
