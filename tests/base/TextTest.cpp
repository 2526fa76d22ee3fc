#include "base/Text.h"

#include <gtest/gtest.h>

namespace zn {

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

} // namespace zn
