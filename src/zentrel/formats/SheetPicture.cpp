#include "zentrel/formats/SheetPicture.h"

#include "contracts/documents/DocumentError.h"
#include "zentrel/formats/CafModel.h"
#include "zentrel/formats/Extent.h"
#include "zentrel/kernel/KernelChild.h"
#include "zentrel/model/Bounds.h"

#include <algorithm>
#include <fmt/format.h>

namespace zn::zentrel {

namespace {

/// In mm.
constexpr double frameBorder = 10.0;
constexpr double blockWidth = 110.0;
constexpr double rowHeight = 8.0;
constexpr double textHeight = 3.0;

void addRectangle(SheetPicture& picture, double left, double bottom, double right, double top)
{
    picture.strokes.push_back(
        {LineKind::Frame, {}, {{left, bottom}, {right, bottom}, {right, top}, {left, top}, {left, bottom}}, {}});
}

/// Document over sheet on the left, paper over scale on the right.
void paintTitleBlock(const Sheet& sheet, const std::filesystem::path& document, SheetPicture& picture)
{
    const double right = picture.width - frameBorder;
    const double left = std::max(frameBorder, right - blockWidth);
    const double column = right - (right - left) / 4;
    const double middle = frameBorder + rowHeight;
    const double top = frameBorder + 2 * rowHeight;
    addRectangle(picture, left, frameBorder, right, top);
    picture.strokes.push_back({LineKind::Frame, {}, {{left, middle}, {right, middle}}, {}});
    picture.strokes.push_back({LineKind::Frame, {}, {{column, frameBorder}, {column, top}}, {}});
    const double lift = (rowHeight - textHeight) / 2;
    const double indent = 2.0;
    picture.labels.push_back({{left + indent, middle + lift}, textHeight, zn::toText(document.stem().string())});
    picture.labels.push_back({{left + indent, frameBorder + lift}, textHeight, sheet.name});
    picture.labels.push_back({{column + indent, middle + lift}, textHeight, zn::toText(paperName(sheet.paper))});
    picture.labels.push_back({{column + indent, frameBorder + lift}, textHeight, zn::toText(scaleText(sheet.scale))});
}

/// Measured in a process of the kernel's.
double measuredDiagonal(const Model& model, const std::filesystem::path& file)
{
    const std::string bytes = runInChild({"measuring", file, computingLimit(countFaces(model))},
        [&] { return fmt::format("{}", diagonalOf(boundsOf(model))); });
    return std::stod(bytes);
}

void move(Stroke& stroke, const Point2& by, double factor)
{
    const auto place = [&](Point2& point) { point = {by[0] + factor * point[0], by[1] + factor * point[1]}; };
    std::for_each(stroke.points.begin(), stroke.points.end(), place);
    if (stroke.arc) {
        place(stroke.arc->center);
        stroke.arc->radius *= factor;
    }
}

} // namespace

std::string scaleText(double scale)
{
    return scale >= 1.0 ? fmt::format("{:g}:1", scale) : fmt::format("1:{:g}", 1.0 / scale);
}

SheetPicture SheetPainter::paint(const Sheet& sheet)
{
    SheetPicture picture;
    picture.name = sheet.name;
    std::tie(picture.width, picture.height) = sheet.size();
    addRectangle(picture, frameBorder, frameBorder, picture.width - frameBorder, picture.height - frameBorder);
    paintTitleBlock(sheet, m_document, picture);
    for (const View& view : sheet.views)
        paintView(view, view.scale > 0.0 ? view.scale : sheet.scale, picture);
    return picture;
}

void SheetPainter::paintView(const View& view, double scale, SheetPicture& picture)
{
    const ModelRef model = m_loader.load(view.model, view.configuration);
    std::vector<Stroke> strokes
        = project(*model, view.direction, view.up, m_tolerance / scale, view.hiddenLines, view.model);
    const Extent extent = extentOf(strokes);
    const Point2 middle{(extent.low[0] + extent.high[0]) / 2, (extent.low[1] + extent.high[1]) / 2};
    for (Stroke& stroke : strokes) {
        move(stroke, {view.x - scale * middle[0], view.y - scale * middle[1]}, scale);
        picture.strokes.push_back(std::move(stroke));
    }
}

SheetPicture scaled(SheetPicture picture, double factor)
{
    picture.width *= factor;
    picture.height *= factor;
    for (Stroke& stroke : picture.strokes)
        move(stroke, {}, factor);
    for (Label& label : picture.labels) {
        label.position = {factor * label.position[0], factor * label.position[1]};
        label.height *= factor;
    }
    return picture;
}

SheetPicture pictureOfModel(const Model& model, const std::filesystem::path& file)
{
    // Of the model's size; fine enough for the largest paper.
    constexpr double deviation = 1.0 / 20000;
    // Of the larger side, as a window leaves it around a model.
    constexpr double borderOfView = 0.04;
    const double diagonal = measuredDiagonal(model, file);
    if (!(diagonal > 0.0))
        throw DocumentError(ErrorKind::InvalidArgument, quoted(file) + " has no geometry to be shown.");
    SheetPicture picture;
    picture.strokes = project(model, gp_Dir(1, -1, 1), gp_Dir(0, 0, 1), diagonal * deviation, false, file);
    const Extent extent = extentOf(picture.strokes);
    const double border = borderOfView * std::max(extent.high[0] - extent.low[0], extent.high[1] - extent.low[1]);
    picture.width = extent.high[0] - extent.low[0] + 2 * border;
    picture.height = extent.high[1] - extent.low[1] + 2 * border;
    for (Stroke& stroke : picture.strokes)
        move(stroke, {border - extent.low[0], border - extent.low[1]}, 1.0);
    return picture;
}

std::vector<const Sheet*> sheetsNamed(
    const DrawingDocument& drawing, const std::vector<Text>& names, const std::filesystem::path& document)
{
    std::vector<const Sheet*> sheets;
    for (const Text& name : names)
        sheets.push_back(&drawing.sheets[sheetIndex(drawing, name, document)]);
    if (names.empty()) {
        for (const Sheet& sheet : drawing.sheets)
            sheets.push_back(&sheet);
    }
    return sheets;
}

} // namespace zn::zentrel
