#include "arkin/tasks/TaskSchema.h"

// Times are Unix seconds. Variable names are compared exactly, as the placeholders of a macro are; task names by their
// case-folded form in `name_key`. `value_type` is the automation type number (see StoredVariable.h).

namespace zn::arkin {

namespace {

const char* const firstStep[] = {
    R"(CREATE TABLE tasks (
        id INTEGER NOT NULL PRIMARY KEY,
        vault_id INTEGER NOT NULL REFERENCES vaults (id),
        name VARCHAR(260) NOT NULL,
        name_key VARCHAR(260) NOT NULL,
        add_in VARCHAR(260) NOT NULL,
        created_by VARCHAR(260) NOT NULL,
        created_at BIGINT NOT NULL,
        UNIQUE (vault_id, name_key)))",
    R"(CREATE TABLE task_variables (
        task_id INTEGER NOT NULL REFERENCES tasks (id),
        name VARCHAR(260) NOT NULL,
        value_type INTEGER NOT NULL,
        value_text TEXT NOT NULL,
        PRIMARY KEY (task_id, name)))",
    R"(CREATE TABLE task_menu_entries (
        task_id INTEGER NOT NULL REFERENCES tasks (id),
        position INTEGER NOT NULL,
        identifier INTEGER NOT NULL,
        menu_text VARCHAR(1000) NOT NULL,
        status_text VARCHAR(1000) NOT NULL,
        flags INTEGER NOT NULL,
        PRIMARY KEY (task_id, position)))",
    // A run carries the name of its task and not its number: it stays readable when the task has been deleted.
    // `claim` counts the workers that took the run; only the one who holds the last number may write.
    R"(CREATE TABLE task_runs (
        id INTEGER NOT NULL PRIMARY KEY,
        vault_id INTEGER NOT NULL REFERENCES vaults (id),
        guid CHAR(38) NOT NULL UNIQUE,
        task_name VARCHAR(260) NOT NULL,
        add_in VARCHAR(260) NOT NULL,
        user_name VARCHAR(260) NOT NULL,
        state INTEGER NOT NULL,
        claim INTEGER NOT NULL,
        owner_host VARCHAR(260) NOT NULL,
        owner_process INTEGER NOT NULL,
        owner_mark BIGINT NOT NULL,
        heartbeat_at BIGINT NOT NULL,
        progress_total INTEGER NOT NULL,
        progress_position INTEGER NOT NULL,
        progress_text VARCHAR(4000) NOT NULL,
        result_code INTEGER NOT NULL,
        result_text TEXT NOT NULL,
        launched_at BIGINT NOT NULL,
        started_at BIGINT NOT NULL,
        ended_at BIGINT NOT NULL))",
    "CREATE INDEX task_runs_by_state ON task_runs (vault_id, state, id)",
    // `own` tells what the run wrote itself from what it took over from the definition at its launch.
    R"(CREATE TABLE task_run_variables (
        run_id INTEGER NOT NULL REFERENCES task_runs (id),
        name VARCHAR(260) NOT NULL,
        value_type INTEGER NOT NULL,
        value_text TEXT NOT NULL,
        own INTEGER NOT NULL,
        PRIMARY KEY (run_id, name)))",
    R"(CREATE TABLE task_run_items (
        run_id INTEGER NOT NULL REFERENCES task_runs (id),
        position INTEGER NOT NULL,
        file_id INTEGER NOT NULL,
        folder_id INTEGER NOT NULL,
        path VARCHAR(4000) NOT NULL,
        configuration VARCHAR(260) NOT NULL,
        item_type INTEGER NOT NULL,
        version INTEGER NOT NULL,
        PRIMARY KEY (run_id, position)))",
    R"(CREATE TABLE task_run_documents (
        run_id INTEGER NOT NULL REFERENCES task_runs (id),
        position INTEGER NOT NULL,
        file_id INTEGER NOT NULL,
        kind INTEGER NOT NULL,
        folder_id INTEGER NOT NULL,
        version INTEGER NOT NULL,
        PRIMARY KEY (run_id, position)))",
};

// `revision` counts the changes of a definition: who writes on the ground of what he has read finds out that somebody
// else was quicker.
const char* const revisionStep[] = {
    "ALTER TABLE tasks ADD COLUMN revision INTEGER NOT NULL DEFAULT 0",
    "ALTER TABLE tasks ADD COLUMN changed_by VARCHAR(260) NOT NULL DEFAULT ''",
    "ALTER TABLE tasks ADD COLUMN changed_at BIGINT NOT NULL DEFAULT 0",
};

