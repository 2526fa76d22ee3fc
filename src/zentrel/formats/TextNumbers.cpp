#include "zentrel/formats/TextNumbers.h"

#include "contracts/documents/DocumentError.h"

#include <initializer_list>
#include <string_view>

namespace zn::zentrel {

namespace {

using namespace std::string_view_literals;

bool endsNumber(char c) { return c == ',' || c == ')' || c == ';'; }
bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// The kernel pads the word to a number's width, so blanks come before it; a name holds such a thing hardly ever.
bool holdsWord(std::string_view text, std::string_view word)
{
    for (std::size_t at = text.find(word); at != text.npos; at = text.find(word, at + 1)) {
        const std::size_t end = at + word.size();
        if (at >= 4 && text.substr(at - 4, 3) == "   "sv && end < text.size() && endsNumber(text[end]))
            return true;
    }
    return false;
}

bool holdsHuge(std::string_view text)
{
    for (std::size_t at = text.find("E+"sv); at != text.npos; at = text.find("E+"sv, at + 1)) {
        const std::string_view exponent = text.substr(at + 2, 3);
        if (exponent.size() == 3 && isDigit(exponent[0]) && isDigit(exponent[1]) && isDigit(exponent[2]))
            return true;
    }
    return false;
}

} // namespace

TextNumbers numbersOf(const std::string& text)
{
    for (const std::string_view word : {"INF"sv, "NAN"sv})
        if (holdsWord(text, word))
            return TextNumbers::None;
    return holdsHuge(text) ? TextNumbers::Huge : TextNumbers::Plain;
}

std::string requireNumbers(std::string text, const std::filesystem::path& file)
{
    if (numbersOf(text) == TextNumbers::None)
        throw DocumentError(ErrorKind::Kernel,
            "The file " + quoted(file) + " can't be written: points of the model lie beyond all measure.");
    return text;
}

} // namespace zn::zentrel
