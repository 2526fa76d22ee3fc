#include "base/Text.h"

#include <algorithm>
#include <cstdio>
#include <limits>
#include <stdexcept>
#include <unicode/locid.h>
#include <unicode/uchar.h>
#include <unicode/ucnv.h>
#include <unicode/unistr.h>
#include <unicode/ustring.h>

namespace zn {

namespace {

char16_t fold(char16_t unit)
{
    if (unit < 0x80)
        return (unit >= u'A' && unit <= u'Z') ? static_cast<char16_t>(unit + 32) : unit;
    const UChar32 folded = u_foldCase(unit, U_FOLD_CASE_DEFAULT);
    return folded <= 0xFFFF ? static_cast<char16_t>(folded) : unit;
}

class CodePage {
public:
    CodePage()
    {
        UErrorCode error = U_ZERO_ERROR;
        m_converter = ucnv_open("windows-1252", &error);
        if (U_FAILURE(error))
            throw std::runtime_error("The code page windows-1252 is not available.");
        ucnv_setSubstChars(m_converter, "?", 1, &error);
    }
    CodePage(const CodePage&) = delete;
    CodePage& operator=(const CodePage&) = delete;
    ~CodePage() { ucnv_close(m_converter); }

    UConverter* get() { return m_converter; }

private:
    UConverter* m_converter = nullptr;
};

} // namespace

Text toText(std::string_view utf8)
{
    const auto string = icu::UnicodeString::fromUTF8(icu::StringPiece(utf8.data(), static_cast<int32_t>(utf8.size())));
    return Text(string.getBuffer(), static_cast<std::size_t>(string.length()));
}

std::string toUtf8(TextView text)
{
    std::string out;
    out.reserve(text.size());
    icu::UnicodeString(false, text.data(), static_cast<int32_t>(text.size())).toUTF8String(out);
    return out;
}

Text numberText(std::int64_t number)
{
    const std::string digits = std::to_string(number);
    return Text(digits.begin(), digits.end());
}

int compareNoCase(TextView a, TextView b)
{
    const std::size_t common = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < common; ++i) {
        const int difference = int(fold(a[i])) - int(fold(b[i]));
        if (difference != 0)
            return difference;
    }
    return a.size() == b.size() ? 0 : (a.size() < b.size() ? -1 : 1);
}

bool equalNoCase(TextView a, TextView b) { return a.size() == b.size() && compareNoCase(a, b) == 0; }

bool startsWithNoCase(TextView text, TextView prefix)
{
    return text.size() >= prefix.size() && equalNoCase(text.substr(0, prefix.size()), prefix);
}

Text foldCase(TextView text)
{
    Text out(text);
    for (char16_t& unit : out)
        unit = fold(unit);
    return out;
}

Text toLower(TextView text)
{
    icu::UnicodeString string(text.data(), static_cast<int32_t>(text.size()));
    string.toLower(icu::Locale::getRoot());
    return Text(string.getBuffer(), static_cast<std::size_t>(string.length()));
}

Text toUpper(TextView text)
{
    icu::UnicodeString string(text.data(), static_cast<int32_t>(text.size()));
    string.toUpper(icu::Locale::getRoot());
    return Text(string.getBuffer(), static_cast<std::size_t>(string.length()));
}

void replaceAll(Text& text, TextView what, TextView with)
{
    if (what.empty())
        return;
    std::size_t hit = text.find(what);
    if (hit == Text::npos)
        return;
    Text out;
    out.reserve(text.size());
    std::size_t start = 0;
    for (; hit != Text::npos; hit = text.find(what, start)) {
        out.append(text, start, hit - start).append(with);
        start = hit + what.size();
    }
    out.append(text, start);
    text = std::move(out);
}

Text withCrLf(TextView text)
{
    Text out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != u'\r' && text[i] != u'\n') {
            out += text[i];
            continue;
        }
        out += u"\r\n";
        if (text.substr(i, 2) == u"\r\n")
            ++i;
    }
    return out;
}

std::vector<Text> split(TextView text, char16_t separator)
{
    std::vector<Text> pieces;
    std::size_t start = 0;
    for (std::size_t hit; (hit = text.find(separator, start)) != TextView::npos; start = hit + 1)
        pieces.emplace_back(text.substr(start, hit - start));
    pieces.emplace_back(text.substr(start));
    return pieces;
}

