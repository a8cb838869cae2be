#include "PageOverlay.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace qf::designer {

namespace {

constexpr int HandleSize = 7;
constexpr int LineGrip = 3; // pixels

// Which edges each handle moves, in the order handles() gives them.
struct Edges {
    bool left, top, right, bottom;
};
constexpr Edges HandleEdges[] = {{true, true, false, false}, {false, true, false, false},
                                 {false, true, true, false}, {false, false, true, false},
                                 {false, false, true, true}, {false, false, false, true},
                                 {true, false, false, true}, {true, false, false, false}};

} // namespace

PageOverlay::PageOverlay(QWidget* parent) : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(false);
}

void PageOverlay::setPixelsPerTwip(double pixelsPerTwip)
{
    m_pixelsPerTwip = pixelsPerTwip;
    update();
}

void PageOverlay::setEntries(std::vector<EntryBox> entries)
{
    m_entries = std::move(entries);
    // A selected line stays selected: it has no box but keys to edit.
    m_drag.reset();
    update();
}

void PageOverlay::setLockedAreas(std::vector<LockedArea> areas)
{
    m_locked = std::move(areas);
    update();
}

void PageOverlay::setGrid(int twips)
{
    m_grid = std::max(0, twips);
}

void PageOverlay::select(int entry)
{
    if (entry == m_selected)
        return;
    m_selected = entry;
    update();
    emit selectionChanged(entry);
}

const EntryBox* PageOverlay::box(int entry) const
{
    const auto it = std::find_if(m_entries.begin(), m_entries.end(),
                                 [entry](const EntryBox& box) { return box.entry == entry; });
    return it == m_entries.end() ? nullptr : &*it;
}

QRect PageOverlay::pixels(const QRect& twips) const
{
    const auto px = [this](int t) { return int(std::lround(t * m_pixelsPerTwip)); };
    return QRect(px(twips.x()), px(twips.y()), px(twips.width()), px(twips.height()));
}

std::vector<QRect> PageOverlay::handles() const
{
    const EntryBox* chosen = box(m_selected);
    // A line is only moved: its length is in its keys.
    if (!chosen || chosen->kind == u"line")
        return {};
    const QRect r = pixels(m_drag ? m_drag->current : chosen->twips);
    const int xs[] = {r.left(), r.center().x(), r.left() + r.width()};
    const int ys[] = {r.top(), r.center().y(), r.top() + r.height()};
    const std::pair<int, int> at[] = {{0, 0}, {1, 0}, {2, 0}, {2, 1},
                                      {2, 2}, {1, 2}, {0, 2}, {0, 1}};
    std::vector<QRect> result;
    for (const auto& [x, y] : at)
        result.emplace_back(xs[x] - HandleSize / 2, ys[y] - HandleSize / 2, HandleSize, HandleSize);
    return result;
}

// Frames lie below the other widgets, so any other entry under the cursor wins;
// among equals the later entry, which the builder places last.
int PageOverlay::entryAt(const QPoint& pixel) const
{
    int frame = 0;
    for (auto it = m_entries.rbegin(); it != m_entries.rend(); ++it) {
        // A line's box is as thin as the line: a few pixels either side grab it.
        const int grip = it->kind == u"line" ? LineGrip : 0;
        if (!pixels(it->twips).adjusted(-grip, -grip, grip, grip).contains(pixel))
            continue;
        if (it->kind != u"frame")
            return it->entry;
        if (!frame)
            frame = it->entry;
    }
    return frame;
}

int PageOverlay::snap(double twips) const
{
    return m_grid ? int(std::lround(twips / m_grid)) * m_grid : int(std::lround(twips));
}

