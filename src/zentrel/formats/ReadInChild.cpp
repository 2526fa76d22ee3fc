#include "zentrel/formats/ReadInChild.h"

#include "contracts/documents/DocumentError.h"
#include "zentrel/kernel/KernelChild.h"
#include "zentrel/model/Packets.h"

#include <iterator>
#include <stdexcept>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>

namespace zn::zentrel {

namespace {

/// Of a file, for the limit of computing.
constexpr std::uintmax_t bytesAPiece = 20000;

} // namespace

Document readInChild(const std::filesystem::path& file,
    const std::function<Document(ReadWay way, Remarks& remarks)>& read, Remarks* remarks)
{
    const KernelTask task{"reading", file, computingLimit(std::filesystem::file_size(file) / bytesAPiece)};
    const auto readIn = [&](ReadWay way) {
        return runInChild(task, [&] {
            Remarks told;
            std::string bytes = packDocument(read(way, told));
            return withRemarks(std::move(bytes), told);
        });
    };
    std::string block;
    try {
        block = readIn(ReadWay::Named);
    } catch (const KernelCrash& crash) {
        try {
            block = readIn(ReadWay::Plain);
        } catch (const DocumentError&) {
            throw crash;
        }
        if (remarks)
            remarks->push_back("The file " + quoted(file)
                + " was read without its names and colours, since the geometry kernel crashes on them.");
    }
    Remarks told = takeRemarks(block);
    if (remarks)
        std::move(told.begin(), told.end(), std::back_inserter(*remarks));
    try {
        return unpackDocument(block);
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
