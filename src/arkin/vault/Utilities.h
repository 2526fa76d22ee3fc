#pragma once

#include "arkin/store/LeftOut.h"
#include "arkin/vault/ObjectContext.h"
#include "contracts/host/ArkBatch.h"

namespace zn::arkin {

/// Makes a utility of the vault. Raises E_INVALIDARG for a kind that the vault doesn't have.
zn::ObjectRef makeUtility(const ContextRef& context, zn::ArkUtility kind);

// One maker for each utility, beside its class.
zn::ObjectRef makeBatchAdd(const ContextRef& context);
zn::ObjectRef makeBatchCardUpdate(const ContextRef& context);
zn::ObjectRef makeBatchFetch(const ContextRef& context);
zn::ObjectRef makeBatchList(const ContextRef& context);
zn::ObjectRef makeBatchQuery(const ContextRef& context);
zn::ObjectRef makeBatchReference(const ContextRef& context);
zn::ObjectRef makeBatchUnlock(const ContextRef& context);
/// The vault object itself, which lists the card variables.
zn::ObjectRef makeVariableMgr(const ContextRef& context);

/// What was left out, for `IArkLeftOut`, and its sentences, each on a line of its own.
zn::ArkLeftOut recordOf(const LeftOut& leftOut);
std::string sentencesOf(const std::vector<zn::ArkLeftOut>& leftOut);
/// Raises E_INVALIDARG unless the object that came from outside is the vault of the context.
void requireSameVault(ObjectContext& context, zn::IArkVault& vault);

} // namespace zn::arkin
