#include "zentrel/formats/PrintPages.h"

#include "contracts/documents/DocumentError.h"
#include "zentrel/formats/PdfCanvas.h"

#include <algorithm>
#include <fmt/format.h>

namespace zn::zentrel {

namespace {

/// In mm. Header and footer keep off the paper's edge whatever the margins are.
constexpr double letterHeight = 2.5;
constexpr double lineDistance = 4.5;
constexpr double textFromEdge = 4.0;
constexpr double textFromPicture = 2.0;
constexpr double smallestPlace = 1.0;

struct Place {
    Point2 corner{}; ///< lower left
    double width = 0.0;
    double height = 0.0;
};

std::vector<Text> linesOf(const Text& text)
{
    std::vector<Text> lines(1);
    for (const char16_t unit : text) {
        if (unit == u'\n')
            lines.emplace_back();
        else if (unit != u'\r')
            lines.back().push_back(unit);
    }
    return lines;
}

std::size_t lineCount(const PageTexts& texts)
{
    if (texts.left.empty() && texts.center.empty() && texts.right.empty())
        return 0;
    return std::max({linesOf(texts.left).size(), linesOf(texts.center).size(), linesOf(texts.right).size()});
}

/// From the paper's edge to the picture, with `lines` of text in between.
double edgeHeight(double margin, std::size_t lines)
{
    if (lines == 0)
        return margin;
    return std::max(margin, textFromEdge) + letterHeight + lineDistance * static_cast<double>(lines - 1)
        + textFromPicture;
}

Place placeOf(const PageLayout& layout)
{
    const double top = edgeHeight(layout.top, lineCount(layout.header));
    const double bottom = edgeHeight(layout.bottom, lineCount(layout.footer));
    const Place place{{layout.left, bottom}, layout.width - layout.left - layout.right, layout.height - top - bottom};
    if (!(place.width >= smallestPlace && place.height >= smallestPlace))
        throw DocumentError(ErrorKind::InvalidArgument,
            fmt::format("The margins ({:g} mm left, {:g} mm right, {:g} mm top, {:g} mm bottom) with header and footer "
                        "leave no room on paper of {:g} x {:g} mm.",
                layout.left, layout.right, layout.top, layout.bottom, layout.width, layout.height));
    return place;
}

/// `top` is where the capitals of the first line end.
void drawTexts(PdfCanvas& canvas, const PageTexts& texts, const PageLayout& layout, double top)
{
    const double left = std::max(layout.left, textFromEdge);
    const double right = layout.width - std::max(layout.right, textFromEdge);
    const struct {
        const Text& text;
        double x;
        Align align;
    } sections[] = {{texts.left, left, Align::Left}, {texts.center, (left + right) / 2, Align::Center},
        {texts.right, right, Align::Right}};
    // A little less than a third, so that neighbours don't touch.
    const double widest = std::max(right - left, smallestPlace) / 3.2;
    for (const auto& section : sections) {
        double y = top - letterHeight;
        for (const Text& line : linesOf(section.text)) {
            canvas.drawText({section.x, y}, letterHeight, line, section.align, widest);
            y -= lineDistance;
        }
    }
}

void drawHeaderAndFooter(PdfCanvas& canvas, const PageLayout& layout)
{
    drawTexts(canvas, layout.header, layout, layout.height - std::max(layout.top, textFromEdge));
    const std::size_t lines = std::max<std::size_t>(lineCount(layout.footer), 1);
    drawTexts(canvas, layout.footer, layout,
        std::max(layout.bottom, textFromEdge) + letterHeight + lineDistance * static_cast<double>(lines - 1));
}

void drawPage(PdfCanvas& canvas, const PrintPage& page)
{
    const Place place = placeOf(page.layout);
    const SheetPicture& picture = page.picture;
    const double scale = page.layout.scale > 0.0 ? page.layout.scale
                                                 : std::min(place.width / picture.width, place.height / picture.height);
    const SheetPicture drawn = scaled(picture, scale);
    drawHeaderAndFooter(canvas, page.layout);
    // Room for the outer half of a frame's line.
    constexpr double lineMargin = 0.5;
    canvas.clip({place.corner[0] - lineMargin, place.corner[1] - lineMargin}, place.width + 2 * lineMargin,
        place.height + 2 * lineMargin);
    canvas.drawPicture(drawn, {},
        {place.corner[0] + (place.width - drawn.width) / 2, place.corner[1] + (place.height - drawn.height) / 2});
}

} // namespace

std::string printedPdf(
    const std::vector<PrintPage>& pages, const PrintCopies& copies, const std::filesystem::path& document)
{
    PdfCanvas canvas(document.stem().string());
    for (const PrintPage& page : pages) {
        canvas.beginPage(page.layout.width, page.layout.height);
        drawPage(canvas, page);
        canvas.endPage();
    }
    const auto pageCount = pages.size() * static_cast<std::size_t>(copies.count);
    for (std::size_t i = 0; i < pageCount; ++i)
        canvas.addPage(copies.collate ? i % pages.size() : i / static_cast<std::size_t>(copies.count));
    return canvas.finish(document);
}

} // namespace zn::zentrel
