#include "Command.h"

#include "EntryEdits.h"
#include "GameDataDocument.h"

#include "platform/FileReplacement.h"

#include <QFile>

#include <cstring>
#include <map>

using namespace Qt::Literals::StringLiterals;

namespace qf::cli {

namespace {

int entryNumber(const QString& text)
{
    bool ok = false;
    const int n = text.toInt(&ok);
    if (!ok || n < 1)
        throw UsageError(QStringLiteral("\"%1\" is not an entry number").arg(text));
    return n;
}

int run(const QStringList& args, Io& io)
{
    const ParsedArgs parsed = splitOptions(args);
    if (!parsed.options.isEmpty())
        throw UsageError(QStringLiteral("unknown option %1").arg(parsed.options.first()));
    const QStringList& operands = parsed.operands;
    const QString operation = operands.value(1);
    static const std::map<QString, qsizetype> arity = {{u"set"_s, 4},    {u"delete"_s, 3},
                                                       {u"add"_s, 3},    {u"move"_s, 4},
                                                       {u"resize"_s, 4}, {u"reorder"_s, 4}};
    const auto expected = arity.find(operation);
    if (expected == arity.end() || operands.size() != expected->second)
        throw UsageError(QStringLiteral("edit takes FILE set KEY VALUE, delete N, add KIND, "
                                        "move N LEFTxTOP, resize N HEIGHTxWIDTH or reorder N TO"));
    const QString& path = operands.at(0);
    requireFile(path);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw InputError(QStringLiteral("%1: %2").arg(path, file.errorString()));

    editing::EditResult result;
    try {
        const editing::GameDataDocument doc = editing::GameDataDocument::parse(file.readAll());
        const QString& a = operands.at(2);
        if (operation == u"set")
            result = editing::setKey(doc, a, operands.at(3));
        else if (operation == u"delete")
            result = editing::deleteEntry(doc, entryNumber(a));
        else if (operation == u"add")
            result = editing::addEntry(doc, a);
        else if (operation == u"move")
            result = editing::moveEntry(doc, entryNumber(a), operands.at(3));
        else if (operation == u"resize")
            result = editing::resizeEntry(doc, entryNumber(a), operands.at(3));
        else
            result = editing::reorderEntry(doc, entryNumber(a), entryNumber(operands.at(3)));
        if (result.bytes == doc.bytes())
            return 0;
    } catch (const editing::EditError& error) {
        throw InputError(QStringLiteral("%1: %2").arg(path, error.message()));
    }
    if (const int error = replaceFileContents(path, result.bytes))
        throw InputError(
            QStringLiteral("%1: %2").arg(path, QString::fromLocal8Bit(strerror(error))));
    for (const QString& note : result.notes)
        io.err << "qforms: note: " << path << ": " << note << '\n';
    return 0;
}

} // namespace

const Command editCommand{
    QLatin1StringView("edit"),
    QLatin1StringView("edit FILE set KEY VALUE | delete N | add KIND | move N LEFTxTOP |\n"
                      "       resize N HEIGHTxWIDTH | reorder N TO"),
    QLatin1StringView(
        "Change the game data file FILE in place, keeping every line the change does not\n"
        "touch. KEY is Count, Control<n><suffix>, or SECTION/KEY of another section.\n"
        "delete and reorder renumber the later entries and keep every Index and rule on\n"
        "the widget it named; a rule whose widget is deleted goes too (said on stderr).\n"
        "Bad input leaves the file as it was and exits with 2."),
    run};

} // namespace qf::cli
