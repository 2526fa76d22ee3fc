#include "zentrel/formats/PdfCanvas.h"

#include "contracts/documents/DocumentError.h"
#include "zentrel/formats/PageText.h"

#include <cairo-pdf.h>
#include <utility>

namespace zn::zentrel {

namespace {

constexpr double pointsPerMillimeter = 72.0 / 25.4;
constexpr double dashes[] = {2.0, 1.0};

struct Pen {
    double width = 0; // mm
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

Pen penOf(const Stroke& stroke, const Ink& ink)
{
    constexpr double uniform = 0.25;
    const double weight = stroke.kind == LineKind::Frame ? 0.5 : stroke.kind == LineKind::Visible ? 0.35 : 0.18;
    const bool colored = ink.color && stroke.color;
    return {ink.lineWeights ? weight : uniform, colored ? onPaper(*stroke.color) : Color{}};
}

cairo_status_t appendBytes(void* closure, const unsigned char* data, unsigned int length)
{
    static_cast<std::string*>(closure)->append(reinterpret_cast<const char*>(data), length);
    return CAIRO_STATUS_SUCCESS;
}

} // namespace

PdfCanvas::PdfCanvas(const std::string& title)
    : m_pdf(cairo_pdf_surface_create_for_stream(appendBytes, &m_bytes, 1.0, 1.0))
    , m_pages(cairo_create(m_pdf))
{
    cairo_pdf_surface_set_metadata(m_pdf, CAIRO_PDF_METADATA_TITLE, title.c_str());
    cairo_pdf_surface_set_metadata(m_pdf, CAIRO_PDF_METADATA_CREATOR, "ZENTREL");
}

PdfCanvas::~PdfCanvas()
{
    // The last bytes are written when the surface ends.
    cairo_destroy(m_page);
    for (const Content& content : m_contents)
        cairo_surface_destroy(content.surface);
    cairo_destroy(m_pages);
    cairo_surface_destroy(m_pdf);
}

void PdfCanvas::noteStatus(cairo_status_t status)
{
    if (m_failure == CAIRO_STATUS_SUCCESS)
        m_failure = status;
}

void PdfCanvas::beginPage(double width, double height)
{
    const cairo_rectangle_t extents{0.0, 0.0, width * pointsPerMillimeter, height * pointsPerMillimeter};
    m_contents.push_back(
        {cairo_recording_surface_create(CAIRO_CONTENT_COLOR_ALPHA, &extents), extents.width, extents.height});
    m_page = cairo_create(m_contents.back().surface);
    cairo_translate(m_page, 0.0, extents.height);
    cairo_scale(m_page, pointsPerMillimeter, -pointsPerMillimeter);
    cairo_set_line_cap(m_page, CAIRO_LINE_CAP_ROUND);
    cairo_set_line_join(m_page, CAIRO_LINE_JOIN_ROUND);
}

std::size_t PdfCanvas::endPage()
{
    noteStatus(cairo_status(m_page));
    cairo_destroy(std::exchange(m_page, nullptr));
    return m_contents.size() - 1;
}

void PdfCanvas::addPage(std::size_t content)
{
    const Content& page = m_contents[content];
    // A page's size counts from its first mark on.
    cairo_pdf_surface_set_size(m_pdf, page.width, page.height);
    cairo_set_source_surface(m_pages, page.surface, 0.0, 0.0);
    cairo_paint(m_pages);
    cairo_show_page(m_pages);
}

std::vector<std::uint8_t> PdfCanvas::pixels(std::size_t content, int width, int height)
{
    const Content& page = m_contents[content];
    std::vector<std::uint8_t> bytes(4 * static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    cairo_surface_t* const image
        = cairo_image_surface_create_for_data(bytes.data(), CAIRO_FORMAT_ARGB32, width, height, 4 * width);
    cairo_t* const pen = cairo_create(image);
    cairo_set_source_rgb(pen, 1.0, 1.0, 1.0);
    cairo_paint(pen);
    cairo_scale(pen, width / page.width, height / page.height);
    cairo_set_source_surface(pen, page.surface, 0.0, 0.0);
    cairo_paint(pen);
    noteStatus(cairo_status(pen));
    cairo_destroy(pen);
    cairo_surface_flush(image);
    cairo_surface_destroy(image);
    return bytes;
}

void PdfCanvas::drawStroke(const Stroke& stroke, const Ink& ink)
{
    const Pen pen = penOf(stroke, ink);
    cairo_set_source_rgb(m_page, pen.color.red, pen.color.green, pen.color.blue);
    cairo_set_line_width(m_page, pen.width);
    cairo_set_dash(m_page, dashes, stroke.kind == LineKind::Hidden ? 2 : 0, 0.0);
    cairo_new_path(m_page);
    if (stroke.arc) {
        const Arc& arc = *stroke.arc;
        cairo_arc(m_page, arc.center[0], arc.center[1], arc.radius, arc.start, arc.end);
    }
    for (const Point2& point : stroke.points) {
        if (!stroke.arc)
            cairo_line_to(m_page, point[0], point[1]);
    }
    cairo_stroke(m_page);
}

void PdfCanvas::drawPicture(const SheetPicture& picture, const Ink& ink, Point2 corner)
{
    cairo_save(m_page);
    cairo_translate(m_page, corner[0], corner[1]);
    for (const Stroke& stroke : picture.strokes)
        drawStroke(stroke, ink);
    for (const Label& label : picture.labels)
        drawText(label.position, label.height, label.text);
    cairo_restore(m_page);
}

void PdfCanvas::drawText(Point2 position, double height, const Text& text, Align align, double widest)
{
    cairo_save(m_page);
    cairo_set_source_rgb(m_page, 0.0, 0.0, 0.0);
    cairo_translate(m_page, position[0], position[1]);
    cairo_scale(m_page, 1.0, -1.0); // letters stand upright where the page's Y goes up
    const PageText letters(m_page, zn::toUtf8(text), height);
    const double width = letters.width();
    if (widest > 0.0 && width > widest)
        cairo_scale(m_page, widest / width, widest / width);
    const double part = align == Align::Left ? 0.0 : align == Align::Center ? 0.5 : 1.0;
    cairo_move_to(m_page, -part * width, 0.0);
    letters.show();
    cairo_restore(m_page);
}

void PdfCanvas::clip(Point2 corner, double width, double height)
{
    cairo_new_path(m_page);
    cairo_rectangle(m_page, corner[0], corner[1], width, height);
    cairo_clip(m_page);
}

std::string PdfCanvas::finish(const std::filesystem::path& file)
{
    noteStatus(cairo_status(m_pages));
    cairo_surface_finish(m_pdf);
    noteStatus(cairo_surface_status(m_pdf));
    if (m_failure != CAIRO_STATUS_SUCCESS)
        throw DocumentError(ErrorKind::Kernel,
            "The file " + quoted(file) + " can't be written: " + cairo_status_to_string(m_failure) + ".");
    return std::move(m_bytes);
}

} // namespace zn::zentrel
