#pragma once

#include "zentrel/formats/SheetPicture.h"

#include <cstdint>
#include <string>
#include <vector>

namespace zn::zentrel {

/// A PNG of pixels of four bytes (blue, green, red, alpha; multiplied by alpha), row by row from above. Raises
/// `std::bad_alloc`.
std::string pngOf(std::vector<std::uint8_t> pixels, int width, int height);

/// A sheet in white as a PNG that fits the width and height in pixels, colours and line weights as in a PDF.
std::string pngOf(const SheetPicture& sheet, int width, int height);

} // namespace zn::zentrel
