#include "launch/LaunchRoutes.h"

#include <QSet>

namespace qf::launch {

namespace {

struct ParseError {
    QString message;
};

bool isBlank(QChar c)
{
    return c == u' ' || c == u'\t';
}

// Splits a template into words: blanks separate words, quotes (" or ') group
// blanks into a word and are removed, "{name}" is a placeholder, "{{" and "}}"
// stand for braces.
QList<Word> parseWords(QStringView text, bool oneWord)
{
    QList<Word> words;
    Word word;
    QString literal;
    bool inWord = false;
    QChar quote;
    const auto flushLiteral = [&] {
        if (!literal.isEmpty())
            word.append({literal, false});
        literal.clear();
    };
    const auto endWord = [&] {
        flushLiteral();
        if (inWord)
            words.append(word);
        word.clear();
        inWord = false;
    };
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (!oneWord && quote.isNull() && isBlank(c)) {
            endWord();
            continue;
        }
        inWord = true;
        if (!oneWord && (c == u'"' || c == u'\'') && (quote.isNull() || quote == c)) {
            quote = quote.isNull() ? c : QChar();
            continue;
        }
        if (c == u'{' || c == u'}') {
            if (i + 1 < text.size() && text.at(i + 1) == c) {
                literal += c;
                ++i;
                continue;
            }
            if (c == u'}')
                throw ParseError{QStringLiteral("a \"}\" closes no placeholder; write \"}}\" for "
                                                "a brace")};
            const qsizetype close = text.indexOf(u'}', i + 1);
            if (close < 0)
                throw ParseError{
                    QStringLiteral("a \"{\" is never closed; write \"{{\" for a brace")};
            const QString name = text.sliced(i + 1, close - i - 1).trimmed().toString();
            if (name.isEmpty())
                throw ParseError{QStringLiteral("\"{}\" names no value; write {value}")};
            flushLiteral();
            word.append({name, true});
            i = close;
            continue;
        }
        literal += c;
    }
    if (!quote.isNull())
        throw ParseError{QStringLiteral("the quote %1 is never closed").arg(quote)};
    endWord();
    for (const Word& each : std::as_const(words))
        for (const Piece& piece : each)
            if (piece.placeholder && piece.text.compare(u"words", Qt::CaseInsensitive) == 0 &&
                (oneWord || each.size() != 1))
                throw ParseError{QStringLiteral(
                    "{words} stands for several words and must be a word of its own")};
    return words;
}

Action parseAction(QStringView text)
{
    const auto prefixed = [&](QLatin1StringView prefix) {
        return text.startsWith(prefix, Qt::CaseInsensitive);
    };
    Action action;
    if (prefixed(QLatin1StringView("env:"))) {
        action.kind = ActionKind::Environment;
        const QStringView rest = text.sliced(4);
        const qsizetype equals = rest.indexOf(u'=');
        if (equals < 0)
            throw ParseError{QStringLiteral("\"%1\" sets nothing; write env:NAME=value").arg(text)};
        action.name = rest.first(equals).trimmed().toString();
        if (const QString problem = environmentNameProblem(action.name); !problem.isEmpty())
            throw ParseError{problem};
        const QString value =
            IniDocument::stripQuotes(rest.sliced(equals + 1).trimmed().toString());
        action.words = parseWords(value, true);
        if (action.words.isEmpty())
            action.words.append(Word{});
        return action;
    }
    if (prefixed(QLatin1StringView("wrap:")))
        action.kind = ActionKind::Wrapper;
    else if (prefixed(QLatin1StringView("wine:")))
        action.kind = ActionKind::Wine;
    const QStringView words = action.kind == ActionKind::Arguments ? text : text.sliced(5);
    action.words = parseWords(words, false);
    return action;
}

// "Key[state]" -> key and state; a name without brackets routes every value.
std::pair<QString, std::optional<QString>> splitName(QStringView name)
{
    const qsizetype open = name.indexOf(u'[');
    if (open < 0) {
        if (name.contains(u']'))
            throw ParseError{QStringLiteral("a \"]\" without \"[\"; write Key[state]")};
        if (name.trimmed().isEmpty())
            throw ParseError{QStringLiteral("no key before \"=\"; write Key=...")};
        return {name.toString(), std::nullopt};
    }
    if (!name.endsWith(u']'))
        throw ParseError{QStringLiteral("the state in brackets must end the name: Key[state]")};
    const QString key = name.first(open).trimmed().toString();
    if (key.isEmpty())
        throw ParseError{QStringLiteral("no key before \"[\"; write Key[state]")};
    return {key, name.sliced(open + 1, name.size() - open - 2).trimmed().toString()};
}

} // namespace

QString environmentNameProblem(const QString& name)
{
    if (name.isEmpty())
        return QStringLiteral("an environment variable needs a name: env:NAME=value");
    if (name.contains(u'='))
        return QStringLiteral("the environment name \"%1\" holds \"=\"").arg(name);
    if (name.contains(QChar::Null))
        return QStringLiteral("the environment name holds a NUL character");
    return {};
}

LaunchRoutes parseLaunchRoutes(const IniDocument& document)
{
    LaunchRoutes result;
    bool seen = false;
    QSet<QString> routed; // "key\nstate" of the lines already used
    for (const IniDocument::SectionLines& section : document.lines()) {
        if (section.name.trimmed().compare(RoutesSection, Qt::CaseInsensitive) != 0)
            continue;
        if (seen) {
            result.problems.append(
                {section.namePosition.value_or(IniDocument::Position{}), QStringLiteral("[Launch]"),
                 QStringLiteral("[Launch] appears again; only the first one is read")});
            continue;
        }
        seen = true;
        for (const IniDocument::KeyLine& line : section.keys) {
            const QString written = line.name.toString();
            if (written.startsWith(u';') || written.startsWith(u'#'))
                continue; // a comment
            const auto problem = [&](const QString& message, bool atValue) {
                result.problems.append(
                    {atValue && line.valuePosition ? *line.valuePosition : line.namePosition,
                     written, message});
            };
            if (!line.value) {
                problem(QStringLiteral("no \"=\": write %1=what the game receives").arg(written),
                        false);
                continue;
            }
            Route route;
            route.position = line.namePosition;
            try {
                std::tie(route.key, route.state) = splitName(line.name);
            } catch (const ParseError& error) {
                problem(error.message, false);
                continue;
            }
            const QString identity =
                route.key.toCaseFolded() + u'\n' +
                (route.state ? QStringLiteral("[") + route.state->toCaseFolded() : QString());
            if (routed.contains(identity)) {
                problem(
                    QStringLiteral("%1 is routed again; only its first line is used").arg(written),
                    false);
                continue;
            }
            try {
                for (QStringView part : QStringView(*line.value).split(u";;")) {
                    part = part.trimmed();
                    if (!part.isEmpty())
                        route.actions.append(parseAction(part));
                }
            } catch (const ParseError& error) {
                problem(error.message, true);
                continue;
            }
            routed.insert(identity);
            result.routes.append(route);
        }
    }
    return result;
}

} // namespace qf::launch
