#include "arkin/store/CheckOut.h"

#include "arkin/store/Codes.h"
#include "arkin/store/GetFiles.h"
#include "arkin/store/GiveUp.h"
#include "arkin/store/Outlines.h"

#include <fmt/chrono.h>
#include <soci/soci.h>

namespace zn::arkin {

namespace {

std::string quotedName(Vault& vault, std::int32_t fileId) { return "\"" + zn::toUtf8(vault.file(fileId).name) + "\""; }

/// A file that was never checked in is only in its adder's hands: nothing else can refer to its content.
void deleteUnborn(Database& database, std::int32_t fileId)
{
    Outlines::disconnect(database, fileId);
    soci::session& session = database.session();
    session << "DELETE FROM file_references WHERE to_file_id = :f", soci::use(fileId);
    for (const char* table : {"versions", "file_folders", "local_copies"})
        session << "DELETE FROM " << table << " WHERE file_id = :f", soci::use(fileId);
    session << "DELETE FROM files WHERE id = :f", soci::use(fileId);
}

/// Ends the check-out; its local copy waits for `putBack` from now on.
void giveBack(Database& database, const CheckOutRow& row)
{
    dropCheckOut(database, row);
    if (row.baseVersion == 0)
        return deleteUnborn(database, row.fileId);
    database.session() << "DELETE FROM given_back WHERE file_id = :f AND machine = :m", soci::use(row.fileId),
        soci::use(row.machine);
    database.session() << "INSERT INTO given_back (file_id, folder_id, machine) VALUES (:f, :d, :m)",
        soci::use(row.fileId), soci::use(row.folderId), soci::use(row.machine);
}

/// The place of a local copy here that waits to be put back.
std::optional<Place> givenBack(Vault& vault, std::int32_t fileId)
{
    Place place{fileId, 0};
    vault.database().session() << "SELECT folder_id FROM given_back WHERE file_id = :f AND machine = :m",
        soci::use(fileId), soci::use(vault.caller().machine), soci::into(place.folderId);
    return vault.database().session().got_data() ? std::optional(place) : std::nullopt;
}

void putBack(Vault& vault, const Place& place)
{
    const auto file = vault.files().row(place.fileId);
    const GetRequest latest{place, 0};
    if (file && !file->deleted && !vault.files().checkOut(place.fileId))
        getFiles(vault, {&latest, 1}, LocalChanges::Discard);
    Transaction transaction(vault.database());
    vault.database().session() << "DELETE FROM given_back WHERE file_id = :f AND machine = :m", soci::use(place.fileId),
        soci::use(vault.caller().machine);
    transaction.commit();
}

} // namespace

void insertCheckOut(Vault& vault, const Place& place, std::int32_t baseVersion)
{
    const Caller& caller = vault.caller();
    const long long now = vault.clock().now();
    forgetGivenUp(vault, place.fileId);
    vault.database().session() << "INSERT INTO check_outs (file_id, folder_id, user_name, machine, taken_at, "
                                  "base_version, card_open, references_open, run_id) "
                                  "VALUES (:f, :d, :u, :m, :t, :b, 0, 0, :r)",
        soci::use(place.fileId), soci::use(place.folderId), soci::use(caller.user), soci::use(caller.machine),
        soci::use(now), soci::use(baseVersion), soci::use(caller.run);
}

void dropCheckOut(Database& database, const CheckOutRow& row)
{
    soci::session& session = database.session();
    const std::int32_t version = row.versionToCome();
    session << "DELETE FROM check_outs WHERE file_id = :f", soci::use(row.fileId);
    for (const char* table : {"card_values", "file_references"})
        session << "DELETE FROM " << table << " WHERE file_id = :f AND version = :v", soci::use(row.fileId),
            soci::use(version);
}

void foldCheckOut(Database& database, const CheckOutRow& row)
{
    soci::session& session = database.session();
    const std::int32_t version = row.versionToCome();
    session << "DELETE FROM check_outs WHERE file_id = :f", soci::use(row.fileId);
    for (const auto& [table, isOpen] :
        {std::pair("card_values", row.cardOpen), std::pair("file_references", row.referencesOpen)}) {
        if (!isOpen)
            continue;
        session << "DELETE FROM " << table << " WHERE file_id = :f AND version = :b", soci::use(row.fileId),
            soci::use(row.baseVersion);
        session << "UPDATE " << table << " SET version = :b WHERE file_id = :f AND version = :v",
            soci::use(row.baseVersion), soci::use(row.fileId), soci::use(version);
    }
}

void checkOut(Vault& vault, const Place& place)
{
    vault.permissions().refresh();
    vault.require(place, Right::Read);
    vault.require(place, Right::Add);
    for (;;) {
        const FileRow file = vault.file(place.fileId);
        // The copy is brought outside of the transaction, so that nobody waits for a large file.
        const GetRequest latest{place, file.latestVersion};
        if (!vault.files().checkOut(place.fileId))
            getFiles(vault, {&latest, 1});
        Transaction transaction(vault.database());
        if (const auto row = vault.files().checkOut(place.fileId)) {
            if (!vault.isMine(*row))
                throw checkedOutElsewhere(vault, *row);
            throw zn::StatusError(
                E_ARK_CHECKED_OUT, quotedName(vault, place.fileId) + " is checked out to you already.");
        }
        if (vault.file(place.fileId).latestVersion != file.latestVersion)
            continue;
        insertCheckOut(vault, place, file.latestVersion);
        transaction.commit();
        break;
    }
    vault.local().setReadOnly(vault.local().toMachine(vault.pathOf(place)), false);
}

void undoCheckOut(Vault& vault, std::int32_t fileId)
{
    auto place = vault.files().checkOut(fileId) ? std::nullopt : givenBack(vault, fileId);
    if (!place) {
        Transaction transaction(vault.database());
        const CheckOutRow row = requireMine(vault, fileId);
        giveBack(vault.database(), row);
        transaction.commit();
        if (row.baseVersion == 0)
            return;
        place = Place{fileId, row.folderId};
    }
    putBack(vault, *place);
}

std::vector<CheckOutRow> checkOutsOfRun(Vault& vault, std::int32_t run)
{
    const ReadScope scope(vault.database());
    std::vector<std::int32_t> ids;
    std::int32_t id = 0;
    soci::statement statement
        = (vault.database().session().prepare << "SELECT file_id FROM check_outs WHERE run_id = :r ORDER BY file_id",
            soci::use(run), soci::into(id));
    statement.execute();
    while (statement.fetch())
        ids.push_back(id);
    std::vector<CheckOutRow> rows;
    for (const auto& row : vault.files().checkOuts(ids))
        if (row)
            rows.push_back(*row);
    return rows;
}

void giveBackCheckOuts(Database& database, const std::string& query)
{
    std::vector<CheckOutRow> rows;
    CheckOutRow row;
    soci::statement statement = (database.session().prepare << query, soci::into(row.fileId), soci::into(row.folderId),
        soci::into(row.machine), soci::into(row.baseVersion));
    statement.execute();
    while (statement.fetch())
        rows.push_back(row);
    for (const CheckOutRow& each : rows)
        giveBack(database, each);
}

void putBackCopies(Vault& vault)
{
    const std::string& machine = vault.caller().machine;
    const auto vaultId = vault.info().id;
    std::vector<Place> places;
    Place place;
    soci::statement statement = (vault.database().session().prepare
            << "SELECT g.file_id, g.folder_id FROM given_back g JOIN files f ON f.id = g.file_id "
               "WHERE g.machine = :m AND f.vault_id = :v",
        soci::use(machine), soci::use(vaultId), soci::into(place.fileId), soci::into(place.folderId));
    statement.execute();
    while (statement.fetch())
        places.push_back(place);
    for (const Place& each : places) {
        try {
            putBack(vault, each);
        } catch (const zn::StatusError&) {
            continue; // whoever wants the file next is told what is the matter; the next call tries again
        }
    }
}

zn::StatusError checkedOutElsewhere(Vault& vault, const CheckOutRow& row)
{
    return zn::StatusError(E_ARK_CHECKED_OUT_ELSEWHERE,
        quotedName(vault, row.fileId) + " is checked out by " + row.user + " on " + row.machine + " since "
            + fmt::format("{:%Y-%m-%d %H:%M %Z}", fmt::localtime(row.takenAt))
            + (row.run == 0 ? "." : ", for run " + std::to_string(row.run) + "."));
}

CheckOutRow requireMine(Vault& vault, std::int32_t fileId)
{
    const auto row = vault.files().checkOut(fileId);
    if (!row)
        throw zn::StatusError(E_ARK_NOT_CHECKED_OUT, quotedName(vault, fileId) + " is not checked out.");
    if (!vault.isMine(*row))
        throw checkedOutElsewhere(vault, *row);
    return *row;
}

} // namespace zn::arkin
