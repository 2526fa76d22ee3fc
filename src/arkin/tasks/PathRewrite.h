#pragma once

#include "arkin/store/Database.h"

#include <vector>

namespace zn::arkin {

/// Lets the paths that the tables of the tasks keep follow a vault's local folder: those that are `from` or lie below
/// it, without regard to case. What has happened (results, messages, audits) keeps its paths. Inside a transaction.
class PathRewrite {
public:
    PathRewrite(Database& database, std::int32_t vaultId, zn::TextView from, zn::TextView to);

    /// Of tasks, and of runs that wait. "TASK: VARIABLE" of each of a task.
    std::vector<std::string> taskVariables();
    /// How many schedules have other paths now.
    std::int32_t schedules();
    std::int32_t waitingRuns();

private:
    /// A row's path: which of its owner's, and what it is now.
    struct Change {
        std::int32_t owner = 0;
        std::string name, path;
    };

    std::optional<std::string> rewritten(const std::string& path) const;
    /// `rows` selects owner, name and path; `update` takes path, owner and name.
    std::vector<Change> rewrite(const std::string& rows, const std::string& update);
    static std::int32_t ownersOf(const std::vector<Change>& changes);

    Database& m_database;
    std::int32_t m_vaultId;
    zn::Text m_from, m_to;
};

} // namespace zn::arkin
