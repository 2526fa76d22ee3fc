#include "arkin/vault/Utilities.h"

#include "arkin/vault/VaultObject.h"

namespace zn::arkin {

zn::ObjectRef makeUtility(const ContextRef& context, zn::ArkUtility kind)
{
    static constexpr struct {
        zn::ArkUtility kind;
        zn::ObjectRef (*make)(const ContextRef&);
    } makers[] = {
        {zn::ArkUtil_BatchCardUpdate, makeBatchCardUpdate},
        {zn::ArkUtil_BatchUnlock, makeBatchUnlock},
        {zn::ArkUtil_BatchReference, makeBatchReference},
        {zn::ArkUtil_VariableMgr, makeVariableMgr},
        {zn::ArkUtil_BatchFetch, makeBatchFetch},
        {zn::ArkUtil_BatchQuery, makeBatchQuery},
        {zn::ArkUtil_BatchList, makeBatchList},
        {zn::ArkUtil_BatchAdd, makeBatchAdd},
    };
    for (const auto& maker : makers) {
        if (maker.kind == kind)
            return maker.make(context);
    }
    throw zn::StatusError(zn::E_INVALIDARG, "The vault has no utility of the kind " + std::to_string(kind) + ".");
}

void requireSameVault(ObjectContext& context, zn::IArkVault& vault)
{
    auto* own = dynamic_cast<VaultObject*>(&vault);
    if (!own || &own->vault() != &context.vault)
        throw zn::StatusError(zn::E_INVALIDARG, "The files belong to another vault.");
}

} // namespace zn::arkin
