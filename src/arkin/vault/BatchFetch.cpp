#include "arkin/store/GetFiles.h"
#include "arkin/vault/Utilities.h"

namespace zn::arkin {

using zn::S_OK;
using zn::Status;

namespace {

/// Without the files that were deleted since somebody noted them. One of them must not keep a night's run from the
/// others: whoever works with it finds no file and says so.
std::vector<GetRequest> stillThere(Vault& vault, const std::vector<GetRequest>& requests)
{
    std::vector<std::int32_t> ids;
    for (const GetRequest& request : requests)
        ids.push_back(request.place.fileId);
    const auto files = vault.files().rows(ids);
    std::vector<GetRequest> found;
    for (std::size_t i = 0; i < requests.size(); ++i) {
        if (files[i] && !files[i]->deleted)
            found.push_back(requests[i]);
    }
    return found;
}

class BatchFetch final : public zn::IArkBatchFetch {
public:
    explicit BatchFetch(ContextRef context)
        : m_context(std::move(context))
    {
    }

    Status AddSelection(zn::IArkVault& vault, std::int32_t fileId, std::int32_t folderId, std::int32_t version) override
    {
        return guarded(*m_context, [&] {
            requireSameVault(*m_context, vault);
            m_requests.push_back({{fileId, folderId}, version});
            return S_OK;
        });
    }

    Status CreateTree(std::int32_t, std::int32_t flag) override
    {
        return guarded(*m_context, [&] {
            m_tree = withReferences(m_context->vault, stillThere(m_context->vault, m_requests), (flag & 1) != 0);
            return S_OK;
        });
    }

    Status GetFiles(std::int32_t, std::int32_t) override
    {
        return guarded(*m_context, [&] {
            if (!m_tree)
                throw zn::StatusError(zn::E_FAIL, "The fetch was not prepared by CreateTree.");
            getFiles(m_context->vault, *m_tree);
            return S_OK;
        });
    }

private:
    ContextRef m_context;
    std::vector<GetRequest> m_requests;
    std::optional<std::vector<GetRequest>> m_tree;
};

} // namespace

zn::ObjectRef makeBatchFetch(const ContextRef& context) { return std::make_shared<BatchFetch>(context); }

} // namespace zn::arkin
