#include "base/Value.h"
#include "base/Dates.h"
#include "base/Format.h"
#include "base/Paths.h"
#include "base/Text.h"
#include "tests/support/Failures.h"

#include <gtest/gtest.h>
#include <tuple>

namespace zn {

TEST(Value, ConvertsBetweenTypesByTheAutomationRules)
{
    struct Case {
        const char* name;
        Value from;
        ValueType to;
        Value expected;
    };
    const Case cases[] = {
        {"text digit to integer", u" 2 ", ValueType::Int32, 2},
        {"half rounds to even, down", 2.5, ValueType::Int32, 2},
        {"half rounds to even, up", 3.5, ValueType::Int32, 4},
        {"true is minus one", true, ValueType::Int32, -1},
        {"integer two is true", 2, ValueType::Boolean, true},
        {"text false", u"False", ValueType::Boolean, false},
        {"boolean to text", true, ValueType::String, u"-1"},
        {"empty to text", Value(), ValueType::String, u""},
        {"double to text", 0.1, ValueType::String, u"0.1"},
        {"large double to text", 1e20, ValueType::String, u"1E+20"},
        {"whole double to text", 300.0, ValueType::String, u"300"},
        {"float to text", 0.1f, ValueType::String, u"0.1"},
        {"hexadecimal text", u"&HFF", ValueType::Int32, 255},
        {"date to text", DateValue{43164.0}, ValueType::String, u"3/5/2018"},
        {"iso text to date", u"2018-03-05 14:07:09", ValueType::Date, DateValue{dayCount({2018, 3, 5, 14, 7, 9})}},
    };
    for (const Case& c : cases)
        EXPECT_EQ(c.from.changedTo(c.to), c.expected) << c.name;
}

TEST(Value, RefusesWhatCannotBeConverted)
{
    const std::tuple<Value, ValueType, Status> cases[] = {
        {u"abc", ValueType::Int32, DISP_E_TYPEMISMATCH},
        {u"", ValueType::Int32, DISP_E_TYPEMISMATCH},
        {u"2147483648", ValueType::Int32, DISP_E_OVERFLOW},
        {2147483647.0, ValueType::Int32, S_OK},
        {40000, ValueType::Int16, DISP_E_OVERFLOW},
        {-1, ValueType::UInt8, DISP_E_OVERFLOW},
        {NullValue{}, ValueType::String, DISP_E_TYPEMISMATCH},
        {ObjectRef(), ValueType::String, DISP_E_TYPEMISMATCH},
    };
    for (const auto& [value, type, status] : cases)
        EXPECT_EQ(test::statusOf([&value = value, type = type] { value.changedTo(type); }), status)
            << toUtf8(value.toText());
}

TEST(Dates, BreakDownAndBuildAgree)
{
    CalendarTime time;
    ASSERT_TRUE(breakDown(43164.588298611111, time));
    EXPECT_EQ(std::tuple(time.year, time.month, time.day), std::tuple(2018, 3, 5));
    EXPECT_EQ(std::tuple(time.hour, time.minute, time.second), std::tuple(14, 7, 9));
    EXPECT_DOUBLE_EQ(dayCount({2018, 3, 5, 0, 0, 0}), 43164.0);
    EXPECT_DOUBLE_EQ(dayCount({1899, 12, 30, 0, 0, 0}), 0.0);
    ASSERT_TRUE(breakDown(-1.25, time)); // six in the morning of the day before the epoch
    EXPECT_EQ(time.day, 29);
    EXPECT_EQ(time.hour, 6);
    EXPECT_FALSE(breakDown(1e9, time));
    EXPECT_EQ(dateText(43164.588298611111), u"3/5/2018 2:07:09 PM");
    double days = 0;
    EXPECT_TRUE(parseDate(u"3/5/2018 2:07:09 PM", days));
    EXPECT_NEAR(days, 43164.588298611111, 1e-6);
}

TEST(Paths, PartsOfABackslashPath)
{
    EXPECT_EQ(pathFileName(u"C:\\V\\a.b.step"), u"a.b.step");
    EXPECT_EQ(pathExtension(u"C:\\V.x\\a"), u"");
    EXPECT_EQ(pathExtension(u"C:\\V\\a.b.step"), u".step");
    EXPECT_EQ(pathStem(u"C:\\V\\a.b.step"), u"a.b");
    EXPECT_EQ(pathFolder(u"C:\\V\\a"), u"C:\\V");
    EXPECT_EQ(pathFolder(u"C:\\a"), u"C:\\");
    EXPECT_EQ(textBehindLastDot(u"C:\\V\\a"), u"C:\\V\\a");
    EXPECT_EQ(pathWithExtension(u"C:\\t\\TFR1.tmp", u".znb"), u"C:\\t\\TFR1.znb");
    EXPECT_EQ(pathAppend(u"C:\\V\\", u"\\Logs"), u"C:\\V\\Logs");
    EXPECT_EQ(pathAppend(u"C:\\V", u"D:\\Logs"), u"D:\\Logs");
    EXPECT_EQ(pathAppend(u"C:\\V", u""), u"C:\\V");
    EXPECT_EQ(pathAppend(u"C:\\V", u"1:2 scale.pdf"), u"C:\\V\\1:2 scale.pdf"); // no drive
    EXPECT_EQ(canonicalPath(u"C:\\V\\.\\x\\..\\\\a/b.stl"), u"C:\\V\\a\\b.stl");
    EXPECT_EQ(canonicalPath(u"C:\\..\\a"), u"C:\\a");
    EXPECT_TRUE(isInFolder(u"C:\\V\\a", u"c:\\v\\"));
    EXPECT_FALSE(isInFolder(u"C:\\Vx\\a", u"C:\\V"));
}

TEST(ReadableCodePage, KeepsEveryCharacterLegible)
{
    const struct {
        const char16_t* text;
        const char* bytes;
    } rows[] = {
        {u"", ""},
        {u"Why? a.stl", "Why? a.stl"},
        {u"caf\u00E9 \u20AC", "caf\xE9 \x80"},
        {u"\u65E5?\u672C", "<U+65E5>?<U+672C>"},
        {u"\U0001F600.stl", "<U+1F600>.stl"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(toReadableCodePage(row.text), row.bytes);
        EXPECT_EQ(fromReadableCodePage(row.bytes), row.text);
    }
    for (const char* plain : {"<U+65E>", "<U+65E5", "<u+65E5>", "<U+FFFFFF>", "<U+", "a < b > c"})
        EXPECT_EQ(toUtf8(fromReadableCodePage(plain)), plain);
}

TEST(Text, CountsFoldsAndConverts)
{
    EXPECT_TRUE(equalNoCase(u"ÄÖ.ZENPRT", u"äö.zenprt"));
    EXPECT_FALSE(equalNoCase(u"a", u"ab"));
    EXPECT_EQ(leadingInteger(u"12abc"), 12);
    EXPECT_EQ(leadingInteger(u"abc"), 0);
    EXPECT_EQ(leadingInteger(u" -7"), -7);
    EXPECT_EQ(leadingInteger(u"99999999999"), 2147483647);
    Text text = u"aXXbX";
    replaceAll(text, u"X", u"XY");
    EXPECT_EQ(text, u"aXYXYbXY");
    EXPECT_EQ(split(u"A,,B", u','), (std::vector<Text>{u"A", u"", u"B"}));
    EXPECT_EQ(toCodePage(u"Couldn\u2019t \u65E5"), "Couldn\x92t ?");
    EXPECT_EQ(fromCodePage("\x92\xE4"), u"\u2019\u00E4");
    EXPECT_EQ(formatText("%s.%d", Text(u"日"), 26), u"日.26");
}

} // namespace zn
