#include "zentrel/formats/PdfCanvas.h"
#include "zentrel/formats/WriteDrawing.h"
#include "zentrel/model/WholeFile.h"

#include <fmt/format.h>

namespace zn::zentrel {

namespace {

/// Distance of header and footer from the paper's edge, and the height of their letters, in mm.
constexpr double marginText = 4.0;
constexpr double letterHeight = 2.5;

/// A4, for models, and what stays free at its edges, in mm.
constexpr double longSide = 297.0, shortSide = 210.0, paperBorder = 12.0;

/// What a curve may be off on paper, in mm.
constexpr double tolerance = 0.02;
constexpr double fineTolerance = 0.004;

void drawHeaderFooter(PdfCanvas& canvas, const SheetPicture& picture, const std::filesystem::path& document,
    std::size_t page, std::size_t pages)
{
    const double middle = picture.width / 2;
    canvas.drawText({middle, picture.height - marginText - letterHeight}, letterHeight,
        zn::toText(document.filename().string()), Align::Center);
    canvas.drawText(
        {middle, marginText}, letterHeight, zn::toText(fmt::format("Page {} of {}", page, pages)), Align::Center);
}

} // namespace

void writePdf(const Model& model, const std::filesystem::path& document, const std::filesystem::path& file,
    const PdfOptions& options)
{
    SheetPicture picture = pictureOfModel(model, document);
    const bool isUpright = picture.height > picture.width;
    const double width = isUpright ? shortSide : longSide, height = isUpright ? longSide : shortSide;
    const double factor
        = std::min((width - 2 * paperBorder) / picture.width, (height - 2 * paperBorder) / picture.height);
    picture = scaled(std::move(picture), factor);
    PdfCanvas canvas(document.stem().string());
    canvas.beginPage(width, height);
    canvas.drawPicture(picture, {.color = options.color, .lineWeights = options.lineWeights},
        {(width - picture.width) / 2, (height - picture.height) / 2});
    if (options.headerFooter)
        drawHeaderFooter(canvas, {{}, width, height, {}, {}}, document, 1, 1);
    canvas.addPage(canvas.endPage());
    writeWhole(file, canvas.finish(file));
}

void writePdf(const DrawingDocument& drawing, const std::filesystem::path& document, const std::filesystem::path& file,
    const PdfOptions& options)
{
    SheetPainter painter(document, options.highQuality ? fineTolerance : tolerance);
    PdfCanvas canvas(document.stem().string());
    const auto sheets = sheetsNamed(drawing, options.sheets, document);
    std::size_t page = 0;
    for (const Sheet* sheet : sheets) {
        const SheetPicture picture = painter.paint(*sheet);
        canvas.beginPage(picture.width, picture.height);
        canvas.drawPicture(picture, {.color = options.color, .lineWeights = options.lineWeights});
        if (options.headerFooter)
            drawHeaderFooter(canvas, picture, document, ++page, sheets.size());
        canvas.addPage(canvas.endPage());
    }
    writeWhole(file, canvas.finish(file));
}

} // namespace zn::zentrel