// What a run says about single files, and how many outputs it should have given and didn't.
const char* const messagesStep[] = {
    "ALTER TABLE task_runs ADD COLUMN outputs_expected INTEGER NOT NULL DEFAULT 0",
    "ALTER TABLE task_runs ADD COLUMN outputs_missing INTEGER NOT NULL DEFAULT 0",
    R"(CREATE TABLE task_run_messages (
        run_id INTEGER NOT NULL REFERENCES task_runs (id),
        position INTEGER NOT NULL,
        path VARCHAR(4000) NOT NULL,
        sentence TEXT NOT NULL,
        PRIMARY KEY (run_id, position)))",
};

// What runs keep for themselves while they are at work; see RunPaths.h. `losses` counts the workers that went away over
// the run.
const char* const pathsStep[] = {
    "ALTER TABLE task_runs ADD COLUMN waits_for INTEGER NOT NULL DEFAULT 0",
    "ALTER TABLE task_runs ADD COLUMN losses INTEGER NOT NULL DEFAULT 0",
    R"(CREATE TABLE task_run_paths (
        run_id INTEGER NOT NULL REFERENCES task_runs (id),
        position INTEGER NOT NULL,
        beginning VARCHAR(4000) NOT NULL,
        ending VARCHAR(4000) NOT NULL,
        version INTEGER NOT NULL,
        PRIMARY KEY (run_id, position)))",
};

// Seconds after which the work on one file is given up, 0 for never; a run has that of its launch.
const char* const fileLimitStep[] = {
    "ALTER TABLE tasks ADD COLUMN file_limit INTEGER NOT NULL DEFAULT 0",
    "ALTER TABLE task_runs ADD COLUMN file_limit INTEGER NOT NULL DEFAULT 0",
};

// What became of each output. `outcome` is a `FileOutcome`; the output's version is the one that this run made, or
// left as it was; 0 outside the vault.
const char* const resultsStep[] = {
    R"(CREATE TABLE task_run_results (
        run_id INTEGER NOT NULL REFERENCES task_runs (id),
        position INTEGER NOT NULL,
        source_path VARCHAR(4000) NOT NULL,
        source_id INTEGER NOT NULL,
        source_version INTEGER NOT NULL,
        part VARCHAR(260) NOT NULL,
        output_path VARCHAR(4000) NOT NULL,
        output_id INTEGER NOT NULL,
        output_version INTEGER NOT NULL,
        outcome INTEGER NOT NULL,
        sentence TEXT NOT NULL,
        milliseconds BIGINT NOT NULL,
        PRIMARY KEY (run_id, position)))",
};

// What stays of a run as it was: who launched it from where and with what, what did its work, and each file's macro;
// see RunAudit.h. `asked` names the settings that the launch wrote itself. Runs from before have no settings and no
// template.
const char* const auditStep[] = {
    R"(CREATE TABLE task_texts (
        hash CHAR(64) NOT NULL PRIMARY KEY,
        packed TEXT NOT NULL))",
    R"(CREATE TABLE task_run_audits (
        run_id INTEGER NOT NULL PRIMARY KEY REFERENCES task_runs (id),
        guid CHAR(38) NOT NULL,
        task_name VARCHAR(260) NOT NULL,
        user_name VARCHAR(260) NOT NULL,
        machine VARCHAR(260) NOT NULL,
        process INTEGER NOT NULL,
        launched_at BIGINT NOT NULL,
        template_hash VARCHAR(64) NOT NULL,
        settings_hash VARCHAR(64) NOT NULL,
        asked TEXT NOT NULL,
        again_of INTEGER NOT NULL))",
    R"(INSERT INTO task_run_audits (run_id, guid, task_name, user_name, machine, process, launched_at, template_hash,
        settings_hash, asked, again_of) SELECT id, guid, task_name, user_name, '', 0, launched_at, '', '', '', 0
        FROM task_runs)",
    R"(CREATE TABLE task_run_works (
        run_id INTEGER NOT NULL REFERENCES task_runs (id),
        claim INTEGER NOT NULL,
        machine VARCHAR(260) NOT NULL,
        process INTEGER NOT NULL,
        begun_at BIGINT NOT NULL,
        add_in VARCHAR(1000) NOT NULL,
        add_in_version INTEGER NOT NULL,
        application_name VARCHAR(260) NOT NULL,
        application_version VARCHAR(260) NOT NULL,
        application_build VARCHAR(260) NOT NULL,
        macros INTEGER NOT NULL,
        PRIMARY KEY (run_id, claim)))",
    R"(CREATE TABLE task_run_macros (
        run_id INTEGER NOT NULL REFERENCES task_runs (id),
        claim INTEGER NOT NULL,
        position INTEGER NOT NULL,
        path VARCHAR(4000) NOT NULL,
        file_id INTEGER NOT NULL,
        version INTEGER NOT NULL,
        configuration VARCHAR(260) NOT NULL,
        hash CHAR(64) NOT NULL,
        packed TEXT NOT NULL,
        PRIMARY KEY (run_id, claim, position)))",
};
const char* const auditTables[] = {"task_texts", "task_run_audits", "task_run_works", "task_run_macros"};

