#include "arkin/store/Schema.h"

// Times are Unix seconds. A `…_key` column holds the case-folded form of a name, by which it is compared.

namespace zn::arkin {

namespace {

const char* const firstStep[] = {
    R"(CREATE TABLE vaults (
        id INTEGER NOT NULL PRIMARY KEY,
        name VARCHAR(260) NOT NULL,
        name_key VARCHAR(260) NOT NULL UNIQUE,
        root VARCHAR(1000) NOT NULL))",
    // The root folder of a vault has the parent 0 and an empty name.
    R"(CREATE TABLE folders (
        id INTEGER NOT NULL PRIMARY KEY,
        vault_id INTEGER NOT NULL REFERENCES vaults (id),
        parent_id INTEGER NOT NULL,
        name VARCHAR(260) NOT NULL,
        name_key VARCHAR(260) NOT NULL,
        UNIQUE (vault_id, parent_id, name_key)))",
    // A file that no folder shows any more has its time of deletion and keeps its versions.
    R"(CREATE TABLE files (
        id INTEGER NOT NULL PRIMARY KEY,
        vault_id INTEGER NOT NULL REFERENCES vaults (id),
        name VARCHAR(260) NOT NULL,
        latest_version INTEGER NOT NULL,
        deleted_at BIGINT NOT NULL,
        deleted_by VARCHAR(260) NOT NULL))",
    R"(CREATE TABLE file_folders (
        folder_id INTEGER NOT NULL REFERENCES folders (id),
        name_key VARCHAR(260) NOT NULL,
        file_id INTEGER NOT NULL REFERENCES files (id),
        PRIMARY KEY (folder_id, name_key)))",
    "CREATE INDEX file_folders_by_file ON file_folders (file_id)",
    R"(CREATE TABLE versions (
        file_id INTEGER NOT NULL REFERENCES files (id),
        version INTEGER NOT NULL,
        content CHAR(64) NOT NULL,
        content_size BIGINT NOT NULL,
        comment_text VARCHAR(4000) NOT NULL,
        user_name VARCHAR(260) NOT NULL,
        made_at BIGINT NOT NULL,
        revision VARCHAR(260) NOT NULL,
        state VARCHAR(260) NOT NULL,
        PRIMARY KEY (file_id, version)))",
    // The version to come is `base_version` + 1: base 0 is a file that was added and never checked in, whose version 1
    // exists already. `card_open` and `references_open` tell that the version to come has such rows of its own.
    R"(CREATE TABLE check_outs (
        file_id INTEGER NOT NULL PRIMARY KEY REFERENCES files (id),
        folder_id INTEGER NOT NULL REFERENCES folders (id),
        user_name VARCHAR(260) NOT NULL,
        machine VARCHAR(260) NOT NULL,
        taken_at BIGINT NOT NULL,
        base_version INTEGER NOT NULL,
        card_open INTEGER NOT NULL,
        references_open INTEGER NOT NULL))",
    R"(CREATE TABLE variables (
        id INTEGER NOT NULL PRIMARY KEY,
        vault_id INTEGER NOT NULL REFERENCES vaults (id),
        name VARCHAR(260) NOT NULL,
        name_key VARCHAR(260) NOT NULL,
        UNIQUE (vault_id, name_key)))",
    // `value_type` is the automation type number.
    R"(CREATE TABLE card_values (
        file_id INTEGER NOT NULL REFERENCES files (id),
        version INTEGER NOT NULL,
        variable_id INTEGER NOT NULL REFERENCES variables (id),
        configuration VARCHAR(260) NOT NULL,
        value_type INTEGER NOT NULL,
        value_text VARCHAR(4000) NOT NULL,
        PRIMARY KEY (file_id, version, variable_id, configuration)))",
    R"(CREATE TABLE file_references (
        file_id INTEGER NOT NULL REFERENCES files (id),
        version INTEGER NOT NULL,
        to_file_id INTEGER NOT NULL REFERENCES files (id),
        to_folder_id INTEGER NOT NULL REFERENCES folders (id),
        to_version INTEGER NOT NULL,
        PRIMARY KEY (file_id, version, to_file_id)))",
    "CREATE INDEX file_references_by_target ON file_references (to_file_id)",
    // The nearest folder upwards that has a row for the user decides; without any, everything is allowed.
    R"(CREATE TABLE permissions (
        folder_id INTEGER NOT NULL REFERENCES folders (id),
        user_name VARCHAR(260) NOT NULL,
        may_read INTEGER NOT NULL,
        may_add INTEGER NOT NULL,
        may_delete INTEGER NOT NULL,
        PRIMARY KEY (folder_id, user_name)))",
    R"(CREATE TABLE users (
        name VARCHAR(260) NOT NULL PRIMARY KEY,
        first_seen BIGINT NOT NULL))",
    // What this system has put to a local disk: a copy that still has size and time of change is unchanged.
    R"(CREATE TABLE local_copies (
        machine VARCHAR(260) NOT NULL,
        folder_id INTEGER NOT NULL REFERENCES folders (id),
        file_id INTEGER NOT NULL REFERENCES files (id),
        content CHAR(64) NOT NULL,
        content_size BIGINT NOT NULL,
        modified_ns BIGINT NOT NULL,
        PRIMARY KEY (machine, folder_id, file_id)))",
};

