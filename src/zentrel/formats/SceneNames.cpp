#include "zentrel/formats/SceneNames.h"

#include <cctype>

namespace zn::zentrel {

std::string SceneNames::next(const char* letter, const Text& name)
{
    std::string result = letter + std::to_string(++m_number) + "_";
    for (const char character : zn::toUtf8(name)) {
        const auto byte = static_cast<unsigned char>(character);
        const bool plain = byte >= 0x80 || std::isalnum(byte);
        result += plain ? character : '_';
    }
    return result;
}

} // namespace zn::zentrel
