#include "gamedata/ValueSyntax.h"

#include "platform/Errors.h"

#include <QByteArray>

#include <algorithm>
#include <cfloat>
#include <charconv>
#include <cmath>

namespace qf::syntax {

namespace {

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

[[noreturn]] void throwNotANumber(const QString& text)
{
    throw TypeMismatchError(QStringLiteral("Not a number: \"%1\"").arg(text));
}

// The power of ten of the leading digit, for telling an overflow from an
// underflow when the number is beyond the range of double.
qint64 decimalMagnitude(QByteArrayView integerDigits, QByteArrayView fractionDigits,
                        qint64 exponent)
{
    qsizetype firstNonZero = 0;
    while (firstNonZero < integerDigits.size() && integerDigits[firstNonZero] == '0')
        ++firstNonZero;
    if (firstNonZero < integerDigits.size())
        return qint64(integerDigits.size() - firstNonZero - 1) + exponent;
    firstNonZero = 0;
    while (firstNonZero < fractionDigits.size() && fractionDigits[firstNonZero] == '0')
        ++firstNonZero;
    return -qint64(firstNonZero + 1) + exponent;
}

qsizetype skipDigits(QByteArrayView text, qsizetype pos)
{
    while (pos < text.size() && isDigit(text[pos]))
        ++pos;
    return pos;
}

} // namespace

// The decimal point is always ".", whatever the user's locale: game data files
// are shared between machines and must read the same on all of them.
double parseNumber(const QString& text)
{
    const QString trimmed = text.trimmed();
    for (const QChar c : trimmed) {
        if (c.unicode() > 0x7F)
            throwNotANumber(text);
    }
    const QByteArray bytes = trimmed.toLatin1();
    const QByteArrayView view(bytes);

    qsizetype pos = 0;
    const bool negative = pos < view.size() && view[pos] == '-';
    if (pos < view.size() && (view[pos] == '-' || view[pos] == '+'))
        ++pos;
    const qsizetype mantissaStart = pos;
    const qsizetype integerEnd = skipDigits(view, pos);
    const QByteArrayView integerDigits = view.sliced(pos, integerEnd - pos);
    pos = integerEnd;
    QByteArrayView fractionDigits;
    if (pos < view.size() && view[pos] == '.') {
        const qsizetype fractionEnd = skipDigits(view, pos + 1);
        fractionDigits = view.sliced(pos + 1, fractionEnd - pos - 1);
        pos = fractionEnd;
    }
    if (integerDigits.isEmpty() && fractionDigits.isEmpty())
        throwNotANumber(text);
    qint64 exponent = 0;
    if (pos < view.size() && (view[pos] == 'e' || view[pos] == 'E')) {
        ++pos;
        const bool negativeExponent = pos < view.size() && view[pos] == '-';
        if (pos < view.size() && (view[pos] == '-' || view[pos] == '+'))
            ++pos;
        const qsizetype exponentEnd = skipDigits(view, pos);
        if (exponentEnd == pos)
            throwNotANumber(text);
        for (; pos < exponentEnd; ++pos)
            exponent = std::min<qint64>(exponent * 10 + (view[pos] - '0'), 1'000'000'000);
        if (negativeExponent)
            exponent = -exponent;
    }
    if (pos != view.size())
        throwNotANumber(text);

    // from_chars takes no "+", so the sign is applied here.
    double magnitude = 0;
    const auto [end, error] =
        std::from_chars(view.data() + mantissaStart, view.data() + view.size(), magnitude);
    if (error == std::errc::result_out_of_range) {
        if (decimalMagnitude(integerDigits, fractionDigits, exponent) > 0)
            throw OverflowError(QStringLiteral("Number out of range: \"%1\"").arg(text));
        magnitude = 0;
    } else if (error != std::errc() || end != view.data() + view.size()) {
        throwNotANumber(text);
    }
    return negative ? -magnitude : magnitude;
}

qint16 toInt16(const QString& text)
{
    const double number = parseNumber(text);
    const double below = std::floor(number);
    const double fraction = number - below;
    double rounded = below;
    if (fraction > 0.5 || (fraction == 0.5 && std::fmod(below, 2.0) != 0))
        rounded = below + 1;
    if (rounded < -32768 || rounded > 32767)
        throw OverflowError(QStringLiteral("Number out of the 16-bit range: \"%1\"").arg(text));
    return qint16(rounded);
}

float toSingle(const QString& text)
{
    const double number = parseNumber(text);
    // Numbers a little above FLT_MAX still round to it; from halfway to the
    // next power of two on, single precision has only infinity.
    constexpr double Limit = double(FLT_MAX) + 0x1p103;
    if (std::fabs(number) >= Limit)
        throw OverflowError(QStringLiteral("Number out of the single range: \"%1\"").arg(text));
    if (std::fabs(number) > double(FLT_MAX))
        return number < 0 ? -FLT_MAX : FLT_MAX;
    return float(number);
}

bool toBoolean(const QString& text)
{
    const QString trimmed = text.trimmed();
    if (trimmed.compare(u"true", Qt::CaseInsensitive) == 0)
        return true;
    if (trimmed.compare(u"false", Qt::CaseInsensitive) == 0)
        return false;
    return parseNumber(trimmed) != 0;
}

PairValue splitPair(const QString& loweredValue)
{
    const qsizetype separator = loweredValue.indexOf(u'x');
    if (separator < 0)
        return {std::nullopt, loweredValue};
    return {loweredValue.first(separator), loweredValue.sliced(separator + 1)};
}

bool isTextNumber(const QString& text)
{
    if (text.size() != 3)
        return false;
    try {
        parseNumber(text);
        return true;
    } catch (const Error&) {
        return false;
    }
}

std::vector<ItemListStep> parseItemList(const QString& value)
{
    // Positions count from 1, as in the rule this follows. An entry between
    // two overlapping ";;" has a negative length: the builder's failing
    // assignment is skipped, so the entry keeps its previous text and is used
    // once more.
    std::vector<ItemListStep> steps;
    QString entry;
    qsizetype p = 1;
    qsizetype q = 0;
    for (;;) {
        const qsizetype found = value.indexOf(u";;", p - 1);
        if (found < 0)
            break;
        p = found + 1;
        const qsizetype length = p - q - 1;
        if (length >= 0)
            entry = value.sliced(q, length);
        if (entry.startsWith(u'(')) {
            // "(" alone has no text between its first and last character; the
            // builder's selection fails and is skipped.
            if (entry.size() >= 2)
                steps.push_back({ItemListStep::Kind::Select, entry.sliced(1, entry.size() - 2)});
        } else {
            steps.push_back({ItemListStep::Kind::Append, entry});
        }
        p = p + 1;
        q = p;
    }
    return steps;
}

QString itemListTail(const QString& value)
{
    const qsizetype last = value.lastIndexOf(u";;");
    return last < 0 ? value : value.sliced(last + 2);
}

} // namespace qf::syntax
