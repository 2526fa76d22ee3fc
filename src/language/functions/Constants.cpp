#include "language/functions/Intrinsic.h"

#include <algorithm>
#include <array>

namespace zn::language {

namespace {

struct NamedNumber {
    TextView name;
    std::int32_t value;
};

constexpr auto numbers = std::to_array<NamedNumber>({
    {u"vbBinaryCompare", 0},
    {u"vbTextCompare", 1},
    {u"vbDatabaseCompare", 2},
    {u"vbOKOnly", 0},
    {u"vbOKCancel", 1},
    {u"vbAbortRetryIgnore", 2},
    {u"vbYesNoCancel", 3},
    {u"vbYesNo", 4},
    {u"vbRetryCancel", 5},
    {u"vbCritical", 16},
    {u"vbQuestion", 32},
    {u"vbExclamation", 48},
    {u"vbInformation", 64},
    {u"vbDefaultButton1", 0},
    {u"vbDefaultButton2", 256},
    {u"vbDefaultButton3", 512},
    {u"vbDefaultButton4", 768},
    {u"vbApplicationModal", 0},
    {u"vbSystemModal", 4096},
    {u"vbMsgBoxSetForeground", 65536},
    {u"vbOK", 1},
    {u"vbCancel", 2},
    {u"vbAbort", 3},
    {u"vbRetry", 4},
    {u"vbIgnore", 5},
    {u"vbYes", 6},
    {u"vbNo", 7},
    {u"vbUseSystem", 0},
    {u"vbUseSystemDayOfWeek", 0},
    {u"vbSunday", 1},
    {u"vbMonday", 2},
    {u"vbTuesday", 3},
    {u"vbWednesday", 4},
    {u"vbThursday", 5},
    {u"vbFriday", 6},
    {u"vbSaturday", 7},
    {u"vbFirstJan1", 1},
    {u"vbFirstFourDays", 2},
    {u"vbFirstFullWeek", 3},
    {u"vbGeneralDate", 0},
    {u"vbLongDate", 1},
    {u"vbShortDate", 2},
    {u"vbLongTime", 3},
    {u"vbShortTime", 4},
    {u"vbNormal", 0},
    {u"vbReadOnly", 1},
    {u"vbHidden", 2},
    {u"vbSystem", 4},
    {u"vbVolume", 8},
    {u"vbDirectory", 16},
    {u"vbArchive", 32},
    {u"vbUpperCase", 1},
    {u"vbLowerCase", 2},
    {u"vbProperCase", 3},
    {u"vbUnicode", 64},
    {u"vbFromUnicode", 128},
    {u"vbEmpty", 0},
    {u"vbNull", 1},
    {u"vbInteger", 2},
    {u"vbLong", 3},
    {u"vbSingle", 4},
    {u"vbDouble", 5},
    {u"vbCurrency", 6},
    {u"vbDate", 7},
    {u"vbString", 8},
    {u"vbObject", 9},
    {u"vbError", 10},
    {u"vbBoolean", 11},
    {u"vbVariant", 12},
    {u"vbByte", 17},
    {u"vbLongLong", 20},
    {u"vbArray", 8192},
    {u"vbMethod", 1},
    {u"vbGet", 2},
    {u"vbLet", 4},
    {u"vbSet", 8},
    {u"vbTrue", -1},
    {u"vbFalse", 0},
    {u"vbUseDefault", -2},
    {u"vbObjectError", -2147221504},
    {u"vbBlack", 0},
    {u"vbRed", 0xFF},
    {u"vbGreen", 0xFF00},
    {u"vbBlue", 0xFF0000},
    {u"vbWhite", 0xFFFFFF},
    {u"ForReading", 1},
    {u"ForWriting", 2},
    {u"ForAppending", 8},
    {u"TristateFalse", 0},
    {u"TristateTrue", -1},
    {u"TristateUseDefault", -2},
    {u"WindowsFolder", 0},
    {u"SystemFolder", 1},
    {u"TemporaryFolder", 2},
});

struct NamedText {
    TextView name;
    TextView value;
};

constexpr auto texts = std::to_array<NamedText>({
    {u"vbCr", u"\r"},
    {u"vbLf", u"\n"},
    {u"vbCrLf", u"\r\n"},
    {u"vbNewLine", u"\r\n"},
    {u"vbTab", u"\t"},
    {u"vbBack", u"\b"},
    {u"vbFormFeed", u"\f"},
    {u"vbVerticalTab", u"\v"},
    {u"vbNullString", u""},
    {u"vbNullChar", TextView(u"\0", 1)},
});

} // namespace

std::optional<Value> languageConstant(TextView name)
{
    const auto named = [name](const auto& entry) { return equalNoCase(entry.name, name); };
    if (const auto hit = std::ranges::find_if(texts, named); hit != texts.end())
        return Value(Text(hit->value));
    if (const auto hit = std::ranges::find_if(numbers, named); hit != numbers.end())
        return Value(hit->value);
    return std::nullopt;
}

} // namespace zn::language
