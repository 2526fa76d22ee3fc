#include "arkin/commands/frame/ShellWord.h"

#include <algorithm>

namespace zn::arkin {

std::string shellWord(const std::string& text)
{
    const auto isPlain = [](char c) {
        const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
        return letter || static_cast<unsigned char>(c) >= 0x80
            || std::string_view("/._-+:@%,").find(c) != std::string::npos;
    };
    if (!text.empty() && std::all_of(text.begin(), text.end(), isPlain))
        return text;
    std::string word = "'";
    for (const char c : text)
        word += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return word + "'";
}

} // namespace zn::arkin
