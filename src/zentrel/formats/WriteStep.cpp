#include "contracts/documents/DocumentError.h"
#include "zentrel/formats/CafModel.h"
#include "zentrel/formats/ReadBack.h"
#include "zentrel/formats/SureText.h"
#include "zentrel/formats/TextNumbers.h"
#include "zentrel/formats/Write.h"
#include "zentrel/model/WholeFile.h"

#include <APIHeaderSection_MakeHeader.hxx>
#include <BRepBuilderAPI_NurbsConvert.hxx>
#include <fmt/format.h>
#include <Interface_Static.hxx>
#include <netdb.h>
#include <netinet/in.h>
#include <sstream>
#include <STEPCAFControl_Controller.hxx>
#include <STEPCAFControl_Writer.hxx>
#include <StepData_Protocol.hxx>
#include <StepData_StepModel.hxx>
#include <StepData_StepWriter.hxx>
#include <STEPEdit.hxx>
#include <TCollection_HAsciiString.hxx>

/// The kernel writes this machine's address into STEP files of AP203, and crashes where the machine's own name doesn't
/// resolve. It alone asks by this old function, so it gets the address of no machine, here and everywhere.
extern "C" hostent* gethostbyname(const char*)
{
    static char name[] = "localhost";
    static in_addr address{};
    static char* addresses[] = {reinterpret_cast<char*>(&address), nullptr};
    static char* aliases[] = {nullptr};
    static hostent host{name, aliases, AF_INET, sizeof address, addresses};
    return &host;
}

namespace zn::zentrel {

namespace {

/// STEP text is ASCII: other characters stand in it as \X2\hhhh\X0\, in 16-bit units.
std::string encoded(const std::string& utf8)
{
    const auto isPlain = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
    std::string result;
    result.reserve(utf8.size());
    for (std::size_t at = 0; at < utf8.size();) {
        if (isPlain(utf8[at])) {
            result += utf8[at++];
            continue;
        }
        std::size_t end = at;
        while (end < utf8.size() && !isPlain(utf8[end]))
            ++end;
        result += "\\X2\\";
        for (const char16_t unit : zn::toText(std::string_view(utf8).substr(at, end - at)))
            result += fmt::format("{:04X}", static_cast<unsigned>(unit));
        result += "\\X0\\";
        at = end;
    }
    return result;
}

/// Which tolerance of the model the file tells its readers, with the kernel's numbers, and what of the model it holds.
struct StepWay {
    int precision;
    TopoDS_Shape (*shapeOf)(const Body& body);
    const char* words;
};

TopoDS_Shape asItIs(const Body& body) { return body.shape.shape(); }
TopoDS_Shape asSplines(const Body& body) { return BRepBuilderAPI_NurbsConvert(body.shape, Standard_True).Shape(); }

/// The greatest tolerance comes first: readers that are told less take edges that are off by more for damage, mend them
/// and change the body. But what is smaller than it may be lost.
constexpr StepWay stepWays[] = {
    {1, asItIs, "the greatest tolerance of the model"},
    {0, asItIs, "the average tolerance of the model"},
    {1, asSplines, "its surfaces and curves turned into B-splines"},
    {1, healed, "its shape healed"},
};

void setPreferences(const StepOptions& options, const StepWay& way)
{
    STEPCAFControl_Controller::Init();
    Interface_Static::SetIVal("write.precision.mode", way.precision);
    Interface_Static::SetCVal("write.step.schema", options.protocol == 214 ? "AP214IS" : "AP203");
    Interface_Static::SetCVal("write.step.unit", "MM");
    Interface_Static::SetIVal("write.stepcaf.subshapes.name", 1);
}

bool isCurvesOnly(const StepOptions& options) { return options.geometry != GeometryPreference::SolidSurface; }

std::string stepText(
    const Model& model, const std::filesystem::path& file, const StepOptions& options, const StepWay& way)
{
    setPreferences(options, way);
    const bool curves = isCurvesOnly(options);
    const auto filter = [&](const Body& body) { return curves ? edgesOf(body.shape) : way.shapeOf(body); };
    Handle(TDocStd_Document) document = cafDocumentOf(model, filter);
    if (document.IsNull())
        throw DocumentError(
            ErrorKind::Unsupported, "The file " + quoted(file) + " can't be written: the model has no geometry.");
    STEPCAFControl_Writer writer;
    writer.SetColorMode(Standard_True);
    writer.SetNameMode(Standard_True);
    writer.SetLayerMode(Standard_True);
    if (!writer.Transfer(document, curves ? STEPControl_GeometricCurveSet : STEPControl_AsIs))
        throw DocumentError(
            ErrorKind::Kernel, "The file " + quoted(file) + " can't be written: the kernel can't convert the model.");
    const Handle(StepData_StepModel) step = writer.ChangeWriter().Model();
    APIHeaderSection_MakeHeader header(step);
    header.SetName(new TCollection_HAsciiString(file.filename().c_str()));
    header.SetOriginatingSystem(new TCollection_HAsciiString("ZENTREL"));
    StepData_StepWriter text(step);
    text.SendModel(Handle(StepData_Protocol)::DownCast(STEPEdit::Protocol()));
    std::ostringstream stream;
    text.Print(stream);
    return encoded(std::move(stream).str());
}

} // namespace

Remarks writeStep(const Model& model, const std::filesystem::path& file, const StepOptions& options)
{
    requireSurfaces(model, "STEP", file);
    const KernelTask task{"writing", file, computingLimit(countFaces(model))};
    const auto make
        = [&](const StepWay& way) { return [&, &way = way] { return stepText(model, file, options, way); }; };
    Remarks remarks;
    if (isCurvesOnly(options)) {
        writeWhole(file, requireNumbers(runInChild(task, make(stepWays[0])), file));
        return remarks;
    }
    std::vector<TextWay> ways;
    for (const StepWay& way : stepWays)
        ways.push_back({way.words, make(way)});
    writeWhole(file, textThatReadsBack(model, task, ways, faultOfStep, remarks));
    return remarks;
}

} // namespace zn::zentrel
