#include "arkin/store/CheckOut.h"
#include "arkin/vault/Utilities.h"

namespace zn::arkin {

using zn::S_OK;
using zn::Status;

namespace {

/// The file's own values, in contrast to those of one of its configurations.
constexpr const char16_t* ownConfiguration = u"@";

class BatchCardUpdate final : public zn::IArkBatchCardUpdate {
public:
    explicit BatchCardUpdate(ContextRef context)
        : m_context(std::move(context))
    {
    }

    Status SetVariable(
        std::int32_t fileId, std::int32_t variableId, const zn::Value& value, std::int32_t, std::int32_t) override
    {
        return guarded(*m_context, [&] {
            m_writes.push_back({fileId, variableId, ownConfiguration, value.deepCopy()});
            return S_OK;
        });
    }

    Status Commit(std::vector<Status>& errors, std::int32_t) override
    {
        return guarded(*m_context, [&] {
            std::vector<Status> statuses = writeCards(m_context->vault, m_writes);
            std::erase_if(statuses, [](Status status) { return !zn::failed(status); });
            m_writes.clear();
            errors = statuses;
            return statuses.empty() ? S_OK : statuses.front();
        });
    }

private:
    ContextRef m_context;
    std::vector<CardWrite> m_writes;
};

} // namespace

zn::ObjectRef makeBatchCardUpdate(const ContextRef& context) { return std::make_shared<BatchCardUpdate>(context); }

} // namespace zn::arkin
