#include "gamedata/ValueSyntax.h"
#include "platform/Errors.h"

#include <gtest/gtest.h>

#include <cfloat>

using namespace qf;
using namespace qf::syntax;
using namespace Qt::Literals::StringLiterals;

TEST(ValueSyntax, Numbers)
{
    const std::pair<QString, double> numbers[] = {
        {u"  12 "_s, 12}, {u"-1"_s, -1},         {u"+2.5"_s, 2.5}, {u".5"_s, 0.5},
        {u"1e3"_s, 1000}, {u"-2.5E-1"_s, -0.25}, {u"1e-400"_s, 0}};
    for (const auto& [text, number] : numbers)
        EXPECT_EQ(parseNumber(text), number) << text.toStdString();
    for (const QString& bad : {u""_s, u" "_s, u"abc"_s, u"12abc"_s, u"inf"_s, u"nan"_s, u"."_s,
                               u"1e"_s, u"1,5"_s, u"0x10"_s, u"- 1"_s, u"1 2"_s, u"١٢"_s})
        EXPECT_THROW(parseNumber(bad), TypeMismatchError) << bad.toStdString();
    EXPECT_THROW(parseNumber(u"1e400"_s), OverflowError);
    EXPECT_THROW(parseNumber(u"-0.001e312"_s), OverflowError);

    EXPECT_TRUE(toBoolean(u" True "_s));
    EXPECT_FALSE(toBoolean(u"false"_s));
    EXPECT_FALSE(toBoolean(u"0"_s));
    EXPECT_TRUE(toBoolean(u"-1"_s));
    EXPECT_TRUE(toBoolean(u"0.5"_s));
    for (const QString& bad : {u""_s, u"yes"_s, u"truex"_s, u"on"_s})
        EXPECT_THROW(toBoolean(bad), TypeMismatchError) << bad.toStdString();
}

TEST(ValueSyntax, WholeNumbersRoundHalvesToEvenAndSinglesRoundToTheLargest)
{
    EXPECT_EQ(toInt16(u"2.5"_s), 2);
    EXPECT_EQ(toInt16(u"3.5"_s), 4);
    EXPECT_EQ(toInt16(u"-2.5"_s), -2);
    EXPECT_EQ(toInt16(u"32767.4"_s), 32767);
    EXPECT_EQ(toInt16(u"-32768.5"_s), -32768);
    EXPECT_THROW(toInt16(u"32767.5"_s), OverflowError);
    EXPECT_THROW(toInt16(u"-32769"_s), OverflowError);

    EXPECT_EQ(toSingle(u"120.5"_s), 120.5f);
    // Up to halfway to the next power of two a number rounds to the largest single.
    EXPECT_EQ(toSingle(u"3.4028235677973362e38"_s), FLT_MAX);
    EXPECT_EQ(toSingle(u"-3.4028235e38"_s), -FLT_MAX);
    EXPECT_THROW(toSingle(u"3.4028235677973366e38"_s), OverflowError);
    EXPECT_THROW(toSingle(u"-1e39"_s), OverflowError);
}

TEST(ValueSyntax, PairsAndTextNumbers)
{
    const auto split = [](const QString& text) {
        const PairValue pair = splitPair(text);
        return QStringList{pair.first.value_or(u"<none>"_s), pair.second};
    };
    EXPECT_EQ(split(u"120X360"_s.toLower()), (QStringList{u"120"_s, u"360"_s}));
    EXPECT_EQ(split(u" 1 x 2x3"_s), (QStringList{u" 1 "_s, u" 2x3"_s}));
    EXPECT_EQ(split(u"255"_s), (QStringList{u"<none>"_s, u"255"_s}));
    EXPECT_EQ(split(u"x"_s), (QStringList{u""_s, u""_s}));

    EXPECT_TRUE(isTextNumber(u"053"_s));
    EXPECT_TRUE(isTextNumber(u"1e2"_s));
    for (const QString& text : {u"05"_s, u"abc"_s, u"0530"_s})
        EXPECT_FALSE(isTextNumber(text)) << text.toStdString();
}

TEST(ValueSyntax, ItemListsAndTheirTail)
{
    using Kind = ItemListStep::Kind;
    const auto append = [](const QString& text) { return ItemListStep{Kind::Append, text}; };
    const auto select = [](const QString& text) { return ItemListStep{Kind::Select, text}; };

    EXPECT_EQ(parseItemList(u"red;;green;;(green);;"_s),
              (std::vector{append(u"red"_s), append(u"green"_s), select(u"green"_s)}));
    EXPECT_EQ(parseItemList(u"a;;b"_s), std::vector{append(u"a"_s)});
    EXPECT_EQ(parseItemList(u";;a;;"_s), (std::vector{append(u""_s), append(u"a"_s)}));
    // Each semicolon beyond the two closing an entry repeats that entry.
    EXPECT_EQ(parseItemList(u"a;;;b;;"_s),
              (std::vector{append(u"a"_s), append(u"a"_s), append(u"b"_s)}));
    EXPECT_EQ(parseItemList(u"(a);;;;"_s),
              (std::vector{select(u"a"_s), select(u"a"_s), select(u"a"_s)}));
    EXPECT_EQ(parseItemList(u"(;;();;()x;;"_s), (std::vector{select(u""_s), select(u")"_s)}));
    EXPECT_TRUE(parseItemList(u"no list"_s).empty());
    EXPECT_EQ(itemListTail(u";;a;;(b);;tail"_s), u"tail"_s);
    EXPECT_EQ(itemListTail(u";;"_s), u""_s);
    EXPECT_EQ(itemListTail(u"no list"_s), u"no list"_s);
}
