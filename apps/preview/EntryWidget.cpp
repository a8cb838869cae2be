#include "EntryWidget.h"

#include "context/ControlWidgets.h"
#include "gamedata/GameData.h"
#include "gamedata/GameDataKeys.h"
#include "gamedata/ValueSyntax.h"
#include "platform/Errors.h"
#include "platform/ProfileReader.h"

namespace qf::preview {

namespace {

QString read(const QString& path, const QString& key, const QString& defaultValue)
{
    return getPrivateProfileString(gamedata::Section, key, defaultValue, path).value;
}

template <typename T> const Widget* element(const WidgetArray<T>& array, int n)
{
    return array.exists(n) ? &array.at(n) : nullptr;
}

} // namespace

const Widget* entryWidget(const QString& gameDataPath, int entry, const ControlWidgets& widgets)
{
    int count = 0;
    try {
        count = syntax::toInt16(read(gameDataPath, gamedata::Count, QStringLiteral("0")));
    } catch (const Error&) {
        return nullptr;
    }
    if (entry < 1 || entry > count)
        return nullptr;

    const auto kindAt = [&](int n) {
        return gamedata::kindOf(
            read(gameDataPath, gamedata::entryKey(n, gamedata::Type), {}).toLower());
    };
    const gamedata::Kind kind = kindAt(entry);
    if (kind == gamedata::Kind::None)
        return nullptr;
    int n = 1;
    for (int earlier = 1; earlier < entry; ++earlier)
        n += kindAt(earlier) == kind ? 1 : 0;

    switch (kind) {
    case gamedata::Kind::CheckBox:
        return element(widgets.Check1, n);
    case gamedata::Kind::OptionButton:
        return element(widgets.Option1, n);
    case gamedata::Kind::Frame:
        return element(widgets.Frame1, n);
    case gamedata::Kind::Combo:
        return element(widgets.Combo1, n);
    case gamedata::Kind::Label:
        return element(widgets.Label1, n);
    case gamedata::Kind::Line:
        return element(widgets.Line1, n);
    case gamedata::Kind::Text:
        return element(widgets.Text1, n);
    case gamedata::Kind::None:
        break;
    }
    return nullptr;
}

} // namespace qf::preview
