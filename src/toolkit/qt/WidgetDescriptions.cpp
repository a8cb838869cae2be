#include "toolkit/qt/WidgetDescriptions.h"

#include "toolkit/CommandButton.h"
#include "toolkit/Frame.h"
#include "toolkit/Label.h"
#include "toolkit/ToggleButton.h"

#include <QFontMetrics>
#include <QStyle>

#include <limits>

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

QString neighbourCaption(const Widget& box, const std::vector<ShownWidget>& widgets)
{
    const Widget* left = nullptr;
    const Widget* above = nullptr;
    float leftGap = std::numeric_limits<float>::max();
    float aboveGap = leftGap;
    for (const ShownWidget& shown : widgets) {
        const Widget& other = *shown.model;
        if (&other == &box || other.container() != box.container() || !canNameNeighbour(other))
            continue;
        const float right = other.left() + other.width();
        const float bottom = other.top() + other.height();
        const bool sameRow = other.top() < box.top() + box.height() && bottom > box.top();
        const bool sameColumn = other.left() < box.left() + box.width() && right > box.left();
        if (sameRow && right <= box.left() + Slack && box.left() - right < leftGap) {
            leftGap = box.left() - right;
            left = &other;
        } else if (sameColumn && bottom <= box.top() + Slack && box.top() - bottom < aboveGap) {
            aboveGap = box.top() - bottom;
            above = &other;
        }
    }
    const Widget* caption = left ? left : above;
    return caption ? captionOf(*caption).remove(QLatin1Char('&')).trimmed() : QString();
}

bool cutsCaption(const Widget& model, const QWidget& view, const QString& caption)
{
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

} // namespace

void describeWidgets(const std::vector<ShownWidget>& widgets)
{
    for (const ShownWidget& shown : widgets) {
        const Widget& model = *shown.model;
        if (isNamedByNeighbour(model.kind())) {
            shown.view->setAccessibleName(neighbourCaption(model, widgets));
            continue;
        }
        const QString caption = captionOf(model);
        if (model.kind() == WidgetKind::Line || caption.isEmpty())
            continue;
        shown.view->setToolTip(cutsCaption(model, *shown.view, caption)
                                   ? QString(caption).remove(QLatin1Char('&'))
                                   : QString());
    }
}

} // namespace qf
