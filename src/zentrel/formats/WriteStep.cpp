#include "contracts/documents/DocumentError.h"
#include "zentrel/formats/CafModel.h"
#include "zentrel/formats/ReadBack.h"
#include "zentrel/formats/Write.h"
#include "zentrel/kernel/KernelChild.h"
#include "zentrel/model/WholeFile.h"

#include <APIHeaderSection_MakeHeader.hxx>
#include <BRepBuilderAPI_NurbsConvert.hxx>
#include <fmt/format.h>
#include <Interface_Static.hxx>
#include <netdb.h>
#include <netinet/in.h>
#include <span>
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
    bool splines;
    const char* words;
};

/// The greatest tolerance comes first: readers that are told less take edges that are off by more for damage, mend them
/// and change the body. But what is smaller than it may be lost.
constexpr StepWay stepWays[] = {
    {1, false, "the greatest tolerance of the model"},
    {0, false, "the average tolerance of the model"},
    {1, true, "its surfaces and curves turned into B-splines"},
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
    const auto filter = [&](const Body& body) {
        if (curves)
            return edgesOf(body.shape);
        return way.splines ? BRepBuilderAPI_NurbsConvert(body.shape, Standard_True).Shape() : body.shape.shape();
    };
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

/// What a first try gave, and whether it should be looked at.
struct FirstTry {
    std::string text;
    bool isDoubtful = false;
};

FirstTry tryFirst(
    const Model& model, const std::filesystem::path& file, const StepOptions& options, const KernelTask& task)
{
    constexpr char doubt = '?';
    constexpr char trust = '.';
    FirstTry result{runInChild(task, [&] {
        std::string text = stepText(model, file, options, stepWays[0]);
        return text += !isCurvesOnly(options) && isDoubtful(model) ? doubt : trust;
    })};
    result.isDoubtful = result.text.back() == doubt;
    result.text.pop_back();
    return result;
}

/// As `faultOfStep`; what the kernel fails on is a fault as well.
std::string checkedInChild(const std::string& text, const Model& model, const KernelTask& task)
{
    try {
        return runInChild(task, [&] { return faultOfStep(text, model); });
    } catch (const DocumentError& error) {
        if (error.kind() != ErrorKind::Kernel)
            throw;
        return "a failure of the geometry kernel";
    }
}

/// Writes the model in the other ways until one of them reads back as what it is; else the first text stays.
Remarks betterText(std::string& text, const std::string& fault, const Model& model, const std::filesystem::path& file,
    const StepOptions& options, const KernelTask& task)
{
    for (const StepWay& way : std::span(stepWays).subspan(1)) {
        try {
            std::string other = runInChild(task, [&] { return stepText(model, file, options, way); });
            if (!checkedInChild(other, model, task).empty())
                continue;
            text = std::move(other);
            return {"The file " + quoted(file) + " was written with " + way.words
                + ", since otherwise it reads back with " + fault + "."};
        } catch (const DocumentError& error) {
            // The kernel may fail in one way and not in the next; the first text is there.
            if (error.kind() != ErrorKind::Kernel)
                throw;
        }
    }
    return {"The file " + quoted(file) + " reads back with " + fault
        + "; no other way of writing it was better. Look at it before you pass it on."};
}

} // namespace

Remarks writeStep(const Model& model, const std::filesystem::path& file, const StepOptions& options)
{
    requireSurfaces(model, "STEP", file);
    const KernelTask task{"writing", file, computingLimit(countFaces(model))};
    FirstTry first = tryFirst(model, file, options, task);
    Remarks remarks;
    if (first.isDoubtful) {
        const std::string fault = checkedInChild(first.text, model, task);
        if (!fault.empty())
            remarks = betterText(first.text, fault, model, file, options, task);
    }
    writeWhole(file, first.text);
    return remarks;
}

} // namespace zn::zentrel
