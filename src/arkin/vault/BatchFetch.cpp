#include "arkin/store/GetFiles.h"
#include "arkin/vault/Utilities.h"

#include <unordered_map>

namespace zn::arkin {

using zn::S_OK;
using zn::Status;

namespace {

/// The files from which a reference leads, directly or not, to one that wasn't brought, each with one such.
std::unordered_map<std::int32_t, const LeftOut*> dependents(
    const std::vector<LeftOut>& leftOut, const std::vector<FileEdge>& edges)
{
    std::unordered_multimap<std::int32_t, std::int32_t> users;
    for (const FileEdge& edge : edges)
        users.emplace(edge.toFileId, edge.fromFileId);
    std::unordered_map<std::int32_t, const LeftOut*> reached;
    for (const LeftOut& each : leftOut) {
        std::vector<std::int32_t> open{each.place.fileId};
        while (!open.empty()) {
            const auto [first, last] = users.equal_range(open.back());
            open.pop_back();
            for (auto user = first; user != last; ++user) {
                if (reached.emplace(user->second, &each).second)
                    open.push_back(user->second);
            }
        }
    }
    return reached;
}

class BatchFetch final : public zn::IArkBatchFetch, public zn::IArkLeftOut {
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
            m_asBuilt = (flag & 1) != 0;
            m_tree = withReferences(m_context->vault, m_requests, m_asBuilt);
            return S_OK;
        });
    }

    Status GetFiles(std::int32_t, std::int32_t) override
    {
        return guarded(*m_context, [&] {
            if (!m_tree)
                throw zn::StatusError(zn::E_FAIL, "The fetch was not prepared by CreateTree.");
            keepForRun();
            m_leftOut = notedLeftOut(
                whenThereIsRoom(m_context->vault, [&] { return getWhatCanBeGot(m_context->vault, m_tree->files); }));
            if (!m_leftOut.empty() && m_leftOut.size() == m_requests.size())
                throw zn::StatusError(m_leftOut.front().status, sentencesOf(m_leftOut));
            return S_OK;
        });
    }

    Status GetLeftOut(std::vector<zn::ArkLeftOut>& files) override
    {
        files = m_leftOut;
        return S_OK;
    }

private:
    /// A run's files stay as they are brought until it ends. Where another run was in the way, it may have changed what
    /// there is to bring.
    void keepForRun()
    {
        Vault& vault = m_context->vault;
        if (!vault.actingRun())
            return;
        while (!vault.actingRun()->keepLocalCopies(localCopies(vault, m_tree->files)))
            m_tree = withReferences(vault, m_requests, m_asBuilt);
    }

    /// What the failures mean for the files that were noted: one of them must not keep a night's run from the others,
    /// and nobody is to work on a file whose references aren't what the vault says.
    std::vector<zn::ArkLeftOut> notedLeftOut(const std::vector<LeftOut>& failures)
    {
        std::unordered_map<std::int32_t, const LeftOut*> own;
        for (const LeftOut& failure : failures)
            own.emplace(failure.place.fileId, &failure);
        const auto byReference = dependents(failures, m_tree->references);
        std::vector<zn::ArkLeftOut> noted;
        for (const GetRequest& request : m_requests) {
            const Place& place = request.place;
            if (const auto failure = own.find(place.fileId); failure != own.end())
                noted.push_back(recordOf({place, failure->second->failure}));
            else if (const auto through = byReference.find(place.fileId); through != byReference.end())
                noted.push_back(recordOf({place,
                    {through->second->failure.status,
                        "A file that it refers to is missing. " + through->second->failure.sentence}}));
        }
        return noted;
    }

    ContextRef m_context;
    std::vector<GetRequest> m_requests;
    std::optional<FileTree> m_tree;
    bool m_asBuilt = false;
    std::vector<zn::ArkLeftOut> m_leftOut;
};

} // namespace

zn::ObjectRef makeBatchFetch(const ContextRef& context) { return std::make_shared<BatchFetch>(context); }

} // namespace zn::arkin
