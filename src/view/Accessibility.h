#pragma once

#include <QPointer>
#include <QRadioButton>

namespace qf {

// An option button on screen. The model keeps the option groups, so Qt's own
// auto-exclusivity stays off; Qt then reports the button as a check box, and
// this class brings an accessible interface that reports it as the radio
// button it is, read in the group of the frame around it.
class OptionButtonView : public QRadioButton {
    Q_OBJECT
public:
    explicit OptionButtonView(QWidget* parent);

    // The frame whose caption names the button's group; nullptr for none.
    // Qt 6.4 exports no member-of relation over AT-SPI, so the group reaches
    // a screen reader as a labelled-by relation to that frame, which is what
    // Orca reads as the name of a radio button's group.
    void setGroupFrame(QWidget* frame) { m_group = frame; }
    QWidget* groupFrame() const { return m_group; }

private:
    QPointer<QWidget> m_group;
};

} // namespace qf
