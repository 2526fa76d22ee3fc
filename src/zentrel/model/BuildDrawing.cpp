#include "contracts/documents/DocumentError.h"
#include "zentrel/model/Bounds.h"
#include "zentrel/model/Build.h"

#include <algorithm>
#include <cmath>

namespace zn::zentrel {

namespace {

/// What stays free on a sheet, in mm: the border with its frame, the title block below, and between views.
constexpr double border = 15.0;
constexpr double titleHeight = 25.0;
constexpr double gap = 10.0;

struct StandardView {
    const char16_t* name = u"";
    gp_Dir direction;
    gp_Dir up;
    int column = 0; // from the left
    int row = 0;    // from below
};

const StandardView standardViews[] = {
    {u"Front", gp_Dir(0, -1, 0), gp_Dir(0, 0, 1), 0, 0},
    {u"Top", gp_Dir(0, 0, 1), gp_Dir(0, 1, 0), 0, 1},
    {u"Right", gp_Dir(1, 0, 0), gp_Dir(0, 0, 1), 1, 0},
    {u"Isometric", gp_Dir(1, -1, 1), gp_Dir(0, 0, 1), 1, 1},
};

/// Width and height of a box as seen from `direction`.
std::pair<double, double> projectedSize(const Bnd_Box& box, const gp_Dir& direction, const gp_Dir& up)
{
    const gp_Dir right = up.Crossed(direction);
    const gp_Dir upright = direction.Crossed(right);
    const gp_XYZ size = box.CornerMax().XYZ() - box.CornerMin().XYZ();
    const auto extent = [&](const gp_Dir& axis) {
        return std::abs(axis.X()) * size.X() + std::abs(axis.Y()) * size.Y() + std::abs(axis.Z()) * size.Z();
    };
    return {extent(right), extent(upright)};
}

/// The largest of 1, 2 and 5 times a power of ten that isn't above `limit`.
double standardScale(double limit)
{
    const double decade = std::pow(10.0, std::floor(std::log10(limit)));
    for (const double step : {5.0, 2.0}) {
        // A limit that is a standard scale but for rounding counts as one.
        if (step * decade <= limit * (1.0 + 1e-9))
            return step * decade;
    }
    return decade;
}

void layOut(Sheet& sheet, const DrawInput& input, const Bnd_Box& box)
{
    double columns[2] = {};
    double rows[2] = {};
    for (const StandardView& standard : standardViews) {
        const auto [width, height] = projectedSize(box, standard.direction, standard.up);
        columns[standard.column] = std::max(columns[standard.column], width);
        rows[standard.row] = std::max(rows[standard.row], height);
    }
    const auto [sheetWidth, sheetHeight] = sheet.size();
    const double freeWidth = sheetWidth - 2 * border - 3 * gap;
    const double freeHeight = sheetHeight - 2 * border - titleHeight - 3 * gap;
    sheet.scale = standardScale(std::min(freeWidth / (columns[0] + columns[1]), freeHeight / (rows[0] + rows[1])));
    // What the standard scale leaves over is shared by the gaps.
    const double gapX = gap + (freeWidth - sheet.scale * (columns[0] + columns[1])) / 3;
    const double gapY = gap + (freeHeight - sheet.scale * (rows[0] + rows[1])) / 3;
    const double x[2] = {
        border + gapX + sheet.scale * columns[0] / 2, border + 2 * gapX + sheet.scale * (columns[0] + columns[1] / 2)};
    const double y[2] = {border + titleHeight + gapY + sheet.scale * rows[0] / 2,
        border + titleHeight + 2 * gapY + sheet.scale * (rows[0] + rows[1] / 2)};
    for (const StandardView& standard : standardViews) {
        View& view = sheet.views.emplace_back();
        view.name = standard.name;
        view.model = std::filesystem::absolute(input.model).lexically_normal();
        view.configuration = input.configuration;
        view.direction = standard.direction;
        view.up = standard.up;
        view.x = x[standard.column];
        view.y = y[standard.row];
        view.hiddenLines = standard.name != std::u16string_view(u"Isometric");
    }
}

} // namespace

void draw(const std::filesystem::path& output, const std::vector<DrawInput>& sheets)
{
    if (sheets.empty())
        throw DocumentError(ErrorKind::InvalidArgument, "The drawing " + quoted(output) + " needs at least one sheet.");
    DrawingDocument drawing;
    ModelLoader loader;
    for (const DrawInput& input : sheets) {
        Sheet& sheet = drawing.sheets.emplace_back();
        sheet.name = input.name;
        sheet.paper = input.paper;
        sheet.landscape = input.landscape;
        const Bnd_Box box = boundsOf(*loader.load(input.model, input.configuration));
        if (!(diagonalOf(box) > 0.0))
            throw DocumentError(
                ErrorKind::InvalidArgument, "The model " + quoted(input.model) + " has no geometry to draw.");
        layOut(sheet, input, box);
    }
    writeDocument(drawing, output);
}

} // namespace zn::zentrel
