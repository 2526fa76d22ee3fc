#include "arkin/store/AddFiles.h"
#include "arkin/vault/Utilities.h"
#include "base/Paths.h"

#include <algorithm>

namespace zn::arkin {

using zn::S_OK;
using zn::Status;

namespace {

/// The failure that the vault's error text tells after a batch: the first one, and how many came with it.
Failure summaryOf(const std::vector<AddOutcome>& outcomes)
{
    Failure failure{S_OK, {}};
    int more = 0;
    for (const AddOutcome& outcome : outcomes) {
        if (!zn::failed(outcome.status) || outcome.status == E_ARK_NAME_ALREADY_EXISTS)
            continue;
        if (failure.status == S_OK)
            failure = {outcome.status, outcome.sentence};
        else if (failure.status == outcome.status)
            ++more;
    }
    if (more > 0)
        failure.sentence += " The same holds for " + std::to_string(more) + " more.";
    return failure;
}

class BatchAdd final : public zn::IArkBatchAdd {
public:
    explicit BatchAdd(ContextRef context)
        : m_context(std::move(context))
    {
    }

    Status AddFile(zn::TextView sourcePath, zn::TextView destFolderPath, std::int32_t, const zn::Text* destName,
        std::int32_t) override
    {
        return guarded(*m_context, [&] {
            if (!m_context->vault.local().relativePath(destFolderPath))
                throw zn::StatusError(E_ARK_NOT_IN_VAULT,
                    "The folder " + zn::toUtf8(destFolderPath) + " is not in the vault's folder "
                        + zn::toUtf8(m_context->vault.local().root()) + ".");
            m_requests.push_back(
                {zn::Text(sourcePath), zn::Text(destFolderPath), destName ? *destName : zn::pathFileName(sourcePath)});
            return S_OK;
        });
    }

    Status Commit(std::int32_t, std::vector<zn::ArkAddResult>& results, std::int32_t& count) override
    {
        return guarded(*m_context, [&] {
            const std::vector<AddOutcome> outcomes = addFiles(m_context->vault, m_requests);
            m_requests.clear();
            const auto isDenied = [](const AddOutcome& outcome) { return outcome.status == E_ARK_PERMISSION_DENIED; };
            // Nothing could be added for want of a right: that is the failure of the whole batch.
            if (!outcomes.empty() && std::all_of(outcomes.begin(), outcomes.end(), isDenied))
                throw zn::StatusError(E_ARK_PERMISSION_DENIED, outcomes.front().sentence);
            std::vector<zn::ArkAddResult> rows;
            for (const AddOutcome& outcome : outcomes)
                rows.push_back({outcome.place.fileId, outcome.place.folderId, outcome.status, outcome.path});
            results = std::move(rows);
            count = static_cast<std::int32_t>(std::count_if(
                outcomes.begin(), outcomes.end(), [](const AddOutcome& outcome) { return outcome.status == S_OK; }));
            m_context->lastFailure = summaryOf(outcomes);
            return S_OK;
        });
    }

private:
    ContextRef m_context;
    std::vector<AddRequest> m_requests;
};

} // namespace

zn::ObjectRef makeBatchAdd(const ContextRef& context) { return std::make_shared<BatchAdd>(context); }

} // namespace zn::arkin
