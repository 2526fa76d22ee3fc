#include "zentrel/formats/SheetPicture.h"
#include "zentrel/formats/WriteDrawing.h"
#include "zentrel/model/WholeFile.h"

#include <cmath>
#include <fmt/format.h>
#include <iterator>

namespace zn::zentrel {

namespace {

/// What a curve may be off, in mm of paper.
constexpr double tolerance = 0.01;
/// Between sheets that stand side by side, in mm.
constexpr double sheetGap = 20.0;

/// Layers by the kind of line; the texts have their own.
struct Layer {
    const char* name;
    int color; // the format's colour index
    const char* lineType;
};

constexpr Layer visibleLayer = {"VISIBLE", 7, "CONTINUOUS"};
constexpr Layer hiddenLayer = {"HIDDEN", 8, "DASHED"};
constexpr Layer frameLayer = {"FRAME", 7, "CONTINUOUS"};
constexpr Layer textLayer = {"TEXT", 7, "CONTINUOUS"};

const Layer& layerOf(LineKind kind)
{
    return kind == LineKind::Visible ? visibleLayer : kind == LineKind::Hidden ? hiddenLayer : frameLayer;
}

/// Text of the format's release 12: pairs of a group code and a value, a line each.
class DxfText {
public:
    void pair(int code, const std::string& value)
    {
        fmt::format_to(std::back_inserter(m_text), "{:3}\r\n{}\r\n", code, value);
    }
    void pair(int code, int value) { pair(code, std::to_string(value)); }
    void number(int code, double value) { pair(code, fmt::format("{:.6f}", value)); }
    /// `code` is that of X: 10, 11 …
    void point(int code, const Point2& point)
    {
        number(code, point[0]);
        number(code + 10, point[1]);
        number(code + 20, 0.0);
    }
    void entity(const char* type, const Layer& layer)
    {
        pair(0, type);
        pair(8, layer.name);
    }
    std::string take() { return std::move(m_text); }

private:
    std::string m_text;
};

/// Characters beyond ASCII stand as \U+hhhh.
std::string encoded(const Text& text)
{
    std::string result;
    for (const char16_t unit : text) {
        if (unit < 0x20)
            result += ' ';
        else if (unit < 0x7f)
            result += static_cast<char>(unit);
        else
            result += fmt::format("\\U+{:04X}", static_cast<unsigned>(unit));
    }
    return result;
}

void writeHeader(DxfText& out, double width, double height)
{
    out.pair(0, "SECTION");
    out.pair(2, "HEADER");
    out.pair(9, "$ACADVER");
    out.pair(1, "AC1009");
    out.pair(9, "$EXTMIN");
    out.point(10, {0.0, 0.0});
    out.pair(9, "$EXTMAX");
    out.point(10, {width, height});
    out.pair(0, "ENDSEC");
}

void writeLineTypes(DxfText& out)
{
    out.pair(0, "TABLE");
    out.pair(2, "LTYPE");
    out.pair(70, 2);
    const std::pair<const char*, std::vector<double>> lineTypes[] = {{"CONTINUOUS", {}}, {"DASHED", {2.0, -1.0}}};
    for (const auto& [name, dashes] : lineTypes) {
        double length = 0.0;
        for (const double dash : dashes)
            length += std::abs(dash);
        out.pair(0, "LTYPE");
        out.pair(2, name);
        out.pair(70, 0);
        out.pair(3, "");
        out.pair(72, 65);
        out.pair(73, static_cast<int>(dashes.size()));
        out.number(40, length);
        for (const double dash : dashes)
            out.number(49, dash);
    }
    out.pair(0, "ENDTAB");
}

void writeLayers(DxfText& out)
{
    const Layer* layers[] = {&visibleLayer, &hiddenLayer, &frameLayer, &textLayer};
    out.pair(0, "TABLE");
    out.pair(2, "LAYER");
    out.pair(70, static_cast<int>(std::size(layers)));
    for (const Layer* layer : layers) {
        out.pair(0, "LAYER");
        out.pair(2, layer->name);
        out.pair(70, 0);
        out.pair(62, layer->color);
        out.pair(6, layer->lineType);
    }
    out.pair(0, "ENDTAB");
}

void writeArc(DxfText& out, const Arc& arc, const Layer& layer)
{
    out.entity(arc.full ? "CIRCLE" : "ARC", layer);
    out.point(10, arc.center);
    out.number(40, arc.radius);
    if (arc.full)
        return;
    const auto degrees = [](double angle) {
        const double result = std::fmod(angle * 180.0 / M_PI, 360.0);
        return result < 0.0 ? result + 360.0 : result;
    };
    out.number(50, degrees(arc.start));
    out.number(51, degrees(arc.end));
}

void writePolyline(DxfText& out, const std::vector<Point2>& points, const Layer& layer)
{
    if (points.size() == 2) {
        out.entity("LINE", layer);
        out.point(10, points[0]);
        out.point(11, points[1]);
        return;
    }
    out.entity("POLYLINE", layer);
    out.pair(66, 1);
    out.point(10, {0.0, 0.0});
    for (const Point2& point : points) {
        out.entity("VERTEX", layer);
        out.point(10, point);
    }
    out.entity("SEQEND", layer);
}

void writeSheet(DxfText& out, SheetPicture& picture, double offset)
{
    for (Stroke& stroke : picture.strokes) {
        for (Point2& point : stroke.points)
            point[0] += offset;
        if (stroke.arc) {
            stroke.arc->center[0] += offset;
            writeArc(out, *stroke.arc, layerOf(stroke.kind));
        } else
            writePolyline(out, stroke.points, layerOf(stroke.kind));
    }
    for (const Label& label : picture.labels) {
        out.entity("TEXT", textLayer);
        out.point(10, {label.position[0] + offset, label.position[1]});
        out.number(40, label.height);
        out.pair(1, encoded(label.text));
    }
}

} // namespace

void writeDxf(const DrawingDocument& drawing, const std::filesystem::path& document, const std::filesystem::path& file,
    const DxfOptions& options)
{
    const std::vector<Text> active = {drawing.sheets.at(drawing.active).name};
    SheetPainter painter(document, tolerance);
    std::vector<SheetPicture> pictures;
    double width = -sheetGap;
    double height = 0.0;
    for (const Sheet* sheet : sheetsNamed(drawing, options.sheets.empty() ? active : options.sheets, document)) {
        pictures.push_back(painter.paint(*sheet));
        width += sheetGap + pictures.back().width;
        height = std::max(height, pictures.back().height);
    }
    DxfText out;
    writeHeader(out, width, height);
    out.pair(0, "SECTION");
    out.pair(2, "TABLES");
    writeLineTypes(out);
    writeLayers(out);
    out.pair(0, "ENDSEC");
    out.pair(0, "SECTION");
    out.pair(2, "ENTITIES");
    double offset = 0.0;
    for (SheetPicture& picture : pictures) {
        writeSheet(out, picture, offset);
        offset += picture.width + sheetGap;
    }
    out.pair(0, "ENDSEC");
    out.pair(0, "EOF");
    writeWhole(file, out.take());
}

} // namespace zn::zentrel
