#pragma once

#include "zentrel/formats/SheetPicture.h"

#include <cairo.h>

namespace zn::zentrel {

/// How strokes look on paper.
struct Ink {
    bool color = true;       ///< bodies' own colours, light ones darkened; else all black
    bool lineWeights = true; ///< frame 0.5 mm, visible 0.35 mm, hidden 0.18 mm; else all 0.25 mm
};

enum class Align { Left, Center, Right };

/// A PDF in memory, page after page. Lengths are mm, places count from the page's lower left corner upwards.
class PdfCanvas {
public:
    explicit PdfCanvas(const std::string& title);
    PdfCanvas(const PdfCanvas&) = delete;
    PdfCanvas& operator=(const PdfCanvas&) = delete;
    ~PdfCanvas();

    /// Begins the content of a page of that size; what is drawn from now on stands on it.
    void beginPage(double width, double height);
    /// Ends it. Gives its number, from 0.
    std::size_t endPage();
    /// Adds a page with the content of that number, which is stored once for all its pages.
    void addPage(std::size_t content);
    /// The content on white, in so many pixels of four bytes (blue, green, red, alpha), row by row from above.
    std::vector<std::uint8_t> pixels(std::size_t content, int width, int height);

    /// With its lower left corner at `corner`.
    void drawPicture(const SheetPicture& picture, const Ink& ink, Point2 corner = {});
    /// `height` is that of a capital letter, `position` the left end, middle or right end of the base line. A text
    /// that is longer than `widest` (if that isn't 0) is drawn smaller.
    void drawText(Point2 position, double height, const Text& text, Align align = Align::Left, double widest = 0.0);
    /// Nothing is drawn outside of this rectangle until the content ends.
    void clip(Point2 corner, double width, double height);

    /// The bytes; nothing can be drawn any more. `file` is for the sentence of the `DocumentError` that is raised.
    std::string finish(const std::filesystem::path& file);

private:
    void drawStroke(const Stroke& stroke, const Ink& ink);
    void noteStatus(cairo_status_t status);

    struct Content {
        cairo_surface_t* surface; ///< in points, as the PDF
        double width;
        double height;
    };

    std::string m_bytes;
    cairo_surface_t* m_pdf;
    cairo_t* m_pages; ///< draws on the PDF
    std::vector<Content> m_contents;
    cairo_t* m_page = nullptr; ///< draws on the last content
    cairo_status_t m_failure = CAIRO_STATUS_SUCCESS;
};

} // namespace zn::zentrel
