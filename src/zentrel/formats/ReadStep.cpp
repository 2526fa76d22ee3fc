#include "contracts/documents/DocumentError.h"
#include "zentrel/formats/CafBodies.h"
#include "zentrel/formats/Completeness.h"
#include "zentrel/formats/Content.h"
#include "zentrel/formats/CountStep.h"
#include "zentrel/formats/Read.h"
#include "zentrel/kernel/KernelChild.h"
#include "zentrel/model/Packets.h"

#include <Interface_InterfaceModel.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <StepRepr_RepresentationItem.hxx>
#include <TCollection_HAsciiString.hxx>
#include <Transfer_TransientProcess.hxx>
#include <TransferBRep.hxx>
#include <XSControl_TransferReader.hxx>
#include <XSControl_WorkSession.hxx>

namespace zn::zentrel {

namespace {

/// The names of solids and surface models. The kernel would read them too, but crashes where an item is missing.
SolidNames solidNamesOf(const Handle(XSControl_WorkSession) & session)
{
    SolidNames names;
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
    return names;
}

/// Of a file, for the limit of computing.
constexpr std::uintmax_t bytesAPiece = 20000;

PartDocument readHere(const std::filesystem::path& file)
{
    STEPCAFControl_Reader reader;
    reader.SetColorMode(Standard_True);
    reader.SetNameMode(Standard_True);
    if (reader.ReadFile(file.c_str()) != IFSelect_RetDone)
        throw DocumentError(ErrorKind::Damaged, "The file " + quoted(file) + " isn't well-formed STEP data.");
    Handle(TDocStd_Document) document = newCafDocument();
    const bool transferred = reader.Transfer(document);
    PartDocument part;
    part.configurations.push_back(
        {u"Default", transferred ? bodiesOf(document, solidNamesOf(reader.Reader().WS())) : std::vector<Body>(), {}});
    const std::vector<Body>& bodies = part.configurations.front().bodies;
    requireComplete(countStep(reader.Reader().WS(), bodies), bodies, file);
    return part;
}

} // namespace

PartDocument readStep(const std::filesystem::path& file)
{
    checkStepContent(file);
    const KernelTask task{"reading", file, computingLimit(std::filesystem::file_size(file) / bytesAPiece)};
    return unpackPart(runInChild(task, [&] { return packPart(readHere(file)); }));
}

} // namespace zn::zentrel
