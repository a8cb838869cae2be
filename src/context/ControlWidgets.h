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

/// The control's fixed widgets and the templates of its widget arrays, as the
/// layout declares them. Names are those the control's code uses. Setting a
/// widget's value runs the control's handler as the user's input would.
struct ControlWidgets {
    /// The layout: positions, sizes and look of every widget.
    ControlWidgets();
    ControlWidgets(const ControlWidgets&) = delete;
    ControlWidgets& operator=(const ControlWidgets&) = delete;

    static constexpr float ClientWidth = 6735;  ///< Width of the client area, in twips.
    static constexpr float ClientHeight = 4215; ///< Height of the client area, in twips.

    Container client{QStringLiteral("qForms")}; ///< The client area.

    Frame frame{QStringLiteral("frame"), &client};    ///< Holds the fixed widgets.
    Label lblPath{QStringLiteral("lblPath"), &frame}; ///< Caption of the folder box.
    /// The game's folder or program; each change runs the game check.
    TextBox txtPath{QStringLiteral("txtPath"), &frame};
    CommandButton cmdBrowse{QStringLiteral("cmdBrowse"), &frame};  ///< Opens the file dialog.
    CheckBox chkModCheck{QStringLiteral("chkModCheck"), &frame};   ///< "Always load the mod".
    ComboBox comModSelect{QStringLiteral("comModSelect"), &frame}; ///< The mod list.
    Label lblModName{QStringLiteral("lblModName"), &frame}; ///< The chosen mod's description.
    Label lblCLP{QStringLiteral("lblCLP"), &frame};         ///< Caption of the parameters box.
    TextBox txtCLP{QStringLiteral("txtCLP"), &frame};       ///< Extra command-line parameters.
    Label lblSelectConfig{QStringLiteral("lblSelectConfig"),
                          &frame}; ///< Caption of the config list.
    /// The game's config files.
    FileList lstConfig{QStringLiteral("lstConfig"), &frame, QStringLiteral("*.cfg")};
    CommandButton cmdEdit{QStringLiteral("cmdEdit"), &frame}; ///< Opens the chosen config file.
    Frame frameStatus{QStringLiteral("frameStatus"), &frame}; ///< Holds the status line.
    Label lblStatus; ///< The status line; each change raises qForms::StatusChange.

    Frame Temp{QStringLiteral("Temp"), &client}; ///< Hidden: the lists the game check reads.
    /// The pak files of the game's base folder.
    FileList lstFiles{QStringLiteral("lstFiles"), &Temp, QStringLiteral("*.pk3")};
    /// The game list files.
    FileList lstAVA{QStringLiteral("lstAVA"), &Temp, QStringLiteral("*.AVA")};

    WidgetArray<CheckBox> Check1;      ///< The game data's check boxes.
    WidgetArray<OptionButton> Option1; ///< The game data's option buttons.
    WidgetArray<Frame> Frame1;         ///< The game data's frames.
    WidgetArray<ComboBox> Combo1;      ///< The game data's combo boxes.
    WidgetArray<Label> Label1;         ///< The game data's labels.
    WidgetArray<Line> Line1;           ///< The game data's lines.
    WidgetArray<TextBox> Text1;        ///< The game data's text boxes.

    /// @return What the status line shows before the first game check.
    static QString initialStatusNotice();
};

} // namespace qf
