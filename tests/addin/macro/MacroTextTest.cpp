#include "addin/macro/MacroText.h"

#include "base/Dates.h"

#include <gtest/gtest.h>

namespace zn {

TEST(ValueToMacroText, SpellsEachType)
{
    struct Case {
        Value value;
        Text text;
    };
    const Case cases[] = {
        {std::int16_t(-7), u"-7"},
        {std::int32_t(-1), u"-1"},
        {std::uint8_t(200), u"200"},
        {0.1F, u"0.100000"},
        {1.5, u"1.500000"},
        {true, u"True"},
        {false, u"False"},
        {u"a\"b", u"a\"b"},
        {DateValue{43164.5}, dateText(43164.5)},
        {Value(), u""},
        {NullValue(), u""},
        {CurrencyValue{10000}, u""},
        {ErrorValue{E_FAIL}, u""},
        {std::int64_t(5), u""},
        {Value::arrayOf({1}), u""},
    };
    for (const Case& c : cases)
        EXPECT_EQ(ValueToMacroText(c.value), c.text) << int(c.value.type());
}

TEST(EncodeForMacroString, WritesWideCharactersAsCalls)
{
    struct Case {
        const char16_t* text;
        const char16_t* encoded;
    };
    const Case cases[] = {
        {u"", u""},
        {u"C:\\a \"b\" 100%.prt", u"C:\\a \"b\" 100%.prt"},
        {u"日本", u"\" & ChrW(26085) & ChrW(26412) & \""},
        {u"a日b", u"a\" & ChrW(26085) & \"b"},
        {u"\u00FF\u0100", u"\u00FF\" & ChrW(256) & \""},
        {u"\U0001F600", u"\" & ChrW(55357) & ChrW(56832) & \""},
    };
    for (const Case& c : cases)
        EXPECT_EQ(EncodeForMacroString(c.text), c.encoded);
    const Text narrow(500, u'x');
    EXPECT_EQ(EncodeForMacroString(narrow), narrow);
}

TEST(EncodeForMacroString, ContinuesLongLines)
{
    // Each call takes 13 characters with its joint, and the value begins with a quote: the ninth joint is the first
    // one that begins at least 100 characters in, and then every eighth behind the last break.
    Text expected = u"\" & ";
    for (int call = 1; call <= 20; ++call) {
        expected += u"ChrW(1078) & ";
        if (call == 8 || call == 16)
            expected += u"_\r\n";
    }
    EXPECT_EQ(EncodeForMacroString(Text(20, u'\u0436')), expected + u"\"");

    // What looks like a joint in a name is no place to break at: the literal would stay open.
    const Text name = Text(98, u'x') + u" & " + Text(40, u'y') + u" & z";
    EXPECT_EQ(EncodeForMacroString(u"\u0436" + name + u"\u0436w"),
        u"\" & ChrW(1078) & \"" + name + u"\" & _\r\nChrW(1078) & \"w");
}

} // namespace zn
