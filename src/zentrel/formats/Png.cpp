#include "zentrel/formats/Png.h"

#include "zentrel/formats/PdfCanvas.h"

#include <new>

namespace zn::zentrel {

namespace {

cairo_status_t appendBytes(void* closure, const unsigned char* data, unsigned int length)
{
    static_cast<std::string*>(closure)->append(reinterpret_cast<const char*>(data), length);
    return CAIRO_STATUS_SUCCESS;
}

} // namespace

std::string pngOf(std::vector<std::uint8_t> pixels, int width, int height)
{
    std::string bytes;
    cairo_surface_t* const image
        = cairo_image_surface_create_for_data(pixels.data(), CAIRO_FORMAT_ARGB32, width, height, 4 * width);
    const cairo_status_t status = cairo_surface_write_to_png_stream(image, appendBytes, &bytes);
    cairo_surface_destroy(image);
    if (status != CAIRO_STATUS_SUCCESS)
        throw std::bad_alloc(); // the only failure of pixels in memory
    return bytes;
}

std::string pngOf(const SheetPicture& sheet, int width, int height)
{
    PdfCanvas canvas("");
    canvas.beginPage(sheet.width, sheet.height);
    canvas.drawPicture(sheet, {});
    const double scale = std::min(width / sheet.width, height / sheet.height);
    const int columns = std::max(static_cast<int>(sheet.width * scale), 1);
    const int rows = std::max(static_cast<int>(sheet.height * scale), 1);
    return pngOf(canvas.pixels(canvas.endPage(), columns, rows), columns, rows);
}

} // namespace zn::zentrel
