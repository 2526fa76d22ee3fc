#include "contracts/documents/DocumentError.h"
#include "zentrel/formats/CafTree.h"
#include "zentrel/formats/Completeness.h"
#include "zentrel/formats/Content.h"
#include "zentrel/formats/CountIges.h"
#include "zentrel/formats/Read.h"
#include "zentrel/formats/ReadInKernel.h"

#include <IGESCAFControl_Reader.hxx>
#include <XSControl_WorkSession.hxx>

namespace zn::zentrel {

namespace {

ForeignFile readHere(const std::filesystem::path& file, ReadWay way)
{
    IGESCAFControl_Reader reader;
    reader.SetColorMode(Standard_True);
    reader.SetNameMode(Standard_True);
    reader.SetLayerMode(Standard_True);
    if (reader.ReadFile(file.c_str()) != IFSelect_RetDone)
        throw DocumentError(ErrorKind::Damaged, "The file " + quoted(file) + " isn't well-formed IGES data.");
    CafDocument content;
    const bool transferred = way == ReadWay::Named ? reader.Transfer(content) : transferPlainly(reader, content);
    Document document = transferred ? documentOf(content) : Document();
    requireComplete(countIges(reader.WS()), distinctBodies(document), file);
    return {std::move(document), true};
}

} // namespace

Document readIges(const std::filesystem::path& file, Remarks* remarks)
{
    checkIgesContent(file);
    return readInKernel(file, "iges 1", packed<readHere>, remarks);
}

} // namespace zn::zentrel
