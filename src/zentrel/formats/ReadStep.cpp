#include "contracts/documents/DocumentError.h"
#include "zentrel/formats/CafTree.h"
#include "zentrel/formats/Completeness.h"
#include "zentrel/formats/Content.h"
#include "zentrel/formats/CountStep.h"
#include "zentrel/formats/Read.h"
#include "zentrel/formats/ReadInKernel.h"
#include "zentrel/formats/StepEncoding.h"
#include "zentrel/formats/StepLoader.h"

#include <Interface_InterfaceModel.hxx>
#include <Interface_Static.hxx>
#include <STEPCAFControl_ExternFile.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <StepRepr_RepresentationItem.hxx>
#include <TCollection_HAsciiString.hxx>
#include <Transfer_TransientProcess.hxx>
#include <TransferBRep.hxx>
#include <XSControl_TransferReader.hxx>
#include <XSControl_WorkSession.hxx>

namespace zn::zentrel {

namespace {

using ExternFiles = NCollection_DataMap<TCollection_AsciiString, Handle(STEPCAFControl_ExternFile)>;

/// The names of solids and surface models. The kernel would read them too, but crashes where an item is missing.
void addSolidNames(const Handle(XSControl_WorkSession) & session, SolidNames& names)
{
    const Handle(Interface_InterfaceModel) model = session->Model();
    const Handle(Transfer_TransientProcess) process = session->TransferReader()->TransientProcess();
    for (int number = 1; number <= model->NbEntities(); ++number) {
        const Handle(Standard_Transient) entity = model->Value(number);
        const Handle(StepRepr_RepresentationItem) item = Handle(StepRepr_RepresentationItem)::DownCast(entity);
        if (!isStepSolid(entity) || item->Name().IsNull() || item->Name()->IsEmpty())
            continue;
        const TopoDS_Shape shape = TransferBRep::ShapeResult(process, entity);
        if (!shape.IsNull())
            names.Bind(shape.Located(TopLoc_Location()), zn::toText(item->Name()->ToCString()));
    }
}

/// The file and all that it refers to.
std::vector<Handle(XSControl_WorkSession)> sessionsOf(const STEPCAFControl_Reader& reader)
{
    std::vector<Handle(XSControl_WorkSession)> sessions{reader.Reader().WS()};
    for (ExternFiles::Iterator file(reader.ExternFiles()); file.More(); file.Next())
        if (!file.Value().IsNull() && !file.Value()->GetWS().IsNull())
            sessions.push_back(file.Value()->GetWS());
    return sessions;
}

SolidNames solidNamesOf(const std::vector<Handle(XSControl_WorkSession)>& sessions)
{
    SolidNames names;
    for (const auto& session : sessions)
        addSolidNames(session, names);
    return names;
}

/// Files that the file, or one of those, refers to and that could not be read, as it names them.
std::string unreadReferences(const STEPCAFControl_Reader& reader)
{
    std::string names;
    for (ExternFiles::Iterator file(reader.ExternFiles()); file.More(); file.Next())
        if (file.Value().IsNull() || file.Value()->GetLoadStatus() != IFSelect_RetDone)
            names += (names.empty() ? "'" : ", '") + std::string(file.Key().ToCString()) + "'";
    return names;
}

ForeignFile readHere(const std::filesystem::path& file, ReadWay way)
{
    STEPCAFControl_Reader reader;
    loadFast(reader.ChangeReader());
    reader.SetColorMode(Standard_True);
    reader.SetNameMode(Standard_True);
    reader.SetLayerMode(Standard_True);
    // Nothing here uses dimensions, tolerances, saved views, materials and checksums, and the kernel crashes on some.
    reader.SetGDTMode(Standard_False);
    reader.SetViewMode(Standard_False);
    reader.SetMatMode(Standard_False);
    reader.SetPropsMode(Standard_False);
    Interface_Static::SetIVal("read.step.codepage", stepEncoding(file));
    if (reader.ReadFile(file.c_str()) != IFSelect_RetDone)
        throw DocumentError(ErrorKind::Damaged, "The file " + quoted(file) + " isn't well-formed STEP data.");
    CafDocument content;
    const bool transferred
        = way == ReadWay::Named ? reader.Transfer(content) : transferPlainly(reader.ChangeReader(), content);
    if (const std::string names = unreadReferences(reader); !names.empty())
        throw DocumentError(ErrorKind::Incomplete,
            "The file " + quoted(file)
                + " could be read only in part: files that it refers to aren't there or can't be read: " + names + ".");
    Document document = transferred ? documentOf(content, solidNamesOf(sessionsOf(reader))) : Document();
    const std::vector<Body> bodies = distinctBodies(document);
    ReadCount count;
    for (const auto& session : sessionsOf(reader))
        count += countStep(session, bodies);
    requireComplete(count, bodies, file);
    return {std::move(document), reader.ExternFiles().IsEmpty()};
}

} // namespace

Document readStep(const std::filesystem::path& file, Remarks* remarks)
{
    checkStepContent(file);
    return readInKernel(file, "step 2", packed<readHere>, remarks);
}

} // namespace zn::zentrel
