#include "zentrel/formats/CountIges.h"

#include <algorithm>
#include <IGESData_IGESEntity.hxx>
#include <Interface_Check.hxx>
#include <Interface_EntityIterator.hxx>
#include <Interface_Graph.hxx>
#include <Interface_InterfaceModel.hxx>
#include <Transfer_TransientProcess.hxx>
#include <TransferBRep.hxx>
#include <XSControl_TransferReader.hxx>

namespace zn::zentrel {

namespace {

bool isOneOf(int type, std::initializer_list<int> types)
{
    return std::find(types.begin(), types.end(), type) != types.end();
}

/// Solids by faces, and the primitives and their combinations.
bool isSolidType(int type) { return isOneOf(type, {186, 150, 152, 154, 156, 158, 160, 162, 164, 168, 180}); }

/// Bounded and trimmed surfaces and faces of shells.
bool isFaceType(int type) { return isOneOf(type, {143, 144, 510}); }

/// Surfaces, which count as faces where no face stands on them.
bool isSurfaceType(int type) { return isOneOf(type, {108, 114, 118, 120, 122, 128, 140, 190, 192, 194, 196, 198}); }

/// Curves and the points and directions that geometry stands on.
bool isCurveType(int type) { return isOneOf(type, {100, 102, 104, 106, 110, 112, 126, 130, 141, 142}); }

/// Whether a face or another surface stands on the entity. Groups and labels that name it are no use.
bool isUsedByGeometry(const Interface_Graph& graph, const Handle(IGESData_IGESEntity) & entity)
{
    Interface_EntityIterator users = graph.Sharings(entity);
    for (; users.More(); users.Next()) {
        const Handle(IGESData_IGESEntity) user = Handle(IGESData_IGESEntity)::DownCast(users.Value());
        if (!user.IsNull() && (isFaceType(user->TypeNumber()) || isSurfaceType(user->TypeNumber())))
            return true;
    }
    return false;
}

} // namespace

ReadCount countIges(const Handle(XSControl_WorkSession) & session)
{
    ReadCount count;
    const Handle(Interface_InterfaceModel) model = session->Model();
    const Handle(Transfer_TransientProcess) process = session->TransferReader()->TransientProcess();
    const Interface_Graph graph(model);
    for (int number = 1; number <= model->NbEntities(); ++number) {
        const Handle(IGESData_IGESEntity) entity = Handle(IGESData_IGESEntity)::DownCast(model->Value(number));
        if (entity.IsNull())
            continue;
        const int type = entity->TypeNumber();
        const bool isSolid = isSolidType(type);
        const bool isFace = isFaceType(type) || (isSurfaceType(type) && !isUsedByGeometry(graph, entity));
        const bool isMissing = (isSolid || isFace) && TransferBRep::ShapeResult(process, entity).IsNull();
        count.solids += isSolid;
        count.missingSolids += isSolid && isMissing;
        count.faces += isFace;
        count.missingFaces += isFace && isMissing;
        const bool isGeometry = isSolid || isFaceType(type) || isSurfaceType(type) || isCurveType(type);
        count.failedEntities += isGeometry && model->Check(number, Standard_True)->HasFailed();
    }
    return count;
}

} // namespace zn::zentrel
