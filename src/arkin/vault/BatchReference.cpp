#include "arkin/store/CheckOut.h"
#include "arkin/vault/Utilities.h"

namespace zn::arkin {

using zn::S_OK;
using zn::Status;

namespace {

class BatchReference final : public zn::IArkBatchReference, public zn::IArkVersionedReferences {
public:
    explicit BatchReference(ContextRef context)
        : m_context(std::move(context))
    {
    }

    Status AddReferences(std::int32_t fileId, const std::vector<zn::ArkFileFolderPair>& pairs) override
    {
        return guarded(*m_context, [&] {
            for (const zn::ArkFileFolderPair& pair : pairs)
                m_references.push_back({fileId, pair});
            return S_OK;
        });
    }

    Status AddReferenceToVersion(
        std::int32_t fileId, const zn::ArkFileFolderPair& target, std::int32_t version) override
    {
        return guarded(*m_context, [&] {
            m_references.push_back({fileId, target, version});
            return S_OK;
        });
    }

    Status CreateTree(std::int32_t, bool& needsCommit) override
    {
        needsCommit = !m_references.empty();
        return S_OK;
    }

    Status Commit(bool& needsCommit) override
    {
        return guarded(*m_context, [&] {
            const std::vector<Failure> leftOut
                = whenThereIsRoom(m_context->vault, [&] { return addReferences(m_context->vault, m_references); });
            const bool none = leftOut.size() == m_references.size();
            m_references.clear();
            if (!leftOut.empty() && none)
                throw zn::StatusError(leftOut.front().status, leftOut.front().sentence);
            needsCommit = false;
            return S_OK;
        });
    }

private:
    ContextRef m_context;
    std::vector<NewReference> m_references;
};

} // namespace

zn::ObjectRef makeBatchReference(const ContextRef& context) { return std::make_shared<BatchReference>(context); }

} // namespace zn::arkin
