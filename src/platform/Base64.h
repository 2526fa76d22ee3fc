#pragma once

#include <string>
#include <string_view>

namespace zn {

/// The bytes as letters, digits, "+", "/" and "=", in one line.
std::string toBase64(std::string_view bytes);

/// The bytes again. Raises `std::runtime_error` for other characters and for what is no whole number of groups.
std::string fromBase64(std::string_view letters);

} // namespace zn
