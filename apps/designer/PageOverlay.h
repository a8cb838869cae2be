#pragma once

#include <QRect>
#include <QWidget>

#include <optional>
#include <vector>

namespace qf::designer {

// An entry of the page where the author can grab it, in twips.
struct EntryBox {
    int entry = 0;
    QString kind;
    QRect twips;
};

// A fixed widget group of the control: drawn hatched, never picked.
struct LockedArea {
    QString name;
    QRect twips;
};

// The transparent layer over the page's view: draws the entries' outlines, the
// selection with its handles and the locked areas, and turns mouse and arrow
// key gestures into one new rectangle per gesture.
class PageOverlay : public QWidget {
    Q_OBJECT
public:
    explicit PageOverlay(QWidget* parent = nullptr);

    void setPixelsPerTwip(double pixelsPerTwip);
    double pixelsPerTwip() const { return m_pixelsPerTwip; }
    void setEntries(std::vector<EntryBox> entries);
    void setLockedAreas(std::vector<LockedArea> areas);
    // 0: no snapping.
    void setGrid(int twips);
    int selected() const { return m_selected; }
    void select(int entry);
    // The handle rectangles of the selection in overlay pixels, clockwise from
    // the top left corner.
    std::vector<QRect> handles() const;
    QRect pixels(const QRect& twips) const;

signals:
    void selectionChanged(int entry);
    // A gesture ended: the entry is to have this rectangle in twips.
    void placed(int entry, const QRect& twips);

protected:
    void paintEvent(QPaintEvent*) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    const EntryBox* box(int entry) const;
    int entryAt(const QPoint& pixel) const;
    int snap(double twips) const;
    QRect dragged(const QPoint& to) const;

    std::vector<EntryBox> m_entries;
    std::vector<LockedArea> m_locked;
    double m_pixelsPerTwip = 1.0 / 15;
    int m_grid = 0;
    int m_selected = 0;
    // The gesture under way: the handle (-1 for a move), where it started.
    struct Drag {
        int handle = -1;
        QPoint start;
        QRect original;
        QRect current;
    };
    std::optional<Drag> m_drag;
};

} // namespace qf::designer
