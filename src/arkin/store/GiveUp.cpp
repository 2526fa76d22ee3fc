#include "arkin/store/GiveUp.h"

#include "arkin/store/CheckOut.h"
#include "arkin/store/Codes.h"

#include <fmt/chrono.h>
#include <soci/soci.h>

namespace zn::arkin {

namespace {

std::string quotedName(Vault& vault, std::int32_t fileId) { return "\"" + zn::toUtf8(vault.file(fileId).name) + "\""; }

void keep(Vault& vault, const CheckOutRow& row, const std::string& reason)
{
    const std::int32_t id = vault.database().allocateIds("given_up");
    const long long takenAt = row.takenAt, now = vault.clock().now();
    vault.database().session() << "INSERT INTO given_up (id, file_id, user_name, machine, taken_at, base_version, "
                                  "run_id, by_user, made_at, reason, pending) "
                                  "VALUES (:i, :f, :u, :m, :t, :b, :r, :by, :at, :why, 1)",
        soci::use(id), soci::use(row.fileId), soci::use(row.user), soci::use(row.machine), soci::use(takenAt),
        soci::use(row.baseVersion), soci::use(row.run), soci::use(vault.caller().user), soci::use(now),
        soci::use(reason);
}

std::vector<GivenUp> read(Database& database, const std::string& condition)
{
    std::vector<GivenUp> all;
    GivenUp each;
    long long takenAt = 0, at = 0;
    soci::statement statement = (database.session().prepare
            << "SELECT user_name, machine, taken_at, base_version, by_user, made_at, reason FROM given_up WHERE "
            << condition << " ORDER BY id",
        soci::into(each.user), soci::into(each.machine), soci::into(takenAt), soci::into(each.baseVersion),
        soci::into(each.byUser), soci::into(at), soci::into(each.reason));
    statement.execute();
    while (statement.fetch()) {
        each.takenAt = takenAt;
        each.at = at;
        all.push_back(each);
    }
    return all;
}

} // namespace

void giveUp(Vault& vault, const CheckOutRow& seen, const std::string& reason)
{
    if (reason.find_first_not_of(" \t\n") == std::string::npos)
        throw zn::StatusError(zn::E_INVALIDARG, "A check-out of others is given up with a reason only.");
    vault.permissions().refresh();
    vault.require({seen.fileId, seen.folderId}, Right::Delete);
    if (vault.isMine(seen))
        throw zn::StatusError(
            zn::E_INVALIDARG, quotedName(vault, seen.fileId) + " is checked out to you here; undo it without force.");
    Transaction transaction(vault.database());
    const auto row = vault.files().checkOut(seen.fileId);
    if (!row || row->user != seen.user || row->machine != seen.machine || row->takenAt != seen.takenAt
        || row->run != seen.run)
        throw zn::StatusError(E_ARK_NOT_CHECKED_OUT,
            "The check-out of " + quotedName(vault, seen.fileId) + " has changed meanwhile. Look at it again.");
    keep(vault, *row, reason);
    if (row->baseVersion == 0) // its version and card are those of the addition, which stay
        vault.database().session() << "DELETE FROM check_outs WHERE file_id = :f", soci::use(row->fileId);
    else
        dropCheckOut(vault.database(), *row);
    transaction.commit();
}

std::vector<GivenUp> givenUp(Database& database, std::int32_t fileId)
{
    return read(database, "file_id = " + std::to_string(fileId));
}

void requireNotGivenUp(Vault& vault, std::int32_t fileId)
{
    for (const GivenUp& each : read(vault.database(), "pending = 1 AND file_id = " + std::to_string(fileId))) {
        if (each.machine != vault.caller().machine)
            continue;
        throw zn::StatusError(E_ARK_NOT_CHECKED_OUT,
            fmt::format(
                "The check-out of {} by {} was given up by {} on {:%Y-%m-%d %H:%M %Z} because \"{}\". The local "
                "copy is as it was left: move it aside, check the file out again, and put it back.",
                quotedName(vault, fileId), each.user, each.byUser, fmt::localtime(each.at), each.reason));
    }
}

void forgetGivenUp(Vault& vault, std::int32_t fileId)
{
    vault.database().session() << "UPDATE given_up SET pending = 0 WHERE pending = 1 AND file_id = :f AND machine = :m",
        soci::use(fileId), soci::use(vault.caller().machine);
}

} // namespace zn::arkin
