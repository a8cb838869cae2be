#include "view/WidgetDescriptions.h"

#include "toolkit/CommandButton.h"
#include "toolkit/Frame.h"
#include "toolkit/Label.h"
#include "toolkit/Line.h"
#include "toolkit/ToggleButton.h"
#include "view/Accessibility.h"
#include "view/CaptionPairing.h"

#include <QFontMetrics>
#include <QLabel>
#include <QStyle>

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

QRectF placeOf(const Widget& model)
{
    if (model.kind() == WidgetKind::Line) {
        const auto& line = static_cast<const Line&>(model);
        return QRectF(QPointF(line.x1(), line.y1()), QPointF(line.x2(), line.y2())).normalized();
    }
    return QRectF(model.left(), model.top(), model.width(), model.height());
}

// The caption each shown widget is read by, from the pairing of each container.
std::unordered_map<const ShownWidget*, const ShownWidget*>
captionsOf(const std::vector<ShownWidget>& widgets)
{
    std::unordered_map<const Container*, std::vector<const ShownWidget*>> byContainer;
    for (const ShownWidget& shown : widgets)
        if (shown.model->isVisible())
            byContainer[shown.model->container()].push_back(&shown);
    std::unordered_map<const ShownWidget*, const ShownWidget*> captions;
    for (const auto& [container, members] : byContainer) {
        std::vector<PlacedWidget> placed;
        placed.reserve(members.size());
        for (const ShownWidget* shown : members)
            placed.push_back({placeOf(*shown->model), shown->model->kind(),
                              !captionOf(*shown->model).trimmed().isEmpty()});
        for (const CaptionPair& pair : pairCaptions(placed))
            captions[members[pair.widget]] = members[pair.caption];
    }
    return captions;
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
    const auto captions = captionsOf(widgets);
    const auto captionFor = [&](const ShownWidget& shown) -> const ShownWidget* {
        const auto found = captions.find(&shown);
        return found == captions.end() ? nullptr : found->second;
    };
    std::unordered_map<const QWidget*, QWidget*> buddies;
    for (const ShownWidget& shown : widgets) {
        const Widget& model = *shown.model;
        const ShownWidget* caption = captionFor(shown);
        if (isNamedByNeighbour(model.kind())) {
            // The buddy gives the labelled-by relation; the name is for
            // screen readers that read names only (Qt on Linux names a combo
            // by its value whatever it is told).
            shown.view->setAccessibleName(
                caption ? captionOf(*caption->model).remove(QLatin1Char('&')).trimmed()
                        : QString());
            if (caption)
                buddies[caption->view] = shown.view;
        } else if (auto* option = qobject_cast<OptionButtonView*>(shown.view))
            option->setGroupFrame(caption ? caption->view : nullptr);
    }
    for (const ShownWidget& shown : widgets) {
        const Widget& model = *shown.model;
        if (auto* label = qobject_cast<QLabel*>(shown.view)) {
            const auto buddy = buddies.find(label);
            QWidget* wanted = buddy == buddies.end() ? nullptr : buddy->second;
            if (label->buddy() != wanted)
                label->setBuddy(wanted);
        }
        const QString caption = captionOf(model);
        if (isNamedByNeighbour(model.kind()) || model.kind() == WidgetKind::Line ||
            caption.isEmpty())
            continue;
        shown.view->setToolTip(cutsCaption(model, *shown.view)
                                   ? QString(caption).remove(QLatin1Char('&'))
                                   : QString());
    }
}

} // namespace qf
