#include "platform/Base64.h"

#include <openssl/evp.h>
#include <stdexcept>

namespace zn {

std::string toBase64(std::string_view bytes)
{
    std::string letters(4 * ((bytes.size() + 2) / 3) + 1, '\0');
    const int size = EVP_EncodeBlock(reinterpret_cast<unsigned char*>(letters.data()),
        reinterpret_cast<const unsigned char*>(bytes.data()), static_cast<int>(bytes.size()));
    letters.resize(static_cast<std::size_t>(size));
    return letters;
}

std::string fromBase64(std::string_view letters)
{
    std::string bytes(3 * (letters.size() / 4), '\0');
    const int size = EVP_DecodeBlock(reinterpret_cast<unsigned char*>(bytes.data()),
        reinterpret_cast<const unsigned char*>(letters.data()), static_cast<int>(letters.size()));
    if (size < 0 || letters.size() % 4 != 0)
        throw std::runtime_error("These letters stand for no bytes.");
    // The last group's filling is left as zeros behind the bytes.
    const auto filling = letters.size() - letters.substr(0, letters.find_last_not_of('=') + 1).size();
    bytes.resize(static_cast<std::size_t>(size) - filling);
    return bytes;
}

} // namespace zn