// When a task is launched by itself. `minute` is that of the day in `zone`, `days` has a bit for each day of the week,
// Sunday's the lowest. `next_at` is when it is due; what came of the last time stands behind it.
const char* const schedulesStep[] = {
    R"(CREATE TABLE task_schedules (
        id INTEGER NOT NULL PRIMARY KEY,
        vault_id INTEGER NOT NULL REFERENCES vaults (id),
        task_name VARCHAR(260) NOT NULL,
        user_name VARCHAR(260) NOT NULL,
        minute INTEGER NOT NULL,
        days INTEGER NOT NULL,
        zone VARCHAR(260) NOT NULL,
        created_at BIGINT NOT NULL,
        next_at BIGINT NOT NULL,
        last_due BIGINT NOT NULL,
        last_at BIGINT NOT NULL,
        last_run INTEGER NOT NULL,
        last_sentence TEXT NOT NULL))",
    R"(CREATE TABLE task_schedule_items (
        schedule_id INTEGER NOT NULL REFERENCES task_schedules (id),
        position INTEGER NOT NULL,
        file_id INTEGER NOT NULL,
        folder_id INTEGER NOT NULL,
        path VARCHAR(4000) NOT NULL,
        item_type INTEGER NOT NULL,
        PRIMARY KEY (schedule_id, position)))",
    // What of a schedule its launch had to leave out.
    "ALTER TABLE task_runs ADD COLUMN launch_note TEXT NOT NULL DEFAULT ''",
    // Who is told of a run's end; a run has that of its launch. `notice_due` until somebody has begun to tell.
    "ALTER TABLE tasks ADD COLUMN notice_failed VARCHAR(4000) NOT NULL DEFAULT ''",
    "ALTER TABLE tasks ADD COLUMN notice_ended VARCHAR(4000) NOT NULL DEFAULT ''",
    "ALTER TABLE task_runs ADD COLUMN notice_failed VARCHAR(4000) NOT NULL DEFAULT ''",
    "ALTER TABLE task_runs ADD COLUMN notice_ended VARCHAR(4000) NOT NULL DEFAULT ''",
    "ALTER TABLE task_runs ADD COLUMN notice_due INTEGER NOT NULL DEFAULT 0",
    "CREATE INDEX task_runs_by_notice ON task_runs (notice_due)",
};

// Which runs read a file, and which made it.
const char* const resultsByFileStep[] = {
    "CREATE INDEX task_run_results_by_source ON task_run_results (source_id)",
    "CREATE INDEX task_run_results_by_output ON task_run_results (output_id)",
};

// Runs, and schedules whose runs, leave out files that an earlier run has done already.
const char* const onlyChangedStep[] = {
    "ALTER TABLE task_runs ADD COLUMN only_changed INTEGER NOT NULL DEFAULT 0",
    "ALTER TABLE task_schedules ADD COLUMN only_changed INTEGER NOT NULL DEFAULT 0",
};

// Outputs that are as their latest versions have them make no new ones; a run has that of its launch.
const char* const identicalStep[] = {
    "ALTER TABLE tasks ADD COLUMN keeps_identical INTEGER NOT NULL DEFAULT 0",
    "ALTER TABLE task_runs ADD COLUMN keeps_identical INTEGER NOT NULL DEFAULT 0",
};

// Processes that take runs, from their start to their end; those that end otherwise leave their row behind. Signs of
// life are written outside the writers' turns, so that who watches for changes isn't woken by them.
const char* const workersStep[] = {
    R"(CREATE TABLE task_workers (
        id INTEGER NOT NULL PRIMARY KEY,
        vault_id INTEGER NOT NULL REFERENCES vaults (id),
        user_name VARCHAR(260) NOT NULL,
        machine VARCHAR(260) NOT NULL,
        process INTEGER NOT NULL,
        process_mark BIGINT NOT NULL,
        begun_at BIGINT NOT NULL,
        waits_since BIGINT NOT NULL,
        heard_at BIGINT NOT NULL,
        stop_wanted INTEGER NOT NULL))",
};

const SchemaStep steps[] = {
    {firstStep},
    {revisionStep},
    {messagesStep},
    {pathsStep},
    {fileLimitStep},
    {resultsStep},
    {auditStep, auditTables},
    {schedulesStep},
    {resultsByFileStep},
    {onlyChangedStep},
    {workersStep},
    {identicalStep},
};

} // namespace

const SchemaArea taskSchema{"tasks", steps};

} // namespace zn::arkin
