#include "zentrel/formats/Raster.h"

#include "zentrel/formats/PdfCanvas.h"

#include <algorithm>
#include <cmath>

namespace zn::zentrel {

namespace {

constexpr double millimetersPerInch = 25.4;
/// Of a model's picture, which has no size of its own.
constexpr double screenDotsPerInch = 96.0;

/// From pixels of four bytes (blue, green, red, alpha; multiplied by alpha).
std::vector<std::uint8_t> onWhite(const std::vector<std::uint8_t>& pixels)
{
    std::vector<std::uint8_t> result(pixels.size() / 4 * 3);
    for (std::size_t from = 0, to = 0; from < pixels.size(); from += 4, to += 3) {
        const int white = 255 - pixels[from + 3];
        for (std::size_t channel = 0; channel < 3; ++channel)
            result[to + channel] = static_cast<std::uint8_t>(std::min(pixels[from + 2 - channel] + white, 255));
    }
    return result;
}

} // namespace

Raster rasterOf(const SheetPicture& sheet)
{
    Raster raster;
    const double inches = sheet.width * sheet.height / (millimetersPerInch * millimetersPerInch);
    raster.dotsPerInch = std::min(sheetDotsPerInch, std::floor(std::sqrt(mostPixels / inches)));
    const double scale = raster.dotsPerInch / millimetersPerInch;
    raster.width = std::max(static_cast<int>(std::lround(sheet.width * scale)), 1);
    raster.height = std::max(static_cast<int>(std::lround(sheet.height * scale)), 1);
    raster.isLineArt = true;
    PdfCanvas canvas("");
    canvas.beginPage(sheet.width, sheet.height);
    canvas.drawPicture(sheet, {});
    raster.pixels = onWhite(canvas.pixels(canvas.endPage(), raster.width, raster.height));
    return raster;
}

Raster rasterOf(const Model& model, const PictureView& view, const std::filesystem::path& file)
{
    return {view.width, view.height, screenDotsPerInch, false, onWhite(shadedPixels(model, view, file))};
}

} // namespace zn::zentrel
