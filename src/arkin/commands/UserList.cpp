#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include <algorithm>
#include <soci/soci.h>

namespace zn::arkin {

namespace {

struct User {
    std::string name;
    std::int64_t firstSeen = 0;
    std::int64_t lastActive = 0; ///< the latest of a version, a check-out and a launch; 0 for never
    std::int32_t checkedOut = 0;
    std::int32_t versions = 0;
    std::int32_t runs = 0;
    std::int32_t rights = 0; ///< folders that say something of the user
};

// Of the home's users in the one vault. Who has rights but has never been here is listed, too.
constexpr const char* users = R"(
WITH known (name) AS (SELECT name FROM users UNION SELECT p.user_name FROM permissions p
                      JOIN folders d ON d.id = p.folder_id WHERE d.vault_id = :v1)
SELECT k.name, COALESCE((SELECT u.first_seen FROM users u WHERE u.name = k.name), 0),
    (SELECT COALESCE(MAX(v.made_at), 0) FROM versions v JOIN files f ON f.id = v.file_id
     WHERE v.user_name = k.name AND f.vault_id = :v2),
    (SELECT COALESCE(MAX(c.taken_at), 0) FROM check_outs c JOIN files f ON f.id = c.file_id
     WHERE c.user_name = k.name AND f.vault_id = :v3),
    (SELECT COALESCE(MAX(r.launched_at), 0) FROM task_runs r WHERE r.user_name = k.name AND r.vault_id = :v4),
    (SELECT COUNT(*) FROM check_outs c JOIN files f ON f.id = c.file_id
     WHERE c.user_name = k.name AND f.vault_id = :v5),
    (SELECT COUNT(*) FROM versions v JOIN files f ON f.id = v.file_id
     WHERE v.user_name = k.name AND f.vault_id = :v6),
    (SELECT COUNT(*) FROM task_runs r WHERE r.user_name = k.name AND r.vault_id = :v7),
    (SELECT COUNT(*) FROM permissions p JOIN folders d ON d.id = p.folder_id
     WHERE p.user_name = k.name AND d.vault_id = :v8)
FROM known k ORDER BY k.name)";

std::vector<User> usersOf(Database& database, std::int32_t vaultId)
{
    std::vector<User> list;
    User row;
    long long first = 0, made = 0, taken = 0, launched = 0;
    using soci::into;
    using soci::use;
    soci::statement select = (database.session().prepare << users, use(vaultId), use(vaultId), use(vaultId),
        use(vaultId), use(vaultId), use(vaultId), use(vaultId), use(vaultId), into(row.name), into(first), into(made),
        into(taken), into(launched), into(row.checkedOut), into(row.versions), into(row.runs), into(row.rights));
    select.execute();
    while (select.fetch()) {
        row.firstSeen = first;
        row.lastActive = std::max({made, taken, launched});
        list.push_back(row);
    }
    return list;
}

class UserList : public Command {
public:
    void declare(Arguments&) override { }

    int run(Session& session) override
    {
        session.tasks(); // the tables of runs are there then
        auto entries = Json::array();
        std::vector<std::vector<std::string>> rows{
            {"USER", "FIRST SEEN", "LAST ACTIVE", "CHECKED OUT", "VERSIONS", "RUNS", "RIGHTS"}};
        for (const User& user : usersOf(session.store().database(), session.vault().info().id)) {
            entries.push_back({{"user", user.name}, {"firstSeen", jsonTime(user.firstSeen)},
                {"lastActive", jsonTime(user.lastActive)}, {"checkedOut", user.checkedOut}, {"versions", user.versions},
                {"runs", user.runs}, {"rights", user.rights}});
            rows.push_back(
                {user.name, shownTime(user.firstSeen), shownTime(user.lastActive), std::to_string(user.checkedOut),
                    std::to_string(user.versions), std::to_string(user.runs), std::to_string(user.rights)});
        }
        if (session.json())
            printJson(entries);
        else
            printTable(rows, "Nobody has been here yet.");
        return commandDone;
    }
};

} // namespace

MadeCommand userListCommand() { return std::make_unique<UserList>(); }

} // namespace zn::arkin
