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

} // namespace

void CustomControlBuilder::build()
{
    int check = 1, option = 1, frame = 1, combo = 1, label = 1, line = 1, text = 1;
    SkipObserver* observer = m_context.skipObserver();
    gamedata::forEachEntry(m_context, [&](int entry) {
        const QString type = read(entry, gamedata::Type);
        const auto built = [&](int& counter) {
            const int n = counter++;
            if (observer)
                observer->entryBuilt(entry, type, n);
            return n;
        };
        switch (gamedata::kindOf(type)) {
        case gamedata::Kind::CheckBox:
            return buildCheckBox(entry, built(check));
        case gamedata::Kind::OptionButton:
            return buildOptionButton(entry, built(option));
        case gamedata::Kind::Frame:
            return buildFrame(entry, built(frame));
        case gamedata::Kind::Combo:
            return buildCombo(entry, built(combo));
        case gamedata::Kind::Label:
            return buildLabel(entry, built(label));
        case gamedata::Kind::Line:
            return buildLine(entry, built(line));
        case gamedata::Kind::Text:
            return buildText(entry, built(text));
        case gamedata::Kind::None:
            return report(entry, gamedata::Type, type,
                          QStringLiteral("not a kind of widget: the entry builds nothing"));
        }
    });
}

QString CustomControlBuilder::read(int entry, const QString& suffix, const QString& defaultValue)
{
    return gamedata::customControlRead(m_context, entry, suffix, defaultValue).toLower();
}

void CustomControlBuilder::report(int entry, const QString& suffix, const QString& value,
                                  const QString& reason) const
{
    m_context.reportSkip({entry, suffix, value}, reason);
}

void CustomControlBuilder::setNumber(int entry, const QString& suffix, const QString& value,
                                     const QString& number, const Part& part)
{
    try {
        part.set(syntax::toSingle(number));
    } catch (const Error& error) {
        if (m_context.skipObserver())
            report(entry, suffix, value,
                   QStringLiteral("%1: the %2 stays %3")
                       .arg(error.message(), QLatin1String(part.name))
                       .arg(double(part.current())));
    }
}

void CustomControlBuilder::setFromFirst(int entry, const QString& suffix, const QString& value,
                                        const Part& part)
{
    const syntax::PairValue pair = syntax::splitPair(value);
    if (pair.first)
        setNumber(entry, suffix, value, *pair.first, part);
    else if (m_context.skipObserver())
        report(entry, suffix, value,
               QStringLiteral("no \"x\" in the value: the %1 stays %2")
                   .arg(QLatin1String(part.name))
                   .arg(double(part.current())));
}

void CustomControlBuilder::setFromSecond(int entry, const QString& suffix, const QString& value,
                                         const Part& part)
{
    setNumber(entry, suffix, value, syntax::splitPair(value).second, part);
}

void CustomControlBuilder::setBoolean(int entry, const QString& suffix, const QString& value,
                                      const std::function<void(bool)>& set, const QString& kept)
{
    try {
        set(syntax::toBoolean(value));
    } catch (const Error&) {
        report(entry, suffix, value,
               QStringLiteral("\"%1\" is not True, False or a number: the widget stays %2")
                   .arg(value, kept));
    }
}

void CustomControlBuilder::placeLocation(Widget& widget, int entry)
{
    const QString location = read(entry, gamedata::Location);
    setFromFirst(
        entry, gamedata::Location, location,
        {"left", [&] { return widget.left(); }, [&](float left) { widget.setLeft(left); }});
    setFromSecond(entry, gamedata::Location, location,
                  {"top", [&] { return widget.top(); }, [&](float top) { widget.setTop(top); }});
}

// Sizes are written height first.
void CustomControlBuilder::placeSize(Widget& widget, int entry)
{
    const QString size = read(entry, gamedata::Size);
    setFromSecond(
        entry, gamedata::Size, size,
        {"width", [&] { return widget.width(); }, [&](float width) { widget.setWidth(width); }});
    setFromFirst(entry, gamedata::Size, size,
                 {"height", [&] { return widget.height(); },
                  [&](float height) { widget.setHeight(height); }});
}

template <typename SetCaption> void CustomControlBuilder::applyCaption(int entry, SetCaption set)
{
    const QString caption = read(entry, gamedata::Caption);
    skipOnError(m_context, {entry, gamedata::Caption, caption}, [&] {
        set(syntax::isTextNumber(caption) ? m_context.languageText(caption) : caption);
    });
}

void CustomControlBuilder::buildCheckBox(int entry, int n)
{
    CheckBox& box = loadOrReuse(m_context.widgets.Check1, n);
    placeLocation(box, entry);
    placeSize(box, entry);
    applyCaption(entry, [&](const QString& caption) { box.setCaption(caption); });
    box.setTag(read(entry, gamedata::VisualFunction));
    const QString visible = read(entry, gamedata::Visible, QStringLiteral("True"));
    setBoolean(
        entry, gamedata::Visible, visible, [&](bool on) { box.setVisible(on); },
        box.isVisible() ? QStringLiteral("visible") : QStringLiteral("hidden"));
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
    setFromSecond(
        entry, gamedata::Size, size,
        {"width", [&] { return combo.width(); }, [&](float width) { combo.setWidth(width); }});
    const QString items = read(entry, gamedata::Caption);
    for (const syntax::ItemListStep& item : syntax::parseItemList(items)) {
        if (item.kind == syntax::ItemListStep::Kind::Append)
            combo.addItem(item.text);
        else
            skipOnError(m_context, {entry, gamedata::Caption, items},
                        [&] { combo.setText(item.text); });
    }
    const QString ignored = syntax::itemListTail(items);
    if (!ignored.isEmpty())
        report(entry, gamedata::Caption, items,
               QStringLiteral("\"%1\" after the last \";;\" is not an entry").arg(ignored));
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
    setFromFirst(entry, gamedata::XLocation, x,
                 {"x1", [&] { return line.x1(); }, [&](float x1) { line.setX1(x1); }});
    setFromSecond(entry, gamedata::XLocation, x,
                  {"x2", [&] { return line.x2(); }, [&](float x2) { line.setX2(x2); }});
    // Y-Location is written second end first.
    const QString y = read(entry, gamedata::YLocation);
    setFromSecond(entry, gamedata::YLocation, y,
                  {"y1", [&] { return line.y1(); }, [&](float y1) { line.setY1(y1); }});
    setFromFirst(entry, gamedata::YLocation, y,
                 {"y2", [&] { return line.y2(); }, [&](float y2) { line.setY2(y2); }});
    const QString width = read(entry, gamedata::Width, QStringLiteral("1"));
    skipOnError(m_context, {entry, gamedata::Width, width},
                [&] { line.setBorderWidth(syntax::toInt16(width)); });
    line.setVisible(true);
}

void CustomControlBuilder::buildText(int entry, int n)
{
    TextBox& text = loadOrReuse(m_context.widgets.Text1, n);
    placeLocation(text, entry);
    placeSize(text, entry);
    applyCaption(entry, [&](const QString& caption) { text.setText(caption); });
    const QString locked = read(entry, gamedata::Locked, QStringLiteral("0"));
    setBoolean(
        entry, gamedata::Locked, locked, [&](bool on) { text.setLocked(on); },
        text.isLocked() ? QStringLiteral("locked") : QStringLiteral("editable"));
    text.setVisible(true);
}

namespace gamedata {

void qInitCustomControls(ControlContext& context)
{
    CustomControlBuilder(context).build();
}

} // namespace gamedata

} // namespace qf
