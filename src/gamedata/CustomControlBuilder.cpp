#include "gamedata/CustomControlBuilder.h"

#include "context/ControlContext.h"
#include "context/SkipOnError.h"
#include "gamedata/GameData.h"
#include "gamedata/GameDataKeys.h"
#include "gamedata/ValueSyntax.h"

namespace qf {

namespace {

// Loads element n, or keeps the one an earlier build left there.
template <typename T> T& loadOrReuse(WidgetArray<T>& array, int n)
{
    skipOnError([&] { array.load(n); });
    return array.at(n);
}

// The first number of a pair value. A value without "x" has none, and the
// property it would set stays as it is rather than taking a number from an
// unrelated earlier entry.
void setFromFirst(const QString& value, const std::function<void(float)>& set)
{
    skipOnError([&] {
        const syntax::PairValue pair = syntax::splitPair(value);
        if (pair.first)
            set(syntax::toSingle(*pair.first));
    });
}

void setFromSecond(const QString& value, const std::function<void(float)>& set)
{
    skipOnError([&] { set(syntax::toSingle(syntax::splitPair(value).second)); });
}

} // namespace

void CustomControlBuilder::build()
{
    int check = 1, option = 1, frame = 1, combo = 1, label = 1, line = 1, text = 1;
    gamedata::forEachEntry(m_context, [&](int entry) {
        switch (gamedata::kindOf(read(entry, gamedata::Type))) {
        case gamedata::Kind::CheckBox:
            return buildCheckBox(entry, check++);
        case gamedata::Kind::OptionButton:
            return buildOptionButton(entry, option++);
        case gamedata::Kind::Frame:
            return buildFrame(entry, frame++);
        case gamedata::Kind::Combo:
            return buildCombo(entry, combo++);
        case gamedata::Kind::Label:
            return buildLabel(entry, label++);
        case gamedata::Kind::Line:
            return buildLine(entry, line++);
        case gamedata::Kind::Text:
            return buildText(entry, text++);
        case gamedata::Kind::None:
            return;
        }
    });
}

QString CustomControlBuilder::read(int entry, const QString& suffix, const QString& defaultValue)
{
    return gamedata::customControlRead(m_context, entry, suffix, defaultValue).toLower();
}

void CustomControlBuilder::placeLocation(Widget& widget, int entry)
{
    const QString location = read(entry, gamedata::Location);
    setFromFirst(location, [&](float left) { widget.setLeft(left); });
    setFromSecond(location, [&](float top) { widget.setTop(top); });
}

// Sizes are written height first.
void CustomControlBuilder::placeSize(Widget& widget, int entry)
{
    const QString size = read(entry, gamedata::Size);
    setFromSecond(size, [&](float width) { widget.setWidth(width); });
    setFromFirst(size, [&](float height) { widget.setHeight(height); });
}

template <typename SetCaption> void CustomControlBuilder::applyCaption(int entry, SetCaption set)
{
    const QString caption = read(entry, gamedata::Caption);
    skipOnError(
        [&] { set(syntax::isTextNumber(caption) ? m_context.languageText(caption) : caption); });
}

void CustomControlBuilder::buildCheckBox(int entry, int n)
{
    CheckBox& box = loadOrReuse(m_context.widgets.Check1, n);
    placeLocation(box, entry);
    placeSize(box, entry);
    applyCaption(entry, [&](const QString& caption) { box.setCaption(caption); });
    box.setTag(read(entry, gamedata::VisualFunction));
    const QString visible = read(entry, gamedata::Visible, QStringLiteral("True"));
    skipOnError([&] { box.setVisible(syntax::toBoolean(visible)); });
}

void CustomControlBuilder::buildOptionButton(int entry, int n)
{
    OptionButton& button = loadOrReuse(m_context.widgets.Option1, n);
    placeLocation(button, entry);
    placeSize(button, entry);
    applyCaption(entry, [&](const QString& caption) { button.setCaption(caption); });
    button.setTag(read(entry, gamedata::VisualFunction));
    button.setVisible(true);
}

void CustomControlBuilder::buildFrame(int entry, int n)
{
    Frame& box = loadOrReuse(m_context.widgets.Frame1, n);
    placeLocation(box, entry);
    placeSize(box, entry);
    applyCaption(entry, [&](const QString& caption) { box.setCaption(caption); });
    box.setVisible(true);
}

void CustomControlBuilder::buildCombo(int entry, int n)
{
    ComboBox& combo = loadOrReuse(m_context.widgets.Combo1, n);
    placeLocation(combo, entry);
    // A combo's height follows its font; only the width is taken.
    const QString size = read(entry, gamedata::Size);
    setFromSecond(size, [&](float width) { combo.setWidth(width); });
    for (const syntax::ItemListStep& item : syntax::parseItemList(read(entry, gamedata::Caption))) {
        if (item.kind == syntax::ItemListStep::Kind::Append)
            combo.addItem(item.text);
        else
            skipOnError([&] { combo.setText(item.text); });
    }
    combo.setVisible(true);
}

void CustomControlBuilder::buildLabel(int entry, int n)
{
    Label& label = loadOrReuse(m_context.widgets.Label1, n);
    placeLocation(label, entry);
    placeSize(label, entry);
    applyCaption(entry, [&](const QString& caption) { label.setCaption(caption); });
    label.setVisible(true);
}

void CustomControlBuilder::buildLine(int entry, int n)
{
    Line& line = loadOrReuse(m_context.widgets.Line1, n);
    const QString x = read(entry, gamedata::XLocation);
    setFromFirst(x, [&](float x1) { line.setX1(x1); });
    setFromSecond(x, [&](float x2) { line.setX2(x2); });
    // Y-Location is written second end first.
    const QString y = read(entry, gamedata::YLocation);
    setFromSecond(y, [&](float y1) { line.setY1(y1); });
    setFromFirst(y, [&](float y2) { line.setY2(y2); });
    const QString width = read(entry, gamedata::Width, QStringLiteral("1"));
    skipOnError([&] { line.setBorderWidth(syntax::toInt16(width)); });
    line.setVisible(true);
}

void CustomControlBuilder::buildText(int entry, int n)
{
    TextBox& text = loadOrReuse(m_context.widgets.Text1, n);
    placeLocation(text, entry);
    placeSize(text, entry);
    applyCaption(entry, [&](const QString& caption) { text.setText(caption); });
    const QString locked = read(entry, gamedata::Locked, QStringLiteral("0"));
    skipOnError([&] { text.setLocked(syntax::toBoolean(locked)); });
    text.setVisible(true);
}

namespace gamedata {

void qInitCustomControls(ControlContext& context)
{
    CustomControlBuilder(context).build();
}

} // namespace gamedata

} // namespace qf
