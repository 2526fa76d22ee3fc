#pragma once

#include <string>
#include <string_view>

namespace zn {

/// The text, packed into letters, digits, "+", "/" and "=". What it has in common with `base` costs next to nothing.
std::string packText(std::string_view text, std::string_view base = {});

/// The text that `packText` got; with the same base. Raises `std::runtime_error` if these bytes were never packed so.
std::string unpackText(std::string_view packed, std::string_view base = {});

} // namespace zn
