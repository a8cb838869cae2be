#pragma once

#include "toolkit/CheckBox.h"
#include "toolkit/ComboBox.h"
#include "toolkit/CommandButton.h"
#include "toolkit/Container.h"
#include "toolkit/FileList.h"
#include "toolkit/Frame.h"
#include "toolkit/Label.h"
#include "toolkit/Line.h"
#include "toolkit/OptionButton.h"
#include "toolkit/TextBox.h"
#include "toolkit/WidgetArray.h"

namespace qf {

// The control's fixed widgets and the templates of its widget arrays, as the
// layout declares them. Names are those the control's code uses.
struct ControlWidgets {
    ControlWidgets();
    ControlWidgets(const ControlWidgets&) = delete;
    ControlWidgets& operator=(const ControlWidgets&) = delete;

    static constexpr float ClientWidth = 6735;
    static constexpr float ClientHeight = 4215;

    Container client{QStringLiteral("qForms")};

    Frame frame{QStringLiteral("frame"), &client};
    Label lblPath{QStringLiteral("lblPath"), &frame};
    TextBox txtPath{QStringLiteral("txtPath"), &frame};
    CommandButton cmdBrowse{QStringLiteral("cmdBrowse"), &frame};
    CheckBox chkModCheck{QStringLiteral("chkModCheck"), &frame};
    ComboBox comModSelect{QStringLiteral("comModSelect"), &frame};
    Label lblModName{QStringLiteral("lblModName"), &frame};
    Label lblCLP{QStringLiteral("lblCLP"), &frame};
    TextBox txtCLP{QStringLiteral("txtCLP"), &frame};
    Label lblSelectConfig{QStringLiteral("lblSelectConfig"), &frame};
    FileList lstConfig{QStringLiteral("lstConfig"), &frame, QStringLiteral("*.cfg")};
    CommandButton cmdEdit{QStringLiteral("cmdEdit"), &frame};
    Frame frameStatus{QStringLiteral("frameStatus"), &frame};
    Label lblStatus;

    Frame Temp{QStringLiteral("Temp"), &client};
    FileList lstFiles{QStringLiteral("lstFiles"), &Temp, QStringLiteral("*.pk3")};
    FileList lstAVA{QStringLiteral("lstAVA"), &Temp, QStringLiteral("*.AVA")};

    WidgetArray<CheckBox> Check1;
    WidgetArray<OptionButton> Option1;
    WidgetArray<Frame> Frame1;
    WidgetArray<ComboBox> Combo1;
    WidgetArray<Label> Label1;
    WidgetArray<Line> Line1;
    WidgetArray<TextBox> Text1;

    // What the status line shows before the first game check.
    static QString initialStatusNotice();
};

} // namespace qf
