#include "arkin/store/AddFiles.h"
#include "arkin/vault/Utilities.h"
#include "base/Paths.h"

#include <algorithm>

namespace zn::arkin {

using zn::S_OK;
using zn::Status;

namespace {

/// A failure that names its file, also where it is that of the folder.
Failure failureOf(const AddOutcome& outcome)
{
    const std::string path = zn::toUtf8(outcome.path);
    const bool isNamed = outcome.sentence.find(zn::toUtf8(zn::pathFileName(outcome.path))) != std::string::npos;
    return {outcome.status, isNamed ? outcome.sentence : path + ": " + outcome.sentence};
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
            m_requests.push_back(
                {zn::Text(sourcePath), zn::Text(destFolderPath), destName ? *destName : zn::pathFileName(sourcePath)});
            return S_OK;
        });
    }

    Status Commit(std::int32_t, std::vector<zn::ArkAddResult>& results, std::int32_t& count) override
    {
        return guarded(*m_context, [&] {
            const std::vector<AddOutcome> outcomes
                = whenThereIsRoom(m_context->vault, [&] { return addFiles(m_context->vault, m_requests); });
            m_requests.clear();
            std::vector<zn::ArkAddResult> rows;
            rows.reserve(outcomes.size());
            for (const AddOutcome& outcome : outcomes)
                rows.push_back({outcome.place.fileId, outcome.place.folderId, outcome.status, outcome.path});
            results = std::move(rows);
            count = static_cast<std::int32_t>(std::count_if(
                outcomes.begin(), outcomes.end(), [](const AddOutcome& outcome) { return outcome.status == S_OK; }));
            m_context->failuresInTurn.clear();
            for (const AddOutcome& outcome : outcomes) {
                if (zn::failed(outcome.status) && outcome.status != E_ARK_NAME_ALREADY_EXISTS)
                    m_context->failuresInTurn.push_back(failureOf(outcome));
            }
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
