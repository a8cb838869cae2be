#include "view/CaptionPairing.h"

#include <algorithm>
#include <limits>

namespace qf {

namespace {

// Twips a caption may reach into its widget and still count as beside or above it.
constexpr double Slack = 60;
// A caption further above its widget than about a line of text belongs to the
// page, not to the widget.
constexpr double MaxGapAbove = 240;

bool isField(WidgetKind kind)
{
    return kind == WidgetKind::TextBox || kind == WidgetKind::ComboBox ||
           kind == WidgetKind::FileList;
}

// Overlap with room inside; a line has no thickness but still crosses what it passes.
bool crosses(const QRectF& a, const QRectF& b)
{
    return a.left() < b.right() && a.right() > b.left() && a.top() < b.bottom() &&
           a.bottom() > b.top();
}

bool encloses(const QRectF& outer, const QRectF& inner)
{
    return outer.left() <= inner.left() + Slack && outer.right() >= inner.right() - Slack &&
           outer.top() <= inner.top() + Slack && outer.bottom() >= inner.bottom() - Slack;
}

// Indexes of some widgets by their top edge, so that a search looks only at
// those whose rows can reach a given band.
class ByTop {
public:
    ByTop(const std::vector<PlacedWidget>& widgets, auto&& take) : m_widgets(widgets)
    {
        for (std::size_t i = 0; i < widgets.size(); ++i)
            if (take(widgets[i])) {
                m_order.push_back(i);
                m_tallest = std::max(m_tallest, widgets[i].rect.height());
            }
        std::stable_sort(m_order.begin(), m_order.end(), [&](std::size_t a, std::size_t b) {
            return widgets[a].rect.top() < widgets[b].rect.top();
        });
    }

    // Every widget that may meet the band from top to bottom, top to bottom.
    template <typename F> void forEachNear(double top, double bottom, F&& visit) const
    {
        auto it = std::lower_bound(m_order.begin(), m_order.end(), top - m_tallest,
                                   [&](std::size_t i, double t) { return rectOf(i).top() < t; });
        for (; it != m_order.end() && rectOf(*it).top() < bottom; ++it)
            if (visit(*it))
                return;
    }

private:
    const QRectF& rectOf(std::size_t i) const { return m_widgets[i].rect; }

    const std::vector<PlacedWidget>& m_widgets;
    std::vector<std::size_t> m_order;
    double m_tallest = 0;
};

struct Candidate {
    bool above;
    double gap;
    std::size_t caption;
    std::size_t field;
};

} // namespace

std::vector<CaptionPair> pairCaptions(const std::vector<PlacedWidget>& widgets)
{
    // A check box's or button's caption is its own: only labels caption others.
    const ByTop captions(
        widgets, [](const PlacedWidget& w) { return w.captioned && w.kind == WidgetKind::Label; });
    const ByTop obstacles(widgets,
                          [](const PlacedWidget& w) { return w.kind != WidgetKind::Frame; });
    const ByTop frames(widgets, [](const PlacedWidget& w) { return w.kind == WidgetKind::Frame; });

    // Something lies between a caption and its widget: another widget, or the
    // edge of a frame that does not hold both.
    const auto separated = [&](std::size_t caption, std::size_t field, const QRectF& between) {
        if (between.width() <= 0 || between.height() <= 0)
            return false; // they touch
        bool found = false;
        obstacles.forEachNear(between.top(), between.bottom(), [&](std::size_t i) {
            found = i != caption && i != field && crosses(widgets[i].rect, between);
            return found;
        });
        frames.forEachNear(between.top(), between.bottom(), [&](std::size_t i) {
            const QRectF& frame = widgets[i].rect;
            found = found || (crosses(frame, between) && !(encloses(frame, widgets[caption].rect) &&
                                                           encloses(frame, widgets[field].rect)));
            return found;
        });
        return found;
    };

    std::vector<Candidate> candidates;
    std::vector<CaptionPair> pairs;
    for (std::size_t f = 0; f < widgets.size(); ++f) {
        const QRectF& box = widgets[f].rect;
        if (widgets[f].kind == WidgetKind::OptionButton) {
            std::size_t group = widgets.size();
            double smallest = std::numeric_limits<double>::max();
            frames.forEachNear(box.top(), box.top() + Slack + 1, [&](std::size_t i) {
                const QRectF& frame = widgets[i].rect;
                if (widgets[i].captioned && encloses(frame, box) &&
                    frame.width() * frame.height() < smallest) {
                    smallest = frame.width() * frame.height();
                    group = i;
                }
                return false;
            });
            if (group < widgets.size())
                pairs.push_back({group, f});
            continue;
        }
        if (!isField(widgets[f].kind))
            continue;
        // Beside it: the nearest label ending left of it whose row meets its row.
        std::size_t left = widgets.size();
        double leftGap = std::numeric_limits<double>::max();
        captions.forEachNear(box.top(), box.bottom(), [&](std::size_t i) {
            const QRectF& c = widgets[i].rect;
            const bool sameRow = c.top() < box.bottom() && c.bottom() > box.top();
            if (i != f && sameRow && c.right() <= box.left() + Slack &&
                box.left() - c.right() < leftGap) {
                leftGap = box.left() - c.right();
                left = i;
            }
            return false;
        });
        if (left < widgets.size()) {
            const QRectF& c = widgets[left].rect;
            const QRectF between(QPointF(c.right(), std::max(c.top(), box.top())),
                                 QPointF(box.left(), std::min(c.bottom(), box.bottom())));
            if (!separated(left, f, between))
                candidates.push_back({false, leftGap, left, f});
        }
        // Above it: the nearest label ending just above it over its columns.
        std::size_t above = widgets.size();
        double aboveGap = std::numeric_limits<double>::max();
        captions.forEachNear(box.top() - MaxGapAbove, box.top() + Slack, [&](std::size_t i) {
            const QRectF& c = widgets[i].rect;
            const double gap = box.top() - c.bottom();
            const bool sameColumns = c.left() < box.right() && c.right() > box.left();
            if (i != f && sameColumns && gap >= -Slack && gap <= MaxGapAbove && gap <= aboveGap) {
                aboveGap = gap;
                above = i;
            }
            return false;
        });
        if (above < widgets.size()) {
            const QRectF& c = widgets[above].rect;
            const QRectF between(QPointF(std::max(c.left(), box.left()), c.bottom()),
                                 QPointF(std::min(c.right(), box.right()), box.top()));
            if (!separated(above, f, between))
                candidates.push_back({true, aboveGap, above, f});
        }
    }

    std::stable_sort(candidates.begin(), candidates.end(), [](const auto& a, const auto& b) {
        return a.above != b.above ? b.above : a.gap < b.gap;
    });
    std::vector<bool> taken(widgets.size(), false);
    for (const Candidate& c : candidates)
        if (!taken[c.caption] && !taken[c.field]) {
            taken[c.caption] = taken[c.field] = true;
            pairs.push_back({c.caption, c.field});
        }
    return pairs;
}

} // namespace qf