const char* const secondStep[] = {
    // What a version's content says of itself: sheets of a drawing, configurations of a part or an assembly.
    R"(CREATE TABLE document_parts (
        file_id INTEGER NOT NULL REFERENCES files (id),
        version INTEGER NOT NULL,
        position INTEGER NOT NULL,
        name VARCHAR(260) NOT NULL,
        PRIMARY KEY (file_id, version, position)))",
    // The files to which a content refers. `to_file_id` 0 waits for a file that the vault doesn't have yet; `name_key`
    // is that of the path's last component.
    R"(CREATE TABLE document_references (
        file_id INTEGER NOT NULL REFERENCES files (id),
        version INTEGER NOT NULL,
        position INTEGER NOT NULL,
        path VARCHAR(4000) NOT NULL,
        name_key VARCHAR(260) NOT NULL,
        to_file_id INTEGER NOT NULL,
        PRIMARY KEY (file_id, version, position)))",
    // Where a deleted file was shown last.
    R"(CREATE TABLE deleted_places (
        file_id INTEGER NOT NULL PRIMARY KEY REFERENCES files (id),
        folder_id INTEGER NOT NULL REFERENCES folders (id)))",
    "CREATE INDEX document_references_by_target ON document_references (to_file_id, name_key)",
};

const char* const thirdStep[] = {
    // The run of a task that took the file; 0 if a person did.
    "ALTER TABLE check_outs ADD COLUMN run_id INTEGER NOT NULL DEFAULT 0",
};

const char* const fourthStep[] = {
    // One row: what the archive's file `identity` says, too.
    "CREATE TABLE store_identity (id CHAR(36) NOT NULL PRIMARY KEY)",
};

const char* const fifthStep[] = {
    // Local copies of check-outs that somebody else than their owner has ended; they are put back on their machine.
    R"(CREATE TABLE given_back (
        file_id INTEGER NOT NULL,
        folder_id INTEGER NOT NULL,
        machine VARCHAR(260) NOT NULL,
        PRIMARY KEY (file_id, machine)))",
    "CREATE INDEX check_outs_by_run ON check_outs (run_id)",
    // The run of a task that made the version; 0 if a person did.
    "ALTER TABLE versions ADD COLUMN run_id INTEGER NOT NULL DEFAULT 0",
};

const char* const seventhStep[] = {
    // Where files were before. Paths below the vault's root; `position` counts a file's moves from 0.
    R"(CREATE TABLE file_moves (
        file_id INTEGER NOT NULL REFERENCES files (id),
        position INTEGER NOT NULL,
        moved_at BIGINT NOT NULL,
        user_name VARCHAR(260) NOT NULL,
        from_path VARCHAR(4000) NOT NULL,
        to_path VARCHAR(4000) NOT NULL,
        PRIMARY KEY (file_id, position)))",
};
const char* const seventhSums[] = {"file_moves"};

