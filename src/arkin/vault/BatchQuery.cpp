#include "arkin/vault/Utilities.h"

namespace zn::arkin {

using zn::S_OK;
using zn::Status;

namespace {

class BatchQuery final : public zn::IArkBatchQuery {
public:
    explicit BatchQuery(ContextRef context)
        : m_context(std::move(context))
    {
    }

    Status AddFile(const zn::Value& path) override
    {
        return guarded(*m_context, [&] {
            m_paths.push_back(path.toText());
            return S_OK;
        });
    }

    Status CreateList(zn::TextView columns, std::vector<zn::Text>& columnNames) override
    {
        return guarded(*m_context, [&] {
            if (!columns.empty())
                throw zn::StatusError(zn::E_INVALIDARG,
                    "The vault's list has only its default columns, not \"" + zn::toUtf8(columns) + "\".");
            columnNames = {u"File", u"Latest Version"};
            return S_OK;
        });
    }

    Status GetRows(std::vector<zn::ArkQueryRow>& rows) override
    {
        return guarded(*m_context, [&] {
            Vault& vault = m_context->vault;
            Transaction snapshot(vault.database(), Transaction::Kind::Read);
            std::vector<std::int32_t> ids;
            for (const Place& place : vault.findAll(m_paths)) {
                if (place.fileId != 0)
                    ids.push_back(place.fileId);
            }
            std::vector<zn::ArkQueryRow> found;
            for (const auto& row : vault.files().rows(ids)) {
                if (row)
                    found.push_back({row->id, row->latestVersion});
            }
            rows = std::move(found);
            return S_OK;
        });
    }

private:
    ContextRef m_context;
    std::vector<zn::Text> m_paths;
};

} // namespace

zn::ObjectRef makeBatchQuery(const ContextRef& context) { return std::make_shared<BatchQuery>(context); }

} // namespace zn::arkin
