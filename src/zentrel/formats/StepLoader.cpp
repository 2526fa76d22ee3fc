#include "zentrel/formats/StepLoader.h"

#include "zentrel/formats/Part21Text.h"

#include <fstream>
#include <iterator>
#include <StepData_FileRecognizer.hxx>
#include <StepData_Protocol.hxx>
#include <StepData_StepModel.hxx>
#include <StepData_StepReaderData.hxx>
#include <StepData_StepReaderTool.hxx>
#include <StepSelect_WorkLibrary.hxx>
#include <XSControl_WorkSession.hxx>

namespace zn::zentrel {

namespace {

std::string textOf(const char* path)
{
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    const std::streamoff size = file.tellg();
    std::string text(size > 0 ? static_cast<std::size_t>(size) : 0, '\0');
    file.seekg(0);
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    return file ? text : std::string();
}

Handle(StepData_StepReaderData) readerDataOf(const Part21Records& made, const StepData_StepModel& model)
{
    const auto count = [](std::size_t size) { return static_cast<int>(size); };
    Handle(StepData_StepReaderData) data = new StepData_StepReaderData(
        count(made.headRecords), count(made.records.size()), count(made.parameters.size()), model.SourceCodePage());
    auto parameter = made.parameters.begin();
    int number = 0;
    for (const Part21Records::Record& record : made.records) {
        ++number;
        data->SetRecord(number, record.name, record.type, count(record.parameters));
        for (std::size_t left = record.parameters; left > 0; --left, ++parameter)
            data->AddStepParam(number, parameter->value, parameter->type);
        data->InitParams(number);
    }
    return data;
}

/// What the kernel's sessions ask for the model of a file.
class FastLibrary : public StepSelect_WorkLibrary {
public:
    Standard_Integer ReadFile(const Standard_CString path, Handle(Interface_InterfaceModel) & model,
        const Handle(Interface_Protocol) & protocol) const override
    {
        const Handle(StepData_Protocol) stepProtocol = Handle(StepData_Protocol)::DownCast(protocol);
        std::optional<Part21Records> made;
        if (!stepProtocol.IsNull())
            made = parsePart21(textOf(path));
        if (!made)
            return StepSelect_WorkLibrary::ReadFile(path, model, protocol);
        const Handle(StepData_StepModel) stepModel = new StepData_StepModel;
        model = stepModel;
        StepData_StepReaderTool tool(readerDataOf(*made, *stepModel), stepProtocol);
        tool.SetErrorHandle(Standard_True);
        tool.PrepareHeader({});
        tool.Prepare({});
        tool.LoadModel(stepModel);
        if (stepModel->Protocol().IsNull())
            stepModel->SetProtocol(stepProtocol);
        tool.Clear();
        return 0;
    }
};

} // namespace

void loadFast(STEPControl_Reader& reader) { reader.WS()->SetLibrary(new FastLibrary); }

} // namespace zn::zentrel