QRect PageOverlay::dragged(const QPoint& to) const
{
    const double dx = (to.x() - m_drag->start.x()) / m_pixelsPerTwip;
    const double dy = (to.y() - m_drag->start.y()) / m_pixelsPerTwip;
    const QRect& from = m_drag->original;
    if (m_drag->handle < 0)
        return QRect(QPoint(snap(from.x() + dx), snap(from.y() + dy)), from.size());
    const Edges edges = HandleEdges[m_drag->handle];
    const int least = std::max(m_grid, int(std::lround(1 / m_pixelsPerTwip)));
    int left = from.x(), top = from.y();
    int right = from.x() + from.width(), bottom = from.y() + from.height();
    if (edges.left)
        left = std::min(snap(left + dx), right - least);
    if (edges.right)
        right = std::max(snap(right + dx), left + least);
    if (edges.top)
        top = std::min(snap(top + dy), bottom - least);
    if (edges.bottom)
        bottom = std::max(snap(bottom + dy), top + least);
    return QRect(left, top, right - left, bottom - top);
}

void PageOverlay::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    setFocus(Qt::MouseFocusReason);
    const QPoint at = event->position().toPoint();
    const std::vector<QRect> grips = handles();
    int handle = -1;
    for (size_t i = 0; i < grips.size(); ++i)
        if (grips[i].adjusted(-1, -1, 1, 1).contains(at))
            handle = int(i);
    if (handle < 0)
        select(entryAt(at));
    if (const EntryBox* chosen = box(m_selected))
        m_drag = Drag{handle, at, chosen->twips, chosen->twips};
}

void PageOverlay::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_drag)
        return;
    m_drag->current = dragged(event->position().toPoint());
    update();
}

void PageOverlay::mouseReleaseEvent(QMouseEvent* event)
{
    if (!m_drag || event->button() != Qt::LeftButton)
        return;
    const QRect result = dragged(event->position().toPoint());
    const Drag drag = *m_drag;
    m_drag.reset();
    update();
    if (result != drag.original)
        emit placed(m_selected, result);
}

void PageOverlay::keyPressEvent(QKeyEvent* event)
{
    const EntryBox* chosen = box(m_selected);
    const int pixel = int(std::lround(1 / m_pixelsPerTwip));
    const int step = event->modifiers() & Qt::ShiftModifier ? 8 * pixel : pixel;
    QPoint by;
    switch (event->key()) {
    case Qt::Key_Left:
        by = {-step, 0};
        break;
    case Qt::Key_Right:
        by = {step, 0};
        break;
    case Qt::Key_Up:
        by = {0, -step};
        break;
    case Qt::Key_Down:
        by = {0, step};
        break;
    default:
        QWidget::keyPressEvent(event);
        return;
    }
    if (chosen && !m_drag)
        emit placed(m_selected, chosen->twips.translated(by));
}

void PageOverlay::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    for (const LockedArea& area : m_locked) {
        const QRect r = pixels(area.twips);
        painter.fillRect(r, QColor(245, 245, 245, 215));
        painter.fillRect(r, QBrush(QColor(90, 90, 90, 110), Qt::BDiagPattern));
        painter.setPen(QPen(QColor(90, 90, 90), 1, Qt::DashLine));
        painter.drawRect(r.adjusted(0, 0, -1, -1));
        painter.setPen(QColor(40, 40, 40));
        painter.drawText(r.adjusted(4, 0, -4, 0), Qt::AlignCenter | Qt::TextWordWrap,
                         tr("%1 (locked)").arg(area.name));
    }
    painter.setPen(QPen(QColor(70, 110, 200, 140), 1, Qt::DotLine));
    for (const EntryBox& entry : m_entries)
        painter.drawRect(pixels(entry.twips).adjusted(0, 0, -1, -1));
    const EntryBox* chosen = box(m_selected);
    if (!chosen)
        return;
    painter.setPen(QPen(QColor(30, 90, 220), 2));
    painter.drawRect(pixels(m_drag ? m_drag->current : chosen->twips));
    painter.setPen(QColor(30, 90, 220));
    for (const QRect& grip : handles())
        painter.fillRect(grip, Qt::white), painter.drawRect(grip.adjusted(0, 0, -1, -1));
}

} // namespace qf::designer
