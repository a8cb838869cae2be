#include "context/ControlWidgets.h"

namespace qf {

namespace {

constexpr quint32 Black = 0x000000;

template <typename T>
std::unique_ptr<T> hiddenTemplate(const QString& name, Container* container, float left, float top,
                                  float width, float height)
{
    auto widget = std::make_unique<T>(name, container);
    widget->setGeometry(left, top, width, height);
    widget->setVisible(false);
    return widget;
}

std::unique_ptr<Line> lineTemplate(Container* container)
{
    auto line = std::make_unique<Line>(QStringLiteral("Line1"), container);
    line->setX1(4200);
    line->setY1(2520);
    line->setX2(5280);
    line->setY2(2520);
    line->setBorderWidth(1);
    line->setVisible(false);
    return line;
}

} // namespace

ControlWidgets::ControlWidgets()
    : lblStatus(QStringLiteral("lblStatus"), &frameStatus, LabelLook{Black, true}),
      Check1(hiddenTemplate<CheckBox>(QStringLiteral("Check1"), &frame, 120, 1800, 1215, 495)),
      Option1(
          hiddenTemplate<OptionButton>(QStringLiteral("Option1"), &frame, 2760, 1680, 1215, 495)),
      Frame1(hiddenTemplate<Frame>(QStringLiteral("Frame1"), &frame, 1440, 1680, 1095, 615)),
      Combo1(hiddenTemplate<ComboBox>(QStringLiteral("Combo1"), &frame, 4080, 1800, 1215, 315)),
      Label1(hiddenTemplate<Label>(QStringLiteral("Label1"), &frame, 5400, 1800, 1215, 375)),
      Line1(lineTemplate(&frame)),
      Text1(hiddenTemplate<TextBox>(QStringLiteral("Text1"), &frame, 2760, 2280, 1215, 285))
{
    frame.setGeometry(0, 0, ClientWidth, ClientHeight);

    lblPath.setGeometry(120, 240, 5175, 255);
    lblPath.setCaption(QStringLiteral("053"));
    txtPath.setGeometry(120, 480, 5175, 285);
    cmdBrowse.setGeometry(5400, 360, 1215, 375);
    cmdBrowse.setCaption(QStringLiteral("038"));

    chkModCheck.setGeometry(120, 840, 2535, 735);
    chkModCheck.setCaption(QStringLiteral("055"));
    chkModCheck.setVisible(false);
    comModSelect.setGeometry(2760, 960, 3855, 315);
    comModSelect.setVisible(false);
    lblModName.setGeometry(2760, 1320, 3855, 255);
    lblModName.setVisible(false);

    lblCLP.setGeometry(120, 2520, 6495, 255);
    lblCLP.setCaption(QStringLiteral("026"));
    lblCLP.setVisible(false);
    txtCLP.setGeometry(120, 2760, 6495, 285);
    txtCLP.setVisible(false);

    lblSelectConfig.setGeometry(120, 3120, 2175, 495);
    lblSelectConfig.setCaption(QStringLiteral("050"));
    lblSelectConfig.setVisible(false);
    lstConfig.setGeometry(2400, 3120, 2895, 480);
    lstConfig.setVisible(false);
    cmdEdit.setGeometry(5400, 3120, 1215, 375);
    cmdEdit.setCaption(QStringLiteral("049"));
    cmdEdit.setVisible(false);

    frameStatus.setGeometry(120, 3600, 6495, 495);
    frameStatus.setCaption(QStringLiteral("054"));
    lblStatus.setGeometry(120, 240, 6255, 210);
    lblStatus.setForeColor(0x00FF00);
    lblStatus.setCaption(initialStatusNotice());

    Temp.setGeometry(6480, 3960, 1215, 1335);
    Temp.setCaption(QStringLiteral("Temp Frame"));
    Temp.setVisible(false);
    lstFiles.setGeometry(240, 960, 855, 285);
    lstAVA.setGeometry(240, 240, 855, 285);
}

QString ControlWidgets::initialStatusNotice()
{
    return QStringLiteral("No game checked yet.");
}

} // namespace qf
