#include "zentrel/formats/ReadInKernel.h"

#include "contracts/documents/DocumentError.h"
#include "contracts/documents/StepReferences.h"
#include "zentrel/kernel/KernelCache.h"

#include <stdexcept>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>

namespace zn::zentrel {

namespace {

/// Of a file, for the limit of computing.
constexpr std::uintmax_t bytesAPiece = 20000;

std::string requestFor(ReadWay way, const std::filesystem::path& file)
{
    return static_cast<char>(way) + file.string();
}

std::string answerFor(const std::filesystem::path& file, KernelCall read)
{
    const KernelTask task{"reading", file, computingLimit(std::filesystem::file_size(file) / bytesAPiece)};
    try {
        return askKernelOrChild(task, read, requestFor(ReadWay::Named, file));
    } catch (const KernelCrash& crash) {
        if (!zn::stepReferences(file).empty())
            throw crash;
        try {
            return runInChild(task, [&] { return read(requestFor(ReadWay::Plain, file)); });
        } catch (const DocumentError&) {
            throw crash;
        }
    }
}

} // namespace

std::string packedAnswer(const ForeignFile& made, ReadWay way)
{
    return std::string{made.standsAlone ? '+' : '-', static_cast<char>(way)} + packDocument(made.document);
}

Document readInKernel(const std::filesystem::path& file, std::string_view reader, KernelCall read, Remarks* remarks)
{
    const std::string packet = keptOfFile(file, reader, [&]() -> MadeResult {
        std::string answer = answerFor(file, read);
        const bool standsAlone = answer.front() == '+';
        answer.erase(0, 1);
        return {std::move(answer), standsAlone};
    });
    if (remarks && static_cast<ReadWay>(packet.front()) == ReadWay::Plain)
        remarks->push_back("The file " + quoted(file)
            + " was read without its names and colours, since the geometry kernel crashes on them.");
    try {
        return unpackDocument(std::string_view(packet).substr(1));
    } catch (const std::invalid_argument& error) {
        throw DocumentError(
            ErrorKind::Unsupported, "The file " + quoted(file) + " can't be opened: " + error.what() + ".");
    }
}

bool transferPlainly(XSControl_Reader& reader, const Handle(TDocStd_Document) & document)
{
    reader.TransferRoots();
    const TopoDS_Shape shape = reader.OneShape();
    if (shape.IsNull())
        return false;
    XCAFDoc_DocumentTool::ShapeTool(document->Main())->AddShape(shape, Standard_False);
    return true;
}

} // namespace zn::zentrel
