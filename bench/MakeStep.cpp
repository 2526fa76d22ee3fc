// Makes the STEP files of bench/step_runs.py: small parts of some 10 KB, large ones of 1 to 5 MB, and an assembly of
// two levels with shared, named and coloured parts. Equal arguments give equal files but for the date in their heads.
// Usage: make_step FOLDER SMALL LARGE COMPONENTS DISTINCT

#include <BRep_Builder.hxx>
#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_MakePolygon.hxx>
#include <BRepBuilderAPI_MakeWire.hxx>
#include <BRepBuilderAPI_Transform.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakeCone.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <BRepPrimAPI_MakePrism.hxx>
#include <BRepPrimAPI_MakeTorus.hxx>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <GeomAPI_Interpolate.hxx>
#include <gp_Ax2.hxx>
#include <gp_Circ.hxx>
#include <numbers>
#include <Quantity_Color.hxx>
#include <STEPCAFControl_Writer.hxx>
#include <TColgp_HArray1OfPnt.hxx>
#include <TDataStd_Name.hxx>
#include <TDocStd_Document.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Compound.hxx>
#include <vector>
#include <XCAFApp_Application.hxx>
#include <XCAFDoc_ColorTool.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>

namespace {

TopoDS_Shape smallShape(int number)
{
    const double size = 10.0 + number % 17;
    switch (number % 4) {
    case 0:
        return BRepPrimAPI_MakeBox(size, 2.0 * size, 5.0).Shape();
    case 1:
        return BRepPrimAPI_MakeCylinder(size, 30.0).Shape();
    case 2:
        return BRepPrimAPI_MakeCone(size, size / 3.0, 20.0).Shape();
    default:
        return BRepPrimAPI_MakeTorus(3.0 * size, size).Shape();
    }
}

TopoDS_Wire roundHole(const gp_Pnt& middle, double radius)
{
    const gp_Circ circle(gp_Ax2(middle, gp::DZ()), radius);
    return BRepBuilderAPI_MakeWire(BRepBuilderAPI_MakeEdge(circle));
}

/// A closed curve through eight points, which makes a freeform wall.
TopoDS_Wire freeHole(const gp_Pnt& middle, double radius)
{
    constexpr int count = 8;
    Handle(TColgp_HArray1OfPnt) points = new TColgp_HArray1OfPnt(1, count);
    for (int i = 0; i < count; ++i) {
        const double angle = 2.0 * std::numbers::pi * i / count;
        const double distance = radius * (i % 2 == 0 ? 1.0 : 0.7);
        points->SetValue(i + 1, middle.Translated(gp_Vec(distance * std::cos(angle), distance * std::sin(angle), 0.0)));
    }
    GeomAPI_Interpolate curve(points, Standard_True, 1e-7);
    curve.Perform();
    return BRepBuilderAPI_MakeWire(BRepBuilderAPI_MakeEdge(curve.Curve()));
}

/// A plate with `side` times `side` holes, every third of which is freeform.
TopoDS_Shape plate(int side, double thickness)
{
    constexpr double pitch = 10.0;
    const double length = pitch * side;
    BRepBuilderAPI_MakePolygon border(
        gp_Pnt(0, 0, 0), gp_Pnt(length, 0, 0), gp_Pnt(length, length, 0), gp_Pnt(0, length, 0), Standard_True);
    BRepBuilderAPI_MakeFace face(border.Wire());
    for (int row = 0; row < side; ++row) {
        for (int column = 0; column < side; ++column) {
            const gp_Pnt middle(pitch * (column + 0.5), pitch * (row + 0.5), 0.0);
            TopoDS_Wire hole = (row * side + column) % 3 == 2 ? freeHole(middle, 3.5) : roundHole(middle, 2.5);
            face.Add(TopoDS::Wire(hole.Reversed()));
        }
    }
    return BRepPrimAPI_MakePrism(face.Face(), gp_Vec(0.0, 0.0, thickness)).Shape();
}

/// Many bodies in one part: the faces have few holes each, as those of real parts do.
TopoDS_Shape stack(int count)
{
    TopoDS_Compound compound;
    BRep_Builder builder;
    builder.MakeCompound(compound);
    for (int i = 0; i < count; ++i) {
        gp_Trsf placement;
        placement.SetTranslation(gp_Vec(0.0, 0.0, 20.0 * i));
        const TopoDS_Shape body = plate(2 + i % 3, 3.0 + i % 5);
        builder.Add(compound, BRepBuilderAPI_Transform(body, placement).Shape());
    }
    return compound;
}

Handle(TDocStd_Document) newDocument()
{
    XCAFDoc_ShapeTool::SetAutoNaming(Standard_False);
    Handle(TDocStd_Document) document;
    XCAFApp_Application::GetApplication()->NewDocument("MDTV-XCAF", document);
    return document;
}

void name(const TDF_Label& label, const std::string& text)
{
    TDataStd_Name::Set(label, TCollection_ExtendedString(text.c_str(), Standard_True));
}

TDF_Label addPart(const Handle(TDocStd_Document) & document, const TopoDS_Shape& shape, const std::string& text)
{
    const Handle(XCAFDoc_ShapeTool) shapes = XCAFDoc_DocumentTool::ShapeTool(document->Main());
    const TDF_Label label = shapes->AddShape(shape, Standard_False);
    name(label, text);
    const auto share = static_cast<double>(text.back() - '0') / 10.0;
    XCAFDoc_DocumentTool::ColorTool(document->Main())
        ->SetColor(label, Quantity_Color(share, 0.5, 1.0 - share, Quantity_TOC_sRGB), XCAFDoc_ColorGen);
    return label;
}

void write(const Handle(TDocStd_Document) & document, const std::filesystem::path& file)
{
    STEPCAFControl_Writer writer;
    writer.SetColorMode(Standard_True);
    writer.SetNameMode(Standard_True);
    if (!writer.Transfer(document, STEPControl_AsIs) || writer.Write(file.c_str()) != IFSelect_RetDone) {
        std::fprintf(stderr, "make_step: %s could not be written\n", file.c_str());
        std::exit(1);
    }
    XCAFApp_Application::GetApplication()->Close(document);
}

void writePart(const TopoDS_Shape& shape, const std::string& text, const std::filesystem::path& file)
{
    const Handle(TDocStd_Document) document = newDocument();
    addPart(document, shape, text);
    write(document, file);
}

/// Groups of ten components below the root; the parts take turns.
void writeAssembly(int components, int distinct, const std::filesystem::path& file)
{
    const Handle(TDocStd_Document) document = newDocument();
    const Handle(XCAFDoc_ShapeTool) shapes = XCAFDoc_DocumentTool::ShapeTool(document->Main());
    std::vector<TDF_Label> parts;
    for (int part = 0; part < distinct; ++part)
        parts.push_back(addPart(document, plate(2 + part % 4, 3.0 + part), "Part " + std::to_string(part)));
    const TDF_Label root = shapes->NewShape();
    name(root, "Machine");
    TDF_Label group;
    for (int component = 0; component < components; ++component) {
        gp_Trsf placement;
        placement.SetTranslation(gp_Vec(60.0 * (component % 25), 60.0 * (component / 25), 0.0));
        if (component % 10 == 0) {
            group = shapes->NewShape();
            name(group, "Group " + std::to_string(component / 10));
            name(shapes->AddComponent(root, group, TopLoc_Location()), "Group-" + std::to_string(component / 10));
        }
        const TDF_Label& part = parts[static_cast<std::size_t>(component % distinct)];
        name(shapes->AddComponent(group, part, TopLoc_Location(placement)), "Place " + std::to_string(component));
    }
    shapes->UpdateAssemblies();
    write(document, file);
}

int number(const char* text)
{
    int value = -1;
    std::from_chars(text, text + std::strlen(text), value);
    return value;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 6) {
        std::fprintf(stderr, "Usage: make_step FOLDER SMALL LARGE COMPONENTS DISTINCT\n");
        return 2;
    }
    const std::filesystem::path folder = argv[1];
    for (const char* kind : {"small", "large", "assembly"})
        std::filesystem::create_directories(folder / kind);
    const int small = number(argv[2]);
    for (int i = 0; i < small; ++i)
        writePart(
            smallShape(i), "Small " + std::to_string(i), folder / "small" / ("small" + std::to_string(i) + ".step"));
    const int large = number(argv[3]);
    for (int i = 0; i < large; ++i)
        writePart(stack(16 + 4 * (i % 15)), "Large " + std::to_string(i),
            folder / "large" / ("large" + std::to_string(i) + ".step"));
    if (number(argv[4]) > 0)
        writeAssembly(number(argv[4]), number(argv[5]), folder / "assembly" / "assembly.step");
    return 0;
}
