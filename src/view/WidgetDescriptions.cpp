#include "view/WidgetDescriptions.h"

#include "toolkit/CommandButton.h"
#include "toolkit/Frame.h"
#include "toolkit/Label.h"
#include "toolkit/ToggleButton.h"

#include <QFontMetrics>
#include <QStyle>

#include <algorithm>
#include <limits>
#include <unordered_map>

namespace qf {

namespace {

QString captionOf(const Widget& model)
{
    switch (model.kind()) {
    case WidgetKind::Label:
        return static_cast<const Label&>(model).caption();
    case WidgetKind::CheckBox:
    case WidgetKind::OptionButton:
        return static_cast<const ToggleButton&>(model).caption();
    case WidgetKind::CommandButton:
        return static_cast<const CommandButton&>(model).caption();
    case WidgetKind::Frame:
        return static_cast<const Frame&>(model).caption();
    default:
        return {};
    }
}

bool isNamedByNeighbour(WidgetKind kind)
{
    return kind == WidgetKind::TextBox || kind == WidgetKind::ComboBox ||
           kind == WidgetKind::FileList;
}

bool canNameNeighbour(const Widget& model)
{
    return model.isVisible() &&
           (model.kind() == WidgetKind::Label || model.kind() == WidgetKind::CheckBox) &&
           !captionOf(model).trimmed().isEmpty();
}

// Twips a caption may reach into its widget and still count as beside it.
constexpr float Slack = 60;

// The widgets of one container that can name a neighbour, by their top edge,
// so that a box looks only at those near its own rows.
struct Namers {
    std::vector<const Widget*> byTop;
    float tallest = 0;
};

QString neighbourCaption(const Widget& box, const Namers& namers)
{
    const Widget* left = nullptr;
    const Widget* above = nullptr;
    float leftGap = std::numeric_limits<float>::max();
    float aboveGap = leftGap;
    const auto& byTop = namers.byTop;
    const float boxBottom = box.top() + box.height();
    const auto topBelow = [&](float top) {
        return std::lower_bound(byTop.begin(), byTop.end(), top,
                                [](const Widget* w, float t) { return w->top() < t; });
    };
    // Beside it: a namer whose rows meet the box's rows.
    const auto rowsEnd = topBelow(boxBottom);
    for (auto it = topBelow(box.top() - namers.tallest); it < rowsEnd; ++it) {
        const Widget& other = **it;
        const float right = other.left() + other.width();
        const bool sameRow = other.top() < boxBottom && other.top() + other.height() > box.top();
        if (&other != &box && sameRow && right <= box.left() + Slack &&
            box.left() - right < leftGap) {
            leftGap = box.left() - right;
            left = &other;
        }
    }
    if (left)
        return captionOf(*left).remove(QLatin1Char('&')).trimmed();
    // Above it: the nearest namer in its columns, walking up from the box.
    for (auto it = topBelow(box.top() + Slack); it != byTop.begin();) {
        const Widget& other = **--it;
        if (box.top() - (other.top() + namers.tallest) >= aboveGap)
            break; // nothing higher up can be nearer
        const float bottom = other.top() + other.height();
        const bool sameColumn =
            other.left() < box.left() + box.width() && other.left() + other.width() > box.left();
        if (&other != &box && sameColumn && bottom <= box.top() + Slack &&
            box.top() - bottom < aboveGap) {
            aboveGap = box.top() - bottom;
            above = &other;
        }
    }
    return above ? captionOf(*above).remove(QLatin1Char('&')).trimmed() : QString();
}

} // namespace

bool cutsCaption(const Widget& model, const QWidget& view)
{
    const QString caption = captionOf(model);
    const QFontMetrics metrics(view.font());
    const QString text = QString(caption).remove(QLatin1Char('&'));
    switch (model.kind()) {
    case WidgetKind::Label: {
        const QRect needed =
            metrics.boundingRect(QRect(0, 0, view.width(), 1 << 20), Qt::TextWordWrap, text);
        return needed.height() > view.height() || needed.width() > view.width();
    }
    case WidgetKind::CheckBox:
    case WidgetKind::OptionButton:
        return view.sizeHint().width() > view.width();
    default: {
        const int margins = 2 * view.style()->pixelMetric(QStyle::PM_ButtonMargin);
        return metrics.horizontalAdvance(text) + margins > view.width();
    }
    }
}

void describeWidgets(const std::vector<ShownWidget>& widgets)
{
    std::unordered_map<const Container*, Namers> namers;
    for (const ShownWidget& shown : widgets) {
        if (!canNameNeighbour(*shown.model))
            continue;
        Namers& group = namers[shown.model->container()];
        group.byTop.push_back(shown.model);
        group.tallest = std::max(group.tallest, shown.model->height());
    }
    for (auto& [container, group] : namers)
        std::stable_sort(group.byTop.begin(), group.byTop.end(),
                         [](const Widget* a, const Widget* b) { return a->top() < b->top(); });
    const Namers none;
    for (const ShownWidget& shown : widgets) {
        const Widget& model = *shown.model;
        if (isNamedByNeighbour(model.kind())) {
            const auto group = namers.find(model.container());
            shown.view->setAccessibleName(
                neighbourCaption(model, group == namers.end() ? none : group->second));
            continue;
        }
        const QString caption = captionOf(model);
        if (model.kind() == WidgetKind::Line || caption.isEmpty())
            continue;
        shown.view->setToolTip(cutsCaption(model, *shown.view)
                                   ? QString(caption).remove(QLatin1Char('&'))
                                   : QString());
    }
}

} // namespace qf
