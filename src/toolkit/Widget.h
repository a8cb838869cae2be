#pragma once

#include "toolkit/Event.h"

#include <QString>

namespace qf {

class Container;

// The properties a view can observe; every setter that changes one reports it.
enum class Property {
    Left,
    Top,
    Width,
    Height,
    Visible,
    Caption,
    ForeColor,
    Text,
    Locked,
    Value,
    Tag,
    Enabled,
    List,
    ListIndex,
    X1,
    Y1,
    X2,
    Y2,
    BorderWidth,
    Path,
};

enum class WidgetKind {
    Label,
    TextBox,
    CommandButton,
    CheckBox,
    OptionButton,
    ComboBox,
    Frame,
    Line,
    FileList,
};

// A widget model: a plain record of the toolkit's properties that raises the
// toolkit's events. Positions and sizes are twips from the container's inner
// top-left corner. Setters that get a value the widget does not take throw
// qf::InvalidValueError and leave the widget unchanged.
class Widget {
public:
    Widget(QString name, Container* container);
    Widget(const Widget& other);
    Widget& operator=(const Widget&) = delete;
    virtual ~Widget();

    virtual WidgetKind kind() const = 0;

    const QString& name() const { return m_name; }
    // Element index in its widget array; -1 for a widget that is not in one.
    int index() const { return m_index; }
    Container* container() const { return m_container; }

    float left() const { return m_left; }
    float top() const { return m_top; }
    float width() const { return m_width; }
    float height() const { return m_height; }
    bool isVisible() const { return m_visible; }

    void setLeft(float twips);
    void setTop(float twips);
    void setWidth(float twips);
    void setHeight(float twips);
    void setVisible(bool visible);
    void setGeometry(float left, float top, float width, float height);

    // Raised after a property changed, for views that mirror the model.
    Event<Property> changed;

protected:
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