Text trim(TextView text)
{
    constexpr TextView blanks = u" \t\r\n";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == TextView::npos)
        return {};
    return Text(text.substr(first, text.find_last_not_of(blanks) - first + 1));
}

std::int32_t leadingInteger(TextView text)
{
    constexpr std::int64_t most = std::numeric_limits<std::int32_t>::max();
    constexpr std::int64_t least = std::numeric_limits<std::int32_t>::min();
    std::size_t i = 0;
    while (i < text.size() && (text[i] == u' ' || (text[i] >= u'\t' && text[i] <= u'\r')))
        ++i;
    const bool negative = i < text.size() && text[i] == u'-';
    if (i < text.size() && (text[i] == u'-' || text[i] == u'+'))
        ++i;
    std::int64_t number = 0;
    for (; i < text.size() && text[i] >= u'0' && text[i] <= u'9'; ++i)
        number = std::min<std::int64_t>(number * 10 + (text[i] - u'0'), most + 1);
    return static_cast<std::int32_t>(negative ? std::max(-number, least) : std::min(number, most));
}

std::string toCodePage(TextView text)
{
    thread_local CodePage page;
    ucnv_resetFromUnicode(page.get());
    std::string out(text.size() * 2 + 4, '\0');
    UErrorCode error = U_ZERO_ERROR;
    const int32_t length = ucnv_fromUChars(page.get(), out.data(), static_cast<int32_t>(out.size()), text.data(),
        static_cast<int32_t>(text.size()), &error);
    if (U_FAILURE(error))
        throw std::runtime_error("A text could not be written in the code page windows-1252.");
    out.resize(static_cast<std::size_t>(length));
    return out;
}

Text fromCodePage(std::string_view bytes)
{
    thread_local CodePage page;
    ucnv_resetToUnicode(page.get());
    Text out(bytes.size() + 2, u'\0');
    UErrorCode error = U_ZERO_ERROR;
    const int32_t length = ucnv_toUChars(page.get(), out.data(), static_cast<int32_t>(out.size()), bytes.data(),
        static_cast<int32_t>(bytes.size()), &error);
    if (U_FAILURE(error))
        throw std::runtime_error("Bytes could not be read in the code page windows-1252.");
    out.resize(static_cast<std::size_t>(length));
    return out;
}

std::string toReadableCodePage(TextView text)
{
    std::string out = toCodePage(text);
    if (std::count(out.begin(), out.end(), '?') == std::count(text.begin(), text.end(), u'?'))
        return out;
    out.clear();
    const icu::UnicodeString string(false, text.data(), static_cast<int32_t>(text.size()));
    for (int32_t at = 0; at < string.length(); at = string.moveIndex32(at, 1)) {
        const UChar32 character = string.char32At(at);
        const auto length = static_cast<std::size_t>(U16_LENGTH(character));
        const std::string bytes = toCodePage(text.substr(static_cast<std::size_t>(at), length));
        char escape[16];
        std::snprintf(escape, sizeof escape, "<U+%04X>", static_cast<unsigned>(character));
        out += bytes == "?" && character != u'?' ? escape : bytes;
    }
    return out;
}

Text fromReadableCodePage(std::string_view bytes)
{
    Text text = fromCodePage(bytes);
    constexpr TextView opening = u"<U+";
    for (std::size_t at = text.find(opening); at != Text::npos; at = text.find(opening, at + 1)) {
        const std::size_t digits = at + opening.size();
        const std::size_t end = text.find_first_not_of(u"0123456789ABCDEF", digits);
        if (end == Text::npos || text[end] != u'>' || end - digits < 4 || end - digits > 6)
            continue;
        const std::string number = toUtf8(text.substr(digits, end - digits));
        const auto character = static_cast<UChar32>(std::stoul(number, nullptr, 16));
        if (character > 0x10FFFF)
            continue;
        const icu::UnicodeString one(character);
        text.replace(at, end + 1 - at, Text(one.getBuffer(), static_cast<std::size_t>(one.length())));
    }
    return text;
}

} // namespace zn
