#pragma once

#include <QString>

#include <functional>

namespace qf {

class ControlContext;
class Widget;

// Builds the dynamic widgets of section "Custom Controls" of the game data file.
// Every step that fails (a conversion, a rejected value, a failed lookup, an
// element that exists already) is skipped and the build goes on; the context's
// skip observer hears of each.
class CustomControlBuilder {
public:
    explicit CustomControlBuilder(ControlContext& context) : m_context(context) {}

    void build();

private:
    // One number property that a part of a pair value sets.
    struct Part {
        const char* name;
        std::function<float()> current;
        std::function<void(float)> set;
    };

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
    // The part before the first "x"; a value without "x" has none, and the
    // property stays as it is rather than taking a number from an unrelated
    // earlier entry.
    void setFromFirst(int entry, const QString& suffix, const QString& value, const Part& part);
    // The part after the first "x", or the whole value without one.
    void setFromSecond(int entry, const QString& suffix, const QString& value, const Part& part);
    void setNumber(int entry, const QString& suffix, const QString& value, const QString& number,
                   const Part& part);
    // Sets a Boolean property; a value that is not one leaves `kept` in place.
    void setBoolean(int entry, const QString& suffix, const QString& value,
                    const std::function<void(bool)>& set, const QString& kept);
    // The caption, or the language text a text number names.
    template <typename SetCaption> void applyCaption(int entry, SetCaption set);
    void report(int entry, const QString& suffix, const QString& value,
                const QString& reason) const;

    ControlContext& m_context;
};

} // namespace qf
