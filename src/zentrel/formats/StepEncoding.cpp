#include "zentrel/formats/StepEncoding.h"

#include <algorithm>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>
#include <unicode/ucsdet.h>
#include <unicode/ustring.h>

namespace zn::zentrel {

namespace {

/// By the detector's names.
constexpr std::pair<std::string_view, Resource_FormatType> encodings[] = {
    {"UTF-8", Resource_FormatType_UTF8},
    {"ISO-8859-1", Resource_FormatType_CP1252},
    {"ISO-8859-2", Resource_FormatType_iso8859_2},
    {"ISO-8859-5", Resource_FormatType_iso8859_5},
    {"ISO-8859-6", Resource_FormatType_iso8859_6},
    {"ISO-8859-7", Resource_FormatType_iso8859_7},
    {"ISO-8859-8", Resource_FormatType_iso8859_8},
    {"ISO-8859-9", Resource_FormatType_iso8859_9},
    {"windows-1250", Resource_FormatType_CP1250},
    {"windows-1251", Resource_FormatType_CP1251},
    {"windows-1252", Resource_FormatType_CP1252},
    {"windows-1253", Resource_FormatType_CP1253},
    {"windows-1254", Resource_FormatType_CP1254},
    {"windows-1255", Resource_FormatType_CP1255},
    {"windows-1256", Resource_FormatType_CP1256},
    {"Shift_JIS", Resource_FormatType_SJIS},
    {"EUC-JP", Resource_FormatType_EUC},
    {"Big5", Resource_FormatType_Big5},
    {"GB18030", Resource_FormatType_GBK},
};

/// Enough for the detector, which looks at how often letters follow one another.
constexpr std::size_t enough = 64 << 10;

bool isPlain(char c) { return static_cast<unsigned char>(c) < 0x80; }

/// The texts between apostrophes that are more than ASCII, one a line.
std::string textsOf(std::istream& file)
{
    std::string texts;
    std::string text;
    bool skipped = true; // what stands before the first apostrophe
    while (texts.size() < enough && std::getline(file, text, '\'')) {
        if (!skipped && !std::all_of(text.begin(), text.end(), isPlain))
            texts += text + "\n";
        skipped = !skipped;
    }
    return texts;
}

bool isUtf8(const std::string& text)
{
    UErrorCode error = U_ZERO_ERROR;
    u_strFromUTF8(nullptr, 0, nullptr, text.data(), static_cast<std::int32_t>(text.size()), &error);
    return error != U_INVALID_CHAR_FOUND;
}

Resource_FormatType detected(const std::string& text)
{
    UErrorCode error = U_ZERO_ERROR;
    const std::unique_ptr<UCharsetDetector, decltype(&ucsdet_close)> detector(ucsdet_open(&error), &ucsdet_close);
    ucsdet_setText(detector.get(), text.data(), static_cast<std::int32_t>(text.size()), &error);
    std::int32_t count = 0;
    const UCharsetMatch** matches = ucsdet_detectAll(detector.get(), &count, &error);
    for (std::int32_t index = 0; U_SUCCESS(error) && index < count; ++index) {
        const char* name = ucsdet_getName(matches[index], &error);
        const auto* known = std::find_if(
            std::begin(encodings), std::end(encodings), [&](const auto& row) { return name && row.first == name; });
        if (known != std::end(encodings) && known->second != Resource_FormatType_UTF8)
            return known->second;
    }
    return Resource_FormatType_CP1252;
}

} // namespace

Resource_FormatType stepEncoding(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    const std::string texts = textsOf(stream);
    return isUtf8(texts) ? Resource_FormatType_UTF8 : detected(texts);
}

} // namespace zn::zentrel
