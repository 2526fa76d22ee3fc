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

zn::ArkLeftOut recordOf(const LeftOut& leftOut)
{
    return {leftOut.place.fileId, leftOut.place.folderId, leftOut.failure.status, zn::toText(leftOut.failure.sentence)};
}

std::string sentencesOf(const std::vector<zn::ArkLeftOut>& leftOut)
{
    std::string sentences;
    for (const zn::ArkLeftOut& each : leftOut)
        sentences += (sentences.empty() ? "" : "\r\n\t") + zn::toUtf8(each.sentence);
    return sentences;
}

void requireSameVault(ObjectContext& context, zn::IArkVault& vault)
{
    auto* own = dynamic_cast<VaultObject*>(&vault);
    if (!own || &own->vault() != &context.vault)
        throw zn::StatusError(zn::E_INVALIDARG, "The files belong to another vault.");
}

} // namespace zn::arkin
