#include "arkin/store/CheckOut.h"
#include "arkin/vault/Utilities.h"

#include <algorithm>

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
            std::vector<Failure> outcomes
                = whenThereIsRoom(m_context->vault, [&] { return writeCards(m_context->vault, m_writes); });
            const std::size_t asked = outcomes.size();
            std::erase_if(outcomes, [](const Failure& outcome) { return outcome.status == S_OK; });
            m_writes.clear();
            errors.clear();
            for (const Failure& outcome : outcomes)
                errors.push_back(outcome.status);
            // Where somebody else has one of several files, the others get their values.
            const auto concernsAll = std::find_if(outcomes.begin(), outcomes.end(), [](const Failure& outcome) {
                return outcome.status != E_ARK_CHECKED_OUT_ELSEWHERE && outcome.status != E_ARK_NOT_CHECKED_OUT;
            });
            if (concernsAll != outcomes.end())
                throw zn::StatusError(concernsAll->status, concernsAll->sentence);
            if (asked > 0 && outcomes.size() == asked)
                throw zn::StatusError(outcomes.front().status, outcomes.front().sentence);
            return S_OK;
        });
    }

private:
    ContextRef m_context;
    std::vector<CardWrite> m_writes;
};

} // namespace

zn::ObjectRef makeBatchCardUpdate(const ContextRef& context) { return std::make_shared<BatchCardUpdate>(context); }

} // namespace zn::arkin
