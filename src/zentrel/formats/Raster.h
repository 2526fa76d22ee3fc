#pragma once

#include "zentrel/formats/ShadedPicture.h"
#include "zentrel/formats/SheetPicture.h"

#include <cstdint>
#include <vector>

namespace zn::zentrel {

/// A picture on white paper: three bytes a pixel (red, green, blue), row by row from above.
struct Raster {
    int width = 0;
    int height = 0;
    double dotsPerInch = 0.0;
    bool isLineArt = false; ///< lines and letters, which black and white shall keep whole
    std::vector<std::uint8_t> pixels;
};

/// What a picture of a sheet in its own size has; less for a sheet that would get more than `mostPixels`.
inline constexpr double sheetDotsPerInch = 200.0;
inline constexpr double mostPixels = 60e6;

/// A sheet in its own size, colours and line weights as in a PDF.
Raster rasterOf(const SheetPicture& sheet);

/// The model as shaded surfaces; see `shadedPicture`.
Raster rasterOf(const Model& model, const PictureView& view, const std::filesystem::path& file);

} // namespace zn::zentrel
