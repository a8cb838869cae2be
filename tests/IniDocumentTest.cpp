#include "platform/IniDocument.h"

#include <gtest/gtest.h>

using namespace qf;
using namespace Qt::Literals::StringLiterals;

TEST(IniDocument, LineEndingsBlanksAndNamesWithoutRegardToCase)
{
    const IniDocument doc = IniDocument::parse(
        u"[A]\r\nk1=v1\rk2=v2\nkz=v3\r\n\r\n  \t[ Sec One ]  \n  Key  =  a  b \t\x1a\nk4 =\r"_s);
    EXPECT_EQ(doc.value(u"a", u"K1"), u"v1"_s);
    EXPECT_EQ(doc.value(u"A", u"k2"), u"v2"_s);
    EXPECT_EQ(doc.value(u"A", u"KZ"), u"v3"_s);
    EXPECT_EQ(doc.value(u"sec one", u"key"), u"a  b"_s);
    EXPECT_EQ(doc.value(u"  Sec One\t", u" KEY\r"), u"a  b"_s);
    EXPECT_EQ(doc.value(u"sec one", u"k4"), QString());
    EXPECT_EQ(doc.value(u"secone", u"key"), std::nullopt);

    const IniDocument beyondAscii = IniDocument::parse(u"[ÄRGER Über]\nSCHLÜSSEL=1\nΣΟΦΙΑ=2"_s);
    EXPECT_EQ(beyondAscii.value(u"ärger über", u"schlüssel"), u"1"_s);
    EXPECT_EQ(beyondAscii.value(u"Ärger ÜBER", u"σοφια"), u"2"_s);
}

TEST(IniDocument, SectionHeadersAndTheFirstOfEachNameWins)
{
    // Keys before any header belong to a nameless section; "[" without "]"
    // starts no section.
    const IniDocument doc =
        IniDocument::parse(u"top=1\n[Broken\nk=v\n[Sec] ; note\na=2\n[x]y]\nb=3\n[ ]\nc=4"_s);
    EXPECT_EQ(doc.value(u"", u"top"), u"1"_s);
    EXPECT_EQ(doc.value(u" ", u"k"), u"v"_s);
    EXPECT_EQ(doc.value(u"", u"[broken"), std::nullopt);
    EXPECT_EQ(doc.value(u"Broken", u"k"), std::nullopt);
    EXPECT_EQ(doc.value(u"sec", u"a"), u"2"_s);
    EXPECT_EQ(doc.value(u"x]y", u"b"), u"3"_s);
    EXPECT_EQ(doc.value(u"", u"c"), std::nullopt);

    // The first section and the first key of a name win.
    const IniDocument repeated = IniDocument::parse(
        u"[s]\na=1\na=2\nflag\nflag=yes\n;c=comment\n=empty\n[t]\n[S]\na=3\nb=4"_s);
    EXPECT_EQ(repeated.value(u"S", u"A"), u"1"_s);
    EXPECT_EQ(repeated.value(u"s", u"b"), std::nullopt);
    // A line without "=" hides later lines of the same key.
    EXPECT_EQ(repeated.value(u"s", u"flag"), std::nullopt);
    EXPECT_EQ(repeated.value(u"s", u"c"), std::nullopt);
    EXPECT_EQ(repeated.value(u"s", u";c"), u"comment"_s);
    EXPECT_EQ(repeated.value(u"s", u""), u"empty"_s);
}

TEST(IniDocument, SurroundingQuotes)
{
    const IniDocument doc = IniDocument::parse(
        u"[q]\nd=\"  spaced  \"\ns='single'\nmixed=\"a'\nlone=\"\nempty=\"\"\ninner=\"a\"b\"\n"
        "open='a\nplain=a\"b\"\n"_s);
    EXPECT_EQ(doc.rawValue(u"q", u"d"), u"\"  spaced  \""_s);
    const std::pair<QString, QString> values[] = {
        {u"d"_s, u"  spaced  "_s}, {u"s"_s, u"single"_s},    {u"mixed"_s, u"\"a'"_s},
        {u"lone"_s, u"\""_s},      {u"empty"_s, u""_s},      {u"inner"_s, u"a\"b"_s},
        {u"open"_s, u"'a"_s},      {u"plain"_s, u"a\"b\""_s}};
    for (const auto& [key, value] : values)
        EXPECT_EQ(doc.value(u"q", key), value) << key.toStdString();
}

TEST(IniDocument, PositionsOfSectionsAndKeysIncludingThoseLookupsNeverFind)
{
    using P = IniDocument::Position;
    const IniDocument doc =
        IniDocument::parse(u"top=0\r\n[ A ]\r\n  k = v\r\n\r\nk=dup\rflag\n[a]\nx=1\n[😀B]\n😀y=2"_s);
    EXPECT_EQ(doc.sectionPosition(u"a"), (P{2, 3}));
    EXPECT_EQ(doc.keyPosition(u"A", u"K"), (P{3, 3}));
    EXPECT_EQ(doc.valuePosition(u"A", u"k"), (P{3, 7}));
    EXPECT_EQ(doc.keyPosition(u"A", u"flag"), (P{6, 1}));
    EXPECT_EQ(doc.valuePosition(u"A", u"flag"), std::nullopt);
    EXPECT_EQ(doc.keyPosition(u"A", u"x"), std::nullopt);
    EXPECT_EQ(doc.sectionPosition(u""), std::nullopt);
    EXPECT_EQ(doc.valuePosition(u"😀b", u"😀Y"), (P{10, 4}));

    QStringList listed;
    for (const IniDocument::SectionLines& section : doc.lines()) {
        const P at = section.namePosition.value_or(P{});
        listed << u"[%1]@%2:%3"_s.arg(section.name).arg(at.line).arg(at.column);
        for (const IniDocument::KeyLine& key : section.keys)
            listed << u"%1=%2@%3:%4"_s.arg(key.name, key.value.value_or(u"<none>"_s))
                          .arg(key.namePosition.line)
                          .arg(key.namePosition.column);
    }
    EXPECT_EQ(listed, (QStringList{u"[]@0:0"_s, u"top=0@1:1"_s, u"[A]@2:3"_s, u"k=v@3:3"_s,
                                   u"k=dup@5:1"_s, u"flag=<none>@6:1"_s, u"[a]@7:2"_s, u"x=1@8:1"_s,
                                   u"[😀B]@9:2"_s, u"😀y=2@10:1"_s}));
}
