#include "contracts/documents/DocumentError.h"
#include "zentrel/formats/CafTree.h"
#include "zentrel/formats/Completeness.h"
#include "zentrel/formats/Content.h"
#include "zentrel/formats/CountIges.h"
#include "zentrel/formats/Read.h"
#include "zentrel/kernel/KernelChild.h"
#include "zentrel/model/Packets.h"

#include <IGESCAFControl_Reader.hxx>
#include <XSControl_WorkSession.hxx>

namespace zn::zentrel {

namespace {

/// Of a file, for the limit of computing.
constexpr std::uintmax_t bytesAPiece = 20000;

Document readHere(const std::filesystem::path& file)
{
    IGESCAFControl_Reader reader;
    reader.SetColorMode(Standard_True);
    reader.SetNameMode(Standard_True);
    reader.SetLayerMode(Standard_True);
    if (reader.ReadFile(file.c_str()) != IFSelect_RetDone)
        throw DocumentError(ErrorKind::Damaged, "The file " + quoted(file) + " isn't well-formed IGES data.");
    Handle(TDocStd_Document) content = newCafDocument();
    const bool transferred = reader.Transfer(content);
    Document document = transferred ? documentOf(content) : Document();
    requireComplete(countIges(reader.WS()), distinctBodies(document), file);
    return document;
}

} // namespace

Document readIges(const std::filesystem::path& file)
{
    checkIgesContent(file);
    const KernelTask task{"reading", file, computingLimit(std::filesystem::file_size(file) / bytesAPiece)};
    return readInChild(task, [&] { return readHere(file); });
}

} // namespace zn::zentrel
