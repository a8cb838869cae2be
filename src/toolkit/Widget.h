#pragma once

#include "toolkit/Event.h"

#include <QString>

namespace qf {

class Container;

/// The properties a view can observe; every setter that changes one reports it
/// through Widget::changed.
enum class Property {
    Left,        ///< Widget::left()
    Top,         ///< Widget::top()
    Width,       ///< Widget::width()
    Height,      ///< Widget::height()
    Visible,     ///< Widget::isVisible()
    Caption,     ///< The caption of a label, button, check box or frame.
    ForeColor,   ///< Label::foreColor()
    Text,        ///< TextBox::text()
    Locked,      ///< TextBox::isLocked()
    Value,       ///< CheckBox::value() or OptionButton::value()
    Tag,         ///< ToggleButton::tag()
    Enabled,     ///< Whether the user can change the widget.
    List,        ///< The entries of a combo box or file list.
    ListIndex,   ///< The selected entry of a combo box or file list.
    X1,          ///< Line::x1()
    Y1,          ///< Line::y1()
    X2,          ///< Line::x2()
    Y2,          ///< Line::y2()
    BorderWidth, ///< Line::borderWidth()
    Path,        ///< FileList::path()
};

/// The class of a widget model, for code that handles each kind its own way.
enum class WidgetKind {
    Label,         ///< qf::Label
    TextBox,       ///< qf::TextBox
    CommandButton, ///< qf::CommandButton
    CheckBox,      ///< qf::CheckBox
    OptionButton,  ///< qf::OptionButton
    ComboBox,      ///< qf::ComboBox
    Frame,         ///< qf::Frame
    Line,          ///< qf::Line
    FileList,      ///< qf::FileList
};

/// A widget model: a plain record of the toolkit's properties that raises the
/// toolkit's events. Positions and sizes are twips from the container's inner
/// top-left corner. Setters that get a value the widget does not take throw
/// qf::InvalidValueError and leave the widget unchanged.
class Widget {
public:
    /// A visible widget at 0, 0 of size 0.
    /// @param name The name the control's code and the game data use (e.g. "txtPath").
    /// @param container What it lies in; may be null.
    Widget(QString name, Container* container);
    /// A copy of the properties; nobody listens to the copy.
    /// @param other The widget copied.
    Widget(const Widget& other);
    Widget& operator=(const Widget&) = delete;
    virtual ~Widget();

    /// @return The class of the widget.
    virtual WidgetKind kind() const = 0;

    /// @return The name given at construction (an array's elements share it).
    const QString& name() const { return m_name; }
    /// @return Element index in its widget array; -1 for a widget that is not in one.
    int index() const { return m_index; }
    /// @return What it lies in; may be null.
    Container* container() const { return m_container; }

    /// @return Distance from the container's left edge, in twips.
    float left() const { return m_left; }
    /// @return Distance from the container's top edge, in twips.
    float top() const { return m_top; }
    /// @return Width in twips.
    float width() const { return m_width; }
    /// @return Height in twips.
    float height() const { return m_height; }
    /// @return Whether the widget is shown (its container may still hide it).
    bool isVisible() const { return m_visible; }

    /// Moves the widget. @param twips The new left().
    /// @throws qf::InvalidValueError The value is not a finite number.
    void setLeft(float twips);
    /// Moves the widget. @param twips The new top().
    /// @throws qf::InvalidValueError The value is not a finite number.
    void setTop(float twips);
    /// Resizes the widget. @param twips The new width().
    /// @throws qf::InvalidValueError The value is negative or not finite.
    void setWidth(float twips);
    /// Resizes the widget. @param twips The new height().
    /// @throws qf::InvalidValueError The value is negative or not finite.
    void setHeight(float twips);
    /// Shows or hides the widget. @param visible True to show it.
    void setVisible(bool visible);
    /// Moves and resizes the widget in one step; nothing changes when a value is refused.
    /// @param left The new left(). @param top The new top().
    /// @param width The new width(). @param height The new height().
    /// @throws qf::InvalidValueError As the single setters.
    void setGeometry(float left, float top, float width, float height);

    /// Raised after a property changed, for views that mirror the model.
    Event<Property> changed;

protected:
    /// Sets a field and raises #changed when its value differs.
    /// @param field The member. @param value The new value.
    /// @param property What #changed reports.
    /// @return Whether the value changed.
    template <typename T> bool assign(T& field, const T& value, Property property)
    {
        if (field == value)
            return false;
        field = value;
        changed.raise(property);
        return true;
    }

private:
    template <typename T> friend class WidgetArray;

    QString m_name;
    int m_index = -1;
    Container* m_container;
    float m_left = 0;
    float m_top = 0;
    float m_width = 0;
    float m_height = 0;
    bool m_visible = true;
};

} // namespace qf
