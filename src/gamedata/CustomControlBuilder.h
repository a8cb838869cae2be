#pragma once

#include <QString>

namespace qf {

class ControlContext;

class Widget;

// Builds the dynamic widgets of section "Custom Controls" of the game data file.
// Every step that fails (a conversion, a rejected value, a failed lookup, an
// element that exists already) is skipped and the build goes on.
class CustomControlBuilder {
public:
    explicit CustomControlBuilder(ControlContext& context) : m_context(context) {}

    void build();

private:
    // The entry's value for a key suffix, lower-cased.
    QString read(int entry, const QString& suffix, const QString& defaultValue = QString());

    void buildCheckBox(int entry, int n);
    void buildOptionButton(int entry, int n);
    void buildFrame(int entry, int n);
    void buildCombo(int entry, int n);
    void buildLabel(int entry, int n);
    void buildLine(int entry, int n);
    void buildText(int entry, int n);

    void placeLocation(Widget& widget, int entry);
    void placeSize(Widget& widget, int entry);
    // The caption, or the language text a text number names.
    template <typename SetCaption> void applyCaption(int entry, SetCaption set);

    ControlContext& m_context;
};

} // namespace qf
