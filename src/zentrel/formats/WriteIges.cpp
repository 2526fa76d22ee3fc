#include "contracts/documents/DocumentError.h"
#include "zentrel/formats/CafModel.h"
#include "zentrel/formats/ReadBack.h"
#include "zentrel/formats/SureText.h"
#include "zentrel/formats/TextNumbers.h"
#include "zentrel/formats/Write.h"
#include "zentrel/model/WholeFile.h"

#include <BRep_Builder.hxx>
#include <BRepBuilderAPI_NurbsConvert.hxx>
#include <IGESCAFControl_Writer.hxx>
#include <IGESControl_Controller.hxx>
#include <Interface_Static.hxx>
#include <sstream>
#include <TopExp_Explorer.hxx>
#include <TopoDS_Compound.hxx>

namespace zn::zentrel {

namespace {

constexpr int nurbsSystem = 1;
constexpr int manifoldSolids = 3;

void setPreferences(const IgesOptions& options)
{
    IGESControl_Controller::Init();
    Interface_Static::SetCVal("write.iges.unit", "MM");
    Interface_Static::SetIVal("write.iges.brep.mode", options.representation == manifoldSolids ? 1 : 0);
    // The finest tolerance in the model, or the average one.
    Interface_Static::SetIVal("write.precision.mode", options.highTrimAccuracy ? -1 : 0);
}

TopoDS_Shape asNurbs(const TopoDS_Shape& shape)
{
    BRepBuilderAPI_NurbsConvert convert(shape, Standard_True);
    return convert.Shape();
}

using ShapeOfBody = TopoDS_Shape (*)(const Body& body);

struct IgesWay {
    ShapeOfBody shapeOf;
    const char* words;
};

constexpr IgesWay igesWays[] = {
    {[](const Body& body) { return body.shape.shape(); }, "its shape as it is"},
    {[](const Body& body) { return asNurbs(body.shape); }, "its surfaces and curves turned into B-splines"},
    {healed, "its shape healed"},
};

/// Faces and solids, edges, or both of one body.
TopoDS_Shape written(const Body& body, const IgesOptions& options, ShapeOfBody shapeOf)
{
    const bool hasFaces = TopExp_Explorer(body.shape, TopAbs_FACE).More();
    if (!hasFaces && !options.freeCurves)
        return {};
    const TopoDS_Shape shape = options.system == nurbsSystem ? asNurbs(shapeOf(body)) : shapeOf(body);
    if (!hasFaces || !options.wireframe)
        return !hasFaces || options.solidAndSurface ? shape : TopoDS_Shape();
    const TopoDS_Shape edges = edgesOf(shape);
    if (!options.solidAndSurface)
        return edges;
    TopoDS_Compound both;
    BRep_Builder builder;
    builder.MakeCompound(both);
    builder.Add(both, shape);
    builder.Add(both, edges);
    return both;
}

std::string igesText(
    const Model& model, const std::filesystem::path& file, const IgesOptions& options, const IgesWay& way)
{
    setPreferences(options);
    const auto filter = [&](const Body& body) { return written(body, options, way.shapeOf); };
    Handle(TDocStd_Document) document = cafDocumentOf(model, filter, options.flattenHierarchy);
    if (document.IsNull())
        throw DocumentError(ErrorKind::Unsupported,
            "The file " + quoted(file) + " can't be written: the options leave nothing of the model.");
    IGESCAFControl_Writer writer;
    writer.SetColorMode(Standard_True);
    writer.SetNameMode(Standard_True);
    std::ostringstream stream;
    if (!writer.Transfer(document) || !writer.Write(stream))
        throw DocumentError(
            ErrorKind::Kernel, "The file " + quoted(file) + " can't be written: the kernel can't convert the model.");
    return std::move(stream).str();
}

} // namespace

Remarks writeIges(const Model& model, const std::filesystem::path& file, const IgesOptions& options)
{
    requireSurfaces(model, "IGES", file);
    const KernelTask task{"writing", file, computingLimit(countFaces(model))};
    const auto make
        = [&](const IgesWay& way) { return [&, &way = way] { return igesText(model, file, options, way); }; };
    Remarks remarks;
    if (!options.solidAndSurface || options.wireframe) { // curves are nothing to measure
        writeWhole(file, requireNumbers(runInChild(task, make(igesWays[0])), file));
        return remarks;
    }
    std::vector<TextWay> ways;
    for (const IgesWay& way : igesWays)
        ways.push_back({way.words, make(way)});
    writeWhole(file, textThatReadsBack(model, task, ways, faultOfIges, remarks));
    return remarks;
}

} // namespace zn::zentrel
