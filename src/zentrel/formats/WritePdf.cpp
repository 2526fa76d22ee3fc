#include "zentrel/formats/SheetPicture.h"
#include "zentrel/formats/WriteDrawing.h"
#include "zentrel/model/AtomicFile.h"
#include "zentrel/model/DocumentError.h"

#include <algorithm>
#include <cairo-pdf.h>
#include <fmt/format.h>
#include <memory>

namespace zentrel {

namespace {

constexpr double pointsPerMillimeter = 72.0 / 25.4;
/// Of the em square, in fonts of the common kind: a label's height is that of its capitals.
constexpr double capitalFraction = 0.72;
/// Distance of header and footer from the paper's edge, in mm.
constexpr double marginText = 4.0;
constexpr double dashes[] = {2.0, 1.0};

/// What a curve may be off on paper, in mm.
constexpr double tolerance = 0.02;
constexpr double fineTolerance = 0.004;

struct Pen {
    double width; // mm
    Color color;
};

/// A colour that can be told from white paper: a light one is darkened.
Color onPaper(Color color)
{
    const double light = 0.299 * color.red + 0.587 * color.green + 0.114 * color.blue;
    constexpr double lightest = 0.5;
    if (light > lightest) {
        const double factor = lightest / light;
        color = {color.red * factor, color.green * factor, color.blue * factor};
    }
    return color;
}

Pen penOf(const Stroke& stroke, const PdfOptions& options)
{
    constexpr double uniform = 0.25;
    const double weight = stroke.kind == LineKind::Frame ? 0.5 : stroke.kind == LineKind::Visible ? 0.35 : 0.18;
    const bool colored = options.color && stroke.color;
    return {options.lineWeights ? weight : uniform, colored ? onPaper(*stroke.color) : Color{}};
}

void drawStroke(cairo_t* cairo, const Stroke& stroke, const PdfOptions& options)
{
    const Pen pen = penOf(stroke, options);
    cairo_set_source_rgb(cairo, pen.color.red, pen.color.green, pen.color.blue);
    cairo_set_line_width(cairo, pen.width);
    cairo_set_dash(cairo, dashes, stroke.kind == LineKind::Hidden ? 2 : 0, 0.0);
    cairo_new_path(cairo);
    if (stroke.arc) {
        const Arc& arc = *stroke.arc;
        cairo_arc(cairo, arc.center[0], arc.center[1], arc.radius, arc.start, arc.end);
    }
    for (const Point2& point : stroke.points) {
        if (!stroke.arc)
            cairo_line_to(cairo, point[0], point[1]);
    }
    cairo_stroke(cairo);
}

enum class Align { Left, Center };

void drawText(cairo_t* cairo, Point2 position, double height, const Text& text, Align align)
{
    const std::string utf8 = zn::toUtf8(text);
    cairo_save(cairo);
    cairo_translate(cairo, position[0], position[1]);
    cairo_scale(cairo, 1.0, -1.0); // letters stand upright where the sheet's Y goes up
    cairo_select_font_face(cairo, "sans-serif", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(cairo, height / capitalFraction);
    cairo_text_extents_t extents;
    cairo_text_extents(cairo, utf8.c_str(), &extents);
    cairo_move_to(cairo, align == Align::Center ? -extents.x_advance / 2 : 0.0, 0.0);
    cairo_show_text(cairo, utf8.c_str());
    cairo_restore(cairo);
}

void drawPage(cairo_t* cairo, const SheetPicture& picture, const PdfOptions& options)
{
    cairo_save(cairo);
    cairo_scale(cairo, pointsPerMillimeter, -pointsPerMillimeter);
    cairo_translate(cairo, 0.0, -picture.height);
    cairo_set_line_cap(cairo, CAIRO_LINE_CAP_ROUND);
    cairo_set_line_join(cairo, CAIRO_LINE_JOIN_ROUND);
    for (const Stroke& stroke : picture.strokes)
        drawStroke(cairo, stroke, options);
    cairo_set_source_rgb(cairo, 0.0, 0.0, 0.0);
    for (const Label& label : picture.labels)
        drawText(cairo, label.position, label.height, label.text, Align::Left);
    cairo_restore(cairo);
}

void drawHeaderFooter(cairo_t* cairo, const SheetPicture& picture, const std::filesystem::path& document,
    std::size_t page, std::size_t pages)
{
    constexpr double height = 2.5;
    cairo_save(cairo);
    cairo_scale(cairo, pointsPerMillimeter, -pointsPerMillimeter);
    cairo_translate(cairo, 0.0, -picture.height);
    drawText(cairo, {picture.width / 2, picture.height - marginText - height}, height,
        zn::toText(document.filename().string()), Align::Center);
    drawText(cairo, {picture.width / 2, marginText}, height, zn::toText(fmt::format("Page {} of {}", page, pages)),
        Align::Center);
    cairo_restore(cairo);
}

cairo_status_t appendBytes(void* closure, const unsigned char* data, unsigned int length)
{
    static_cast<std::string*>(closure)->append(reinterpret_cast<const char*>(data), length);
    return CAIRO_STATUS_SUCCESS;
}

std::string pdfOf(const std::vector<SheetPicture>& pictures, const std::filesystem::path& document,
    const std::filesystem::path& file, const PdfOptions& options)
{
    std::string bytes;
    cairo_surface_t* surface = cairo_pdf_surface_create_for_stream(appendBytes, &bytes, 1.0, 1.0);
    cairo_pdf_surface_set_metadata(surface, CAIRO_PDF_METADATA_TITLE, document.stem().c_str());
    cairo_pdf_surface_set_metadata(surface, CAIRO_PDF_METADATA_CREATOR, "ZENTREL");
    cairo_t* cairo = cairo_create(surface);
    std::size_t page = 0;
    for (const SheetPicture& picture : pictures) {
        // A page's size counts from its first mark on.
        cairo_pdf_surface_set_size(surface, picture.width * pointsPerMillimeter, picture.height * pointsPerMillimeter);
        drawPage(cairo, picture, options);
        if (options.headerFooter)
            drawHeaderFooter(cairo, picture, document, ++page, pictures.size());
        cairo_show_page(cairo);
    }
    const cairo_status_t drawn = cairo_status(cairo);
    cairo_destroy(cairo);
    cairo_surface_finish(surface);
    const cairo_status_t finished = cairo_surface_status(surface);
    cairo_surface_destroy(surface);
    const cairo_status_t status = drawn != CAIRO_STATUS_SUCCESS ? drawn : finished;
    if (status != CAIRO_STATUS_SUCCESS)
        throw DocumentError(ErrorKind::Kernel,
            "The file " + quoted(file) + " can't be written: " + cairo_status_to_string(status) + ".");
    return bytes;
}

} // namespace

void writePdf(const DrawingDocument& drawing, const std::filesystem::path& document, const std::filesystem::path& file,
    const PdfOptions& options)
{
    SheetPainter painter(document, options.highQuality ? fineTolerance : tolerance);
    std::vector<SheetPicture> pictures;
    for (const Sheet* sheet : sheetsNamed(drawing, options.sheets, document))
        pictures.push_back(painter.paint(*sheet));
    writeWhole(file, pdfOf(pictures, document, file, options));
}

} // namespace zentrel