// The turn of writing (`write_turn`) in which a file's name or card, or which version is the latest, has changed last:
// by it, indexes beside the vault take over what is new. What is damaged here makes a search miss a file, and no more.
#define ZN_NOTES_CHANGE(name, when, file)                                                                              \
    "CREATE TRIGGER " name " AFTER " when " BEGIN INSERT OR REPLACE INTO file_changes (file_id, turn) VALUES (" file   \
    ", (SELECT turn FROM write_turn)); END"

const char* const eighthStep[] = {
    "CREATE TABLE file_changes (file_id INTEGER NOT NULL PRIMARY KEY, turn BIGINT NOT NULL)",
    "INSERT INTO file_changes (file_id, turn) SELECT id, 0 FROM files",
    "CREATE INDEX file_changes_by_turn ON file_changes (turn)",
    ZN_NOTES_CHANGE("files_come", "INSERT ON files", "NEW.id"),
    ZN_NOTES_CHANGE("files_change", "UPDATE OF name, latest_version, deleted_at ON files", "NEW.id"),
    ZN_NOTES_CHANGE("files_go", "DELETE ON files", "OLD.id"),
    ZN_NOTES_CHANGE("card_values_come", "INSERT ON card_values", "NEW.file_id"),
    ZN_NOTES_CHANGE("card_values_change", "UPDATE OF value_text ON card_values", "NEW.file_id"),
    ZN_NOTES_CHANGE("card_values_go", "DELETE ON card_values", "OLD.file_id"),
};

const char* const ninthStep[] = {
    // What a repair has made of damaged rows, with what stood there before.
    R"(CREATE TABLE repairs (
        id INTEGER NOT NULL PRIMARY KEY,
        made_at BIGINT NOT NULL,
        user_name VARCHAR(260) NOT NULL,
        table_name VARCHAR(260) NOT NULL,
        row_number BIGINT NOT NULL,
        how VARCHAR(1000) NOT NULL,
        former TEXT NOT NULL))",
};
const char* const ninthSums[] = {"repairs"};

const char* const tenthStep[] = {
    // Check-outs that somebody else than their owner has ended, and why. `pending` until the file is checked out on
    // that machine again: its local copy may hold what nobody has checked in.
    R"(CREATE TABLE given_up (
        id INTEGER NOT NULL PRIMARY KEY,
        file_id INTEGER NOT NULL,
        user_name VARCHAR(260) NOT NULL,
        machine VARCHAR(260) NOT NULL,
        taken_at BIGINT NOT NULL,
        base_version INTEGER NOT NULL,
        run_id INTEGER NOT NULL,
        by_user VARCHAR(260) NOT NULL,
        made_at BIGINT NOT NULL,
        reason VARCHAR(4000) NOT NULL,
        pending INTEGER NOT NULL))",
    "CREATE INDEX given_up_by_file ON given_up (file_id)",
};
const char* const tenthSums[] = {"given_up"};

const char* const eleventhStep[] = {
    // The archive of the home that works with the vault's local folder; see VaultPlace.h. Empty until that is known.
    "ALTER TABLE vaults ADD COLUMN archive_folder VARCHAR(1000) NOT NULL DEFAULT ''",
};
const char* const eleventhSums[] = {"vaults"};

/// What was damaged in a local copy's row is made anew by the next get, so that table has no sums.
const char* const summedTables[] = {"vaults", "folders", "files", "file_folders", "versions", "check_outs", "variables",
    "card_values", "file_references", "permissions", "users", "document_parts", "document_references", "deleted_places",
    "store_identity", "given_back"};

const SchemaStep steps[] = {
    {firstStep},
    {secondStep},
    {thirdStep},
    {fourthStep},
    {fifthStep},
    {{}, summedTables},
    {seventhStep, seventhSums},
    {eighthStep},
    {ninthStep, ninthSums},
    {tenthStep, tenthSums},
    {eleventhStep, eleventhSums},
};

} // namespace

const SchemaArea vaultSchema{"vault", steps};

} // namespace zn::arkin
