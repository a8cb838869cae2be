#include "platform/IniDocument.h"

#include <gtest/gtest.h>

using namespace qf;
using namespace Qt::Literals::StringLiterals;

namespace {

std::optional<QString> lookUp(const QString& text, const QString& section, const QString& key)
{
    return IniDocument::parse(text).value(section, key);
}

} // namespace

TEST(IniDocument, LineEndingsAndBlanks)
{
    const IniDocument doc = IniDocument::parse(
        u"[A]\r\nk1=v1\rk2=v2\nk3=v3\r\n\r\n  \t[ Sec One ]  \n  Key  =  a  b \t\x1a\nk4 ="_s);
    EXPECT_EQ(doc.value(u"a", u"K1"), u"v1"_s);
    EXPECT_EQ(doc.value(u"A", u"k2"), u"v2"_s);
    EXPECT_EQ(doc.value(u"A", u"k3"), u"v3"_s);
    EXPECT_EQ(doc.value(u"sec one", u"key"), u"a  b"_s);
    EXPECT_EQ(doc.value(u"  Sec One\t", u" KEY "), u"a  b"_s);
    EXPECT_EQ(doc.value(u"sec one", u"k4"), QString());
    EXPECT_EQ(doc.value(u"secone", u"key"), std::nullopt);
}

TEST(IniDocument, NamesCompareWithoutRegardToCaseBeyondAscii)
{
    const IniDocument doc = IniDocument::parse(u"[ÄRGER Über]\nSCHLÜSSEL=1\nΣΟΦΙΑ=2"_s);
    EXPECT_EQ(doc.value(u"ärger über", u"schlüssel"), u"1"_s);
    EXPECT_EQ(doc.value(u"Ärger ÜBER", u"σοφια"), u"2"_s);
}

TEST(IniDocument, SectionHeaders)
{
    // Keys before any header belong to a nameless section; "[" without "]"
    // starts no section.
    const QString text = u"top=1\n[Broken\nk=v\n[Sec] ; note\na=2\n[x]y]\nb=3\n[ ]\nc=4"_s;
    EXPECT_EQ(lookUp(text, u""_s, u"top"_s), u"1"_s);
    EXPECT_EQ(lookUp(text, u" "_s, u"k"_s), u"v"_s);
    EXPECT_EQ(lookUp(text, u""_s, u"[broken"_s), std::nullopt);
    EXPECT_EQ(lookUp(text, u"Broken"_s, u"k"_s), std::nullopt);
    EXPECT_EQ(lookUp(text, u"sec"_s, u"a"_s), u"2"_s);
    EXPECT_EQ(lookUp(text, u"x]y"_s, u"b"_s), u"3"_s);
    EXPECT_EQ(lookUp(text, u""_s, u"c"_s), std::nullopt);
}

TEST(IniDocument, FirstSectionAndFirstKeyWin)
{
    const QString text = u"[s]\na=1\na=2\nflag\nflag=yes\n;c=comment\n=empty\n[t]\n[S]\na=3\nb=4"_s;
    EXPECT_EQ(lookUp(text, u"S"_s, u"A"_s), u"1"_s);
    EXPECT_EQ(lookUp(text, u"s"_s, u"b"_s), std::nullopt);
    // A line without "=" hides later lines of the same key.
    EXPECT_EQ(lookUp(text, u"s"_s, u"flag"_s), std::nullopt);
    EXPECT_EQ(lookUp(text, u"s"_s, u"c"_s), std::nullopt);
    EXPECT_EQ(lookUp(text, u"s"_s, u";c"_s), u"comment"_s);
    EXPECT_EQ(lookUp(text, u"s"_s, u""_s), u"empty"_s);
}

TEST(IniDocument, SurroundingQuotes)
{
    const IniDocument doc = IniDocument::parse(
        u"[q]\nd=\"  spaced  \"\ns='single'\nmixed=\"a'\nlone=\"\nempty=\"\"\ninner=\"a\"b\"\n"
        "open='a\nplain=a\"b\"\n"_s);
    EXPECT_EQ(doc.value(u"q", u"d"), u"  spaced  "_s);
    EXPECT_EQ(doc.rawValue(u"q", u"d"), u"\"  spaced  \""_s);
    EXPECT_EQ(doc.value(u"q", u"s"), u"single"_s);
    EXPECT_EQ(doc.value(u"q", u"mixed"), u"\"a'"_s);
    EXPECT_EQ(doc.value(u"q", u"lone"), u"\""_s);
    EXPECT_EQ(doc.value(u"q", u"empty"), u""_s);
    EXPECT_EQ(doc.value(u"q", u"inner"), u"a\"b"_s);
    EXPECT_EQ(doc.value(u"q", u"open"), u"'a"_s);
    EXPECT_EQ(doc.value(u"q", u"plain"), u"a\"b\""_s);
}
