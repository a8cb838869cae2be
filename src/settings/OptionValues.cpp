#include "context/ControlContext.h"
#include "context/SkipOnError.h"
#include "gamedata/GameData.h"
#include "gamedata/GameDataKeys.h"
#include "gamedata/ValueSyntax.h"
#include "settings/Settings.h"

#include <optional>

namespace qf::settings {

void forEachOptionValue(
    ControlContext& context,
    const std::function<void(int entry, const QString& controlKey, const QString& value)>& visit)
{
    namespace gd = gamedata;
    auto& w = context.widgets;
    gd::forEachEntry(context, [&](int entry) {
        // All three reads come before any widget is touched.
        const QString index =
            gd::customControlRead(context, entry, gd::Index, QStringLiteral("1")).toLower();
        const QString controlKey = gd::customControlRead(context, entry, gd::ControlKey, QString());
        const QString type = gd::customControlRead(context, entry, gd::Type, QString()).toLower();
        std::optional<QString> value;
        skipOnError(context, {entry, gd::Index, index}, [&] {
            switch (gd::kindOf(type)) {
            case gd::Kind::CheckBox:
                value = QString::number(w.Check1.at(syntax::toInt16(index)).value());
                break;
            case gd::Kind::OptionButton:
                value = w.Option1.at(syntax::toInt16(index)).value() ? QStringLiteral("True")
                                                                     : QStringLiteral("False");
                break;
            case gd::Kind::Combo:
                value = w.Combo1.at(syntax::toInt16(index)).text();
                break;
            case gd::Kind::Text:
                value = w.Text1.at(syntax::toInt16(index)).text();
                break;
            default:
                break;
            }
        });
        if (value)
            visit(entry, controlKey, *value);
    });
}

QMap<QString, QString> optionValues(ControlContext& context)
{
    QMap<QString, QString> values;
    forEachOptionValue(context, [&](int, const QString& controlKey, const QString& value) {
        // The store refuses an empty key, so such a value is never stored.
        if (!controlKey.isEmpty())
            values.insert(controlKey, value);
    });
    return values;
}

} // namespace qf::settings
