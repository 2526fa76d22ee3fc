#include "zentrel/formats/MeshedFile.h"
#include "zentrel/formats/Triangles.h"
#include "zentrel/formats/Write.h"
#include "zentrel/model/WholeFile.h"

#include <fmt/format.h>
#include <iterator>

namespace zn::zentrel {

namespace {

/// What a body without a colour looks like: light grey.
constexpr Color defaultColor = {0.8, 0.8, 0.8};

/// A name that VRML takes as an identifier: the body's, with a running number for those that are alike.
std::string identifier(const Text& name, std::size_t number)
{
    std::string result = "B" + std::to_string(number) + "_";
    for (const char character : zn::toUtf8(name)) {
        const auto byte = static_cast<unsigned char>(character);
        const bool plain = byte >= 0x80 || std::isalnum(byte);
        result += plain ? character : '_';
    }
    return result;
}

void appendShape(std::string& text, const TriangleSet& set, std::size_t number, double factor)
{
    auto out = std::back_inserter(text);
    const Color color = set.color.value_or(defaultColor);
    fmt::format_to(out,
        "DEF {} Shape {{\n appearance Appearance {{ material Material {{ diffuseColor {:g} {:g} {:g} }} }}\n"
        " geometry IndexedFaceSet {{\n  solid FALSE\n  coord Coordinate {{ point [\n",
        identifier(set.name, number), color.red, color.green, color.blue);
    for (const gp_XYZ& point : set.points)
        fmt::format_to(out, "{:.9g} {:.9g} {:.9g},\n", point.X() * factor, point.Y() * factor, point.Z() * factor);
    text += "  ] }\n  coordIndex [\n";
    for (const auto& triangle : set.triangles)
        fmt::format_to(out, "{},{},{},-1,\n", triangle[0], triangle[1], triangle[2]);
    text += "  ]\n }\n}\n";
}

std::string vrmlText(const Model& model, const std::filesystem::path& file, const VrmlOptions& options)
{
    const std::vector<TriangleSet> sets = trianglesOf(model, options.quality, "VRML", file);
    std::string text = "#VRML V2.0 utf8\n";
    std::size_t number = 0;
    for (const TriangleSet& set : sets)
        appendShape(text, set, ++number, 1.0 / millimetersOf(options.unit));
    return text;
}

} // namespace

void writeVrml(const Model& model, const std::filesystem::path& file, const VrmlOptions& options)
{
    writeWhole(file, meshedFile<vrmlText>(model, file, options));
}

} // namespace zn::zentrel
