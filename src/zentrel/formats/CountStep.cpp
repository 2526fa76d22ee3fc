#include "zentrel/formats/CountStep.h"

#include <algorithm>
#include <Interface_Check.hxx>
#include <Interface_EntityIterator.hxx>
#include <Interface_Graph.hxx>
#include <Interface_InterfaceModel.hxx>
#include <optional>
#include <StepRepr_ConstructiveGeometryRepresentation.hxx>
#include <StepRepr_MappedItem.hxx>
#include <StepRepr_RepresentationItem.hxx>
#include <StepShape_FaceSurface.hxx>
#include <StepShape_ShellBasedSurfaceModel.hxx>
#include <StepShape_SolidModel.hxx>
#include <StepVisual_AnnotationOccurrence.hxx>
#include <StepVisual_StyledItem.hxx>
#include <string_view>
#include <TColStd_PackedMapOfInteger.hxx>
#include <Transfer_TransientProcess.hxx>
#include <TransferBRep.hxx>
#include <vector>
#include <XSControl_TransferReader.hxx>

namespace zn::zentrel {

namespace {

bool isVisual(const Handle(Standard_Transient) & entity)
{
    return std::string_view(entity->DynamicType()->Name()).starts_with("StepVisual_");
}

/// Whether the kernel makes shapes of such an entity. Numbers and texts of properties are items of representations,
/// too.
bool isGeometry(const Handle(Standard_Transient) & entity)
{
    if (!entity->IsKind(STANDARD_TYPE(StepRepr_RepresentationItem)))
        return false;
    const std::string_view type = entity->DynamicType()->Name();
    return type.starts_with("StepGeom_") || type.starts_with("StepShape_")
        || entity->IsKind(STANDARD_TYPE(StepRepr_MappedItem));
}

/// A broken name is told by nobody and changes no geometry.
bool isBroken(const Handle(Interface_Check) & check)
{
    for (int number = 1; number <= check->NbFails(); ++number) {
        const std::string_view text = check->CFail(number);
        if (text.find("(name)") == text.npos && text.find(".name)") == text.npos)
            return true;
    }
    return false;
}

/// Annotations, drawings and aids of construction; not styles, which stand on shapes.
bool isAid(const Handle(Standard_Transient) & entity)
{
    if (entity->IsKind(STANDARD_TYPE(StepVisual_StyledItem)))
        return entity->IsKind(STANDARD_TYPE(StepVisual_AnnotationOccurrence));
    const bool holdsItems = entity->IsKind(STANDARD_TYPE(StepRepr_Representation))
        || entity->IsKind(STANDARD_TYPE(StepRepr_RepresentationItem));
    return (isVisual(entity) && holdsItems)
        || entity->IsKind(STANDARD_TYPE(StepRepr_ConstructiveGeometryRepresentation));
}

/// Tells the geometry of shapes from what stands in annotations and aids alone.
class ShapeScope {
public:
    explicit ShapeScope(const Handle(Interface_InterfaceModel) & model)
        : m_model(model)
    {
    }

    /// Geometry that nothing uses belongs to a shape: what used it may be the part of the file that is broken.
    bool holds(const Handle(Standard_Transient) & entity)
    {
        // Few files need it, and it takes as long as counting them.
        if (!m_graph)
            m_graph.emplace(m_model);
        TColStd_PackedMapOfInteger seen;
        std::vector<Handle(Standard_Transient)> open{entity};
        while (!open.empty()) {
            const Handle(Standard_Transient) next = open.back();
            open.pop_back();
            bool isUsed = false;
            for (Interface_EntityIterator users = m_graph->Sharings(next); users.More(); users.Next()) {
                const Handle(Standard_Transient)& user = users.Value();
                const bool onward = isGeometry(user);
                if (!onward && !isAid(user) && user->IsKind(STANDARD_TYPE(StepRepr_Representation)))
                    return true;
                isUsed = isUsed || onward || isAid(user);
                if (onward && seen.Add(m_model->Number(user)))
                    open.push_back(user);
            }
            if (!isUsed)
                return true;
        }
        return false;
    }

private:
    Handle(Interface_InterfaceModel) m_model;
    std::optional<Interface_Graph> m_graph;
};

} // namespace

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
    ShapeScope scope(model);
    std::vector<Handle(Standard_Transient)> faces;
    for (int number = 1; number <= model->NbEntities(); ++number) {
        const Handle(Standard_Transient) entity = model->Value(number);
        if (isStepSolid(entity)) {
            const bool isMissing = TransferBRep::ShapeResult(process, entity).IsNull();
            const bool counts = !isMissing || scope.holds(entity);
            count.solids += counts;
            count.missingSolids += isMissing && counts;
        } else if (entity->IsKind(STANDARD_TYPE(StepShape_FaceSurface)))
            faces.push_back(entity);
        count.failedEntities
            += isGeometry(entity) && isBroken(model->Check(number, Standard_True)) && scope.holds(entity);
    }
    const std::size_t found = countFaces(bodies);
    if (found < faces.size())
        std::erase_if(faces, [&](const auto& face) { return !scope.holds(face); });
    count.faces = faces.size();
    count.missingFaces = found < count.faces ? count.faces - found : 0;
    return count;
}

} // namespace zn::zentrel
