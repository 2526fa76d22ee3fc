#include "arkin/store/CheckOut.h"
#include "arkin/store/Codes.h"

#include <algorithm>
#include <map>
#include <soci/soci.h>
#include <unordered_map>
#include <unordered_set>

// What is written to a checked-out file before its check-in: card values and references of the version to come.

namespace zn::arkin {

namespace {

/// The check-outs of files that are the caller's here, read in one go.
class OwnCheckOuts {
public:
    template <class Items>
    OwnCheckOuts(Vault& vault, const Items& items)
        : m_vault(vault)
    {
        std::vector<std::int32_t> ids;
        for (const auto& item : items)
            ids.push_back(item.fileId);
        for (const auto& row : vault.files().checkOuts(ids)) {
            if (row && vault.isMine(*row))
                m_rows.emplace(row->fileId, *row);
        }
    }

    /// Raises as `requireMine`.
    CheckOutRow& operator[](std::int32_t fileId)
    {
        const auto known = m_rows.find(fileId);
        return known != m_rows.end() ? known->second
                                     : m_rows.emplace(fileId, requireMine(m_vault, fileId)).first->second;
    }

    /// Gives the version to come its own copy of the card before the first write to it.
    void openCard(CheckOutRow& row)
    {
        if (row.cardOpen)
            return;
        m_vault.cards().copy(row.fileId, row.baseVersion, row.versionToCome());
        m_vault.database().session() << "UPDATE check_outs SET card_open = 1 WHERE file_id = :f", soci::use(row.fileId);
        row.cardOpen = true;
    }

    void openReferences(CheckOutRow& row)
    {
        if (row.referencesOpen)
            return;
        m_vault.references().copy(row.fileId, row.baseVersion, row.versionToCome());
        m_vault.database().session() << "UPDATE check_outs SET references_open = 1 WHERE file_id = :f",
            soci::use(row.fileId);
        row.referencesOpen = true;
    }

private:
    Vault& m_vault;
    std::unordered_map<std::int32_t, CheckOutRow> m_rows;
};

constexpr zn::Status notMine[] = {E_ARK_CHECKED_OUT_ELSEWHERE, E_ARK_NOT_CHECKED_OUT};

/// Whether the failure is that of a file which somebody else has, or nobody: it concerns this file alone.
bool isNotMine(const Failure& failure)
{
    return std::find(std::begin(notMine), std::end(notMine), failure.status) != std::end(notMine);
}

Failure refusalOf(const CardWrite& write, const std::unordered_set<std::int32_t>& variables, OwnCheckOuts& checkOuts)
{
    try {
        if (!variables.contains(write.variableId))
            throw zn::StatusError(E_ARK_NO_SUCH_VARIABLE);
        toStoredCard(write.value);
        checkOuts[write.fileId];
        return {zn::S_OK, {}};
    } catch (const zn::StatusError&) {
        return currentFailure();
    }
}

} // namespace

std::vector<Failure> writeCards(Vault& vault, std::span<const CardWrite> writes)
{
    Transaction transaction(vault.database());
    std::unordered_set<std::int32_t> variables;
    for (const Variable& variable : vault.cards().variables())
        variables.insert(variable.id);
    OwnCheckOuts checkOuts(vault, writes);
    std::vector<Failure> outcomes;
    std::vector<CardWrite> good;
    bool refused = false;
    for (const CardWrite& write : writes) {
        const Failure& outcome = outcomes.emplace_back(refusalOf(write, variables, checkOuts));
        if (outcome.status == zn::S_OK)
            good.push_back({write.fileId, write.variableId, write.configuration, write.value.deepCopy()});
        else
            refused = refused || !isNotMine(outcome);
    }
    if (refused)
        return outcomes;
    std::vector<std::int32_t> versions;
    for (const CardWrite& write : good) {
        CheckOutRow& row = checkOuts[write.fileId];
        checkOuts.openCard(row);
        versions.push_back(row.versionToCome());
    }
    vault.cards().write(good, versions);
    transaction.commit();
    return outcomes;
}

std::vector<Failure> addReferences(Vault& vault, std::span<const NewReference> references)
{
    Transaction transaction(vault.database());
    OwnCheckOuts checkOuts(vault, references);
    std::map<std::pair<std::int32_t, std::int32_t>, std::int32_t> versions;
    std::vector<ReferenceRow> rows;
    std::vector<Failure> leftOut;
    for (const NewReference& reference : references) {
        const auto [version, isNew] = versions.try_emplace({reference.to.fileId, reference.toVersion}, 0);
        if (isNew)
            version->second = vault.version(reference.to.fileId, reference.toVersion).version;
        try {
            CheckOutRow& row = checkOuts[reference.fileId];
            checkOuts.openReferences(row);
            rows.push_back(
                {row.fileId, row.versionToCome(), reference.to.fileId, reference.to.folderId, version->second});
        } catch (const zn::StatusError&) {
            if (!isNotMine(currentFailure()))
                throw;
            leftOut.push_back(currentFailure());
        }
    }
    vault.references().write(rows);
    transaction.commit();
    return leftOut;
}

} // namespace zn::arkin
