#include "contracts/documents/DocumentError.h"
#include "zentrel/formats/CafModel.h"
#include "zentrel/formats/Write.h"
#include "zentrel/kernel/KernelChild.h"
#include "zentrel/model/WholeFile.h"

#include <APIHeaderSection_MakeHeader.hxx>
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

void setPreferences(const StepOptions& options)
{
    STEPCAFControl_Controller::Init();
    Interface_Static::SetCVal("write.step.schema", options.protocol == 214 ? "AP214IS" : "AP203");
    Interface_Static::SetCVal("write.step.unit", "MM");
    Interface_Static::SetIVal("write.stepcaf.subshapes.name", 1);
}

std::string stepText(const Model& model, const std::filesystem::path& file, const StepOptions& options)
{
    setPreferences(options);
    const bool curves = options.geometry != GeometryPreference::SolidSurface;
    const auto filter = [&](const Body& body) { return curves ? edgesOf(body.shape) : body.shape.shape(); };
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
    writeWhole(file, runInChild(task, [&] { return stepText(model, file, options); }));
    return {};
}

} // namespace zn::zentrel
