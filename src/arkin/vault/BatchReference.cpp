#include "arkin/store/CheckOut.h"
#include "arkin/vault/Utilities.h"

namespace zn::arkin {

using zn::S_OK;
using zn::Status;

namespace {

class BatchReference final : public zn::IArkBatchReference {
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

    Status CreateTree(std::int32_t, bool& needsCommit) override
    {
        needsCommit = !m_references.empty();
        return S_OK;
    }

    Status Commit(bool& needsCommit) override
    {
        return guarded(*m_context, [&] {
            addReferences(m_context->vault, m_references);
            m_references.clear();
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
