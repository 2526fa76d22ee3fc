#include "arkin/store/FindFiles.h"

#include "base/Paths.h"

#include <algorithm>
#include <soci/soci.h>
#include <unordered_map>

namespace zn::arkin {

namespace {

constexpr const char* filesOfVault
    = "SELECT p.folder_id, f.id, f.name, f.latest_version, COALESCE(v.content_size, 0), COALESCE(v.made_at, 0), "
      "COALESCE(v.state, ''), COALESCE(c.user_name, '') FROM file_folders p JOIN files f ON f.id = p.file_id "
      "LEFT JOIN versions v ON v.file_id = f.id AND v.version = f.latest_version "
      "LEFT JOIN check_outs c ON c.file_id = f.id WHERE f.vault_id = :v AND f.deleted_at = 0";

/// Iterates without recursion: behind the last star, whatever didn't fit is tried one character later.
bool fitsFolded(zn::TextView text, zn::TextView pattern)
{
    std::size_t at = 0;
    std::size_t sign = 0;
    std::size_t star = zn::TextView::npos;
    std::size_t behindStar = 0;
    while (at < text.size()) {
        if (sign < pattern.size() && pattern[sign] == u'*') {
            star = sign++;
            behindStar = at;
        } else if (sign < pattern.size() && (pattern[sign] == u'?' || pattern[sign] == text[at])) {
            ++sign;
            ++at;
        } else if (star != zn::TextView::npos) {
            sign = star + 1;
            at = ++behindStar;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of(u'*', sign) == zn::TextView::npos;
}

/// Which folders lie in the one that is asked for, and may be read.
class Reach {
public:
    Reach(Vault& vault, std::int32_t top)
        : m_vault(vault)
        , m_top(top)
    {
        vault.permissions().refresh();
    }

    bool holds(std::int32_t folderId)
    {
        const auto [known, isNew] = m_known.try_emplace(folderId, false);
        if (isNew)
            known->second = isBelow(folderId) && m_vault.permissions().allowed(folderId, Right::Read);
        return known->second;
    }

private:
    bool isBelow(std::int32_t folderId)
    {
        while (folderId != 0 && folderId != m_top)
            folderId = m_vault.folders().parentOf(folderId);
        return folderId == m_top;
    }

    Vault& m_vault;
    std::int32_t m_top;
    std::unordered_map<std::int32_t, bool> m_known;
};

bool fits(const FoundFile& file, zn::TextView name, const FileQuery& query)
{
    return (query.name.empty() || fitsPattern(name, query.name))
        && (query.state.empty() || zn::equalNoCase(file.state, query.state))
        && (!query.checkedOutBy || file.checkedOutBy == *query.checkedOutBy)
        && (!query.leastSize || file.size >= *query.leastSize) && (!query.mostSize || file.size <= *query.mostSize)
        && (!query.since || file.madeAt >= *query.since) && (!query.until || file.madeAt <= *query.until);
}

bool cardFits(Cards& cards, const FoundFile& file, const FileQuery& query)
{
    if (query.card.empty())
        return true;
    const std::vector<CardValue> values = cards.values(file.place.fileId, file.version);
    return std::all_of(query.card.begin(), query.card.end(), [&](const FileQuery::CardCondition& condition) {
        return std::any_of(values.begin(), values.end(), [&](const CardValue& value) {
            return value.variableId == condition.variableId && condition.fits(value.value);
        });
    });
}

} // namespace

bool fitsPattern(zn::TextView text, zn::TextView pattern)
{
    const bool isPart = pattern.find_first_of(u"*?") == zn::TextView::npos;
    const zn::Text folded = zn::foldCase(pattern);
    return fitsFolded(zn::foldCase(text), isPart ? u"*" + folded + u"*" : folded);
}

std::vector<FoundFile> findFiles(Vault& vault, const FileQuery& query)
{
    const ReadScope scope(vault.database());
    Reach reach(vault, query.folderId);
    FoundFile row;
    std::string name, state;
    long long size = 0, madeAt = 0;
    std::int32_t wanted = 0;
    const std::int32_t vaultId = vault.info().id;
    std::string sql = filesOfVault;
    if (query.among)
        sql += " AND f.id = :f";
    soci::statement statement(vault.database().session());
    statement.exchange(soci::use(vaultId));
    if (query.among)
        statement.exchange(soci::use(wanted));
    statement.exchange(soci::into(row.place.folderId));
    statement.exchange(soci::into(row.place.fileId));
    statement.exchange(soci::into(name));
    statement.exchange(soci::into(row.version));
    statement.exchange(soci::into(size));
    statement.exchange(soci::into(madeAt));
    statement.exchange(soci::into(state));
    statement.exchange(soci::into(row.checkedOutBy));
    statement.alloc();
    statement.prepare(sql);
    statement.define_and_bind();
    std::vector<FoundFile> found;
    const auto take = [&] {
        statement.execute();
        while (statement.fetch()) {
            row.size = size;
            row.madeAt = madeAt;
            row.state = zn::toText(state);
            const zn::Text text = zn::toText(name);
            if (!fits(row, text, query) || !reach.holds(row.place.folderId) || !cardFits(vault.cards(), row, query))
                continue;
            row.path = zn::pathAppend(vault.folders().pathOf(row.place.folderId), text);
            found.push_back(row);
        }
    };
    if (!query.among)
        take();
    else
        for (const std::int32_t fileId : *query.among) {
            wanted = fileId;
            take();
        }
    std::sort(found.begin(), found.end(),
        [](const FoundFile& one, const FoundFile& other) { return zn::foldCase(one.path) < zn::foldCase(other.path); });
    return found;
}

} // namespace zn::arkin
