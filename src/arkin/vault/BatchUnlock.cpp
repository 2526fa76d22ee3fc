#include "arkin/store/CheckIn.h"
#include "arkin/vault/Utilities.h"

namespace zn::arkin {

using zn::S_OK;
using zn::Status;

namespace {

class BatchUnlock final : public zn::IArkBatchUnlock, public zn::IArkLeftOut {
public:
    explicit BatchUnlock(ContextRef context)
        : m_context(std::move(context))
    {
    }

    Status SetComment(zn::TextView comment) override
    {
        return guarded(*m_context, [&] {
            m_comment = comment;
            return S_OK;
        });
    }

    Status AddSelection(zn::IArkVault& vault, const std::vector<zn::ArkFileFolderPair>& pairs) override
    {
        return guarded(*m_context, [&] {
            requireSameVault(*m_context, vault);
            m_places.insert(m_places.end(), pairs.begin(), pairs.end());
            return S_OK;
        });
    }

    Status CreateTree(std::int32_t, std::int32_t, std::int32_t, std::int32_t& count) override
    {
        return guarded(*m_context, [&] {
            m_done = false;
            m_plan = whenThereIsRoom(m_context->vault, [&] {
                m_leftOut.clear();
                return planCheckIn(m_context->vault, m_places, &m_leftOut);
            });
            count = static_cast<std::int32_t>(m_plan->files.size());
            return S_OK;
        });
    }

    Status Unlock(std::int32_t, std::int32_t) override
    {
        return guarded(*m_context, [&] {
            if (!m_plan)
                throw zn::StatusError(zn::E_FAIL, "The check-in was not prepared by CreateTree.");
            const std::vector<LeftOut> planned = m_leftOut;
            whenThereIsRoom(m_context->vault, [&] {
                m_leftOut = planned;
                checkIn(m_context->vault, *m_plan, m_comment, &m_leftOut);
            });
            m_plan.reset();
            m_places.clear();
            m_done = true;
            if (!m_leftOut.empty())
                throw zn::StatusError(m_leftOut.front().failure.status, sentencesOf(records()));
            return S_OK;
        });
    }

    Status GetLeftOut(std::vector<zn::ArkLeftOut>& files) override
    {
        if (!m_done)
            return zn::E_FAIL; // nothing came in at all
        files = records();
        return S_OK;
    }

private:
    std::vector<zn::ArkLeftOut> records() const
    {
        std::vector<zn::ArkLeftOut> records;
        for (const LeftOut& each : m_leftOut)
            records.push_back(recordOf(each));
        return records;
    }

    ContextRef m_context;
    zn::Text m_comment;
    std::vector<Place> m_places;
    std::optional<CheckInPlan> m_plan;
    std::vector<LeftOut> m_leftOut;
    bool m_done = false;
};

} // namespace

zn::ObjectRef makeBatchUnlock(const ContextRef& context) { return std::make_shared<BatchUnlock>(context); }

} // namespace zn::arkin
