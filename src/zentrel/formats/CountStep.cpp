#include "zentrel/formats/CountStep.h"

#include <Interface_Check.hxx>
#include <Interface_InterfaceModel.hxx>
#include <StepRepr_RepresentationItem.hxx>
#include <StepShape_FaceSurface.hxx>
#include <StepShape_ShellBasedSurfaceModel.hxx>
#include <StepShape_SolidModel.hxx>
#include <Transfer_TransientProcess.hxx>
#include <TransferBRep.hxx>
#include <XSControl_TransferReader.hxx>

namespace zn::zentrel {

bool isStepSolid(const Handle(Standard_Transient) & entity)
{
    return entity->IsKind(STANDARD_TYPE(StepShape_SolidModel))
        || entity->IsKind(STANDARD_TYPE(StepShape_ShellBasedSurfaceModel));
}

ReadCount countStep(const Handle(XSControl_WorkSession) & session, const std::vector<Body>& bodies)
{
    ReadCount count;
    const Handle(Interface_InterfaceModel) model = session->Model();
    const Handle(Transfer_TransientProcess) process = session->TransferReader()->TransientProcess();
    for (int number = 1; number <= model->NbEntities(); ++number) {
        const Handle(Standard_Transient) entity = model->Value(number);
        if (isStepSolid(entity)) {
            ++count.solids;
            if (TransferBRep::ShapeResult(process, entity).IsNull())
                ++count.missingSolids;
        } else if (entity->IsKind(STANDARD_TYPE(StepShape_FaceSurface)))
            ++count.faces;
        if (entity->IsKind(STANDARD_TYPE(StepRepr_RepresentationItem))
            && model->Check(number, Standard_True)->HasFailed())
            ++count.failedEntities;
    }
    const std::size_t found = countFaces(bodies);
    count.missingFaces = found < count.faces ? count.faces - found : 0;
    return count;
}

} // namespace zn::zentrel
