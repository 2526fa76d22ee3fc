#include "arkin/tasks/RunStore.h"

#include "arkin/tasks/RunAudit.h"
#include "arkin/tasks/RunRow.h"
#include "arkin/tasks/TaskSchema.h"

#include <fmt/format.h>
#include <soci/soci.h>

namespace zn::arkin {

using soci::into;
using soci::use;
using zn::toText;
using zn::toUtf8;

RunStore::RunStore(Database& database, std::int32_t vaultId)
    : m_database(database)
    , m_vaultId(vaultId)
{
    applySchema(database, taskSchema);
}

namespace {

void insertVariables(soci::session& session, std::int32_t runId, const Variables& variables, std::int32_t own)
{
    for (const auto& [name, value] : variables) {
        const auto key = toUtf8(name);
        const auto stored = toStoredVariable(value);
        session << "INSERT INTO task_run_variables (run_id, name, value_type, value_text, own) "
                   "VALUES (:id, :name, :type, :text, :own)",
            use(runId), use(key), use(stored.type), use(stored.text), use(own);
    }
}

void insertSelection(soci::session& session, std::int32_t runId, const zn::ArkSelection& selection)
{
    std::int32_t position = 0, fileId = 0, folderId = 0, type = 0, version = 0;
    std::string path, configuration;
    soci::statement insert = (session.prepare
            << "INSERT INTO task_run_items (run_id, position, file_id, folder_id, path, configuration, item_type, "
               "version) VALUES (:run, :position, :file, :folder, :path, :configuration, :type, :version)",
        use(runId), use(position), use(fileId), use(folderId), use(path), use(configuration), use(type), use(version));
    for (const auto& item : selection) {
        fileId = item.fileId;
        folderId = item.folderId;
        path = toUtf8(item.path);
        configuration = toUtf8(item.configuration);
        type = static_cast<std::int32_t>(item.itemType);
        version = item.version;
        insert.execute(true);
        ++position;
    }
}

} // namespace

std::int32_t RunStore::enqueue(const TaskDefinition& task, const NewRun& run, std::int64_t now)
{
    Transaction transaction(m_database);
    const auto id = m_database.allocateIds("task_runs");
    const auto guid = toUtf8(run.guid);
    const auto name = toUtf8(task.name);
    const auto addIn = toUtf8(task.addIn);
    const auto user = toUtf8(run.userName);
    const auto at = static_cast<long long>(now);
    const auto queued = static_cast<std::int32_t>(zn::TaskRunState::Queued);
    const std::int32_t isTold = task.host.notices.any() ? 1 : 0;
    const std::int32_t keepsIdentical = task.host.keepsIdentical ? 1 : 0;
    const std::int32_t isOnlyChanged = run.onlyChanged ? 1 : 0;
    m_database.session() << "INSERT INTO task_runs (id, vault_id, guid, task_name, add_in, user_name, state, claim, "
                            "owner_host, owner_process, owner_mark, heartbeat_at, progress_total, progress_position, "
                            "progress_text, result_code, result_text, launched_at, started_at, ended_at, file_limit, "
                            "notice_failed, notice_ended, notice_due, only_changed, keeps_identical) "
                            "VALUES (:id, :vault, :guid, :name, :addin, :user, :state, 0, '', 0, 0, 0, 0, 0, '', 0, "
                            "'', :at, 0, 0, :limit, :failed, :ended, :told, :changed, :identical)",
        use(id), use(m_vaultId), use(guid), use(name), use(addIn), use(user), use(queued), use(at),
        use(task.host.fileLimit), use(task.host.notices.failed), use(task.host.notices.ended), use(isTold),
        use(isOnlyChanged), use(keepsIdentical);
    auto inherited = task.variables;
    for (const auto& own : run.ownVariables)
        inherited.erase(own.first);
    insertVariables(m_database.session(), id, inherited, 0);
    insertVariables(m_database.session(), id, run.ownVariables, 1);
    insertSelection(m_database.session(), id, run.selection);
    writeLaunch(m_database, id, task, run, now);
    if (run.alongside)
        run.alongside(id);
    transaction.commit();
    return id;
}

std::int32_t RunStore::storeFailed(
    const TaskDefinition& task, zn::TextView userName, const std::string& sentence, std::int64_t now)
{
    const auto id = m_database.allocateIds("task_runs");
    const NewRun run{newGuid(), zn::Text(userName), {}, {}};
    const auto guid = toUtf8(run.guid), name = toUtf8(task.name), user = toUtf8(userName);
    const auto at = static_cast<long long>(now);
    const auto state = static_cast<std::int32_t>(zn::TaskRunState::FinishedWithErrors);
    const auto code = static_cast<std::int32_t>(zn::E_ABORT);
    const std::int32_t isTold = task.host.notices.any() ? 1 : 0;
    m_database.session() << "INSERT INTO task_runs (id, vault_id, guid, task_name, add_in, user_name, state, claim, "
                            "owner_host, owner_process, owner_mark, heartbeat_at, progress_total, progress_position, "
                            "progress_text, result_code, result_text, launched_at, started_at, ended_at, "
                            "notice_failed, notice_ended, notice_due) "
                            "VALUES (:id, :vault, :guid, :name, '', :user, :state, 0, '', 0, 0, 0, 0, 0, '', :code, "
                            ":text, :at, 0, :ended_at, :failed, :ended, :told)",
        use(id), use(m_vaultId), use(guid), use(name), use(user), use(state), use(code), use(sentence), use(at),
        use(at), use(task.host.notices.failed), use(task.host.notices.ended), use(isTold);
    writeLaunch(m_database, id, task, run, now);
    return id;
}

RunInfo RunStore::get(zn::TextView idOrGuid)
{
    const auto text = zn::trim(idOrGuid);
    const bool isNumber = !text.empty() && text.find_first_not_of(u"0123456789") == zn::Text::npos;
    if (isNumber)
        return get(zn::leadingInteger(text));
    auto guid = toUtf8(zn::toUpper(text));
    if (!guid.starts_with('{'))
        guid = "{" + guid + "}";
    std::int32_t id = 0;
    m_database.session() << "SELECT id FROM task_runs WHERE vault_id = :vault AND guid = :guid", use(m_vaultId),
        use(guid), into(id);
    if (!m_database.session().got_data())
        throw zn::StatusError(zn::E_INVALIDARG,
            "There is no run '" + toUtf8(text) + "'; 'arkin task status' without an identifier shows the runs.");
    return get(id);
}

RunInfo RunStore::get(std::int32_t id)
{
    RunInfo run;
    m_database.session() << selectRuns << "vault_id = :vault AND id = :id", use(m_vaultId), use(id), into(run);
    if (!m_database.session().got_data())
        throw zn::StatusError(zn::E_INVALIDARG,
            "There is no run " + std::to_string(id) + "; 'arkin task status' without an identifier shows the runs.");
    return run;
}

std::vector<RunInfo> RunStore::list(zn::TextView taskName)
{
    const soci::rowset<RunInfo> rows
        = (m_database.session().prepare << selectRuns << "vault_id = :vault ORDER BY id DESC", use(m_vaultId));
    std::vector<RunInfo> runs;
    for (const auto& run : rows)
        if (taskName.empty() || zn::equalNoCase(run.taskName, taskName))
            runs.push_back(run);
    return runs;
}

std::vector<RunInfo> RunStore::listChanged(std::int32_t above, std::int64_t endedSince)
{
    const auto since = static_cast<long long>(endedSince);
    const soci::rowset<RunInfo> rows = (m_database.session().prepare
            << selectRuns
            << "vault_id = :vault AND (id > :above OR ended_at = 0 OR ended_at >= :since) ORDER BY id DESC",
        use(m_vaultId), use(above), use(since));
    return {rows.begin(), rows.end()};
}

std::vector<RunInfo> RunStore::listTaken()
{
    const auto condition = fmt::format("vault_id = :vault AND state IN ({}, {}, {}, {}, {}) AND owner_process <> 0 "
                                       "ORDER BY id",
        static_cast<int>(zn::TaskRunState::Running), static_cast<int>(zn::TaskRunState::Suspended),
        static_cast<int>(zn::TaskRunState::CancelRequested), static_cast<int>(zn::TaskRunState::SuspendRequested),
        static_cast<int>(zn::TaskRunState::ResumeRequested));
    const soci::rowset<RunInfo> rows = (m_database.session().prepare << selectRuns << condition, use(m_vaultId));
    return {rows.begin(), rows.end()};
}

std::int64_t RunStore::count()
{
    long long count = 0;
    m_database.session() << "SELECT COUNT(*) FROM task_runs WHERE vault_id = :vault", use(m_vaultId), into(count);
    return count;
}

Variables RunStore::variables(std::int32_t runId)
{
    Variables variables;
    std::string name;
    StoredVariable stored;
    soci::statement select = (m_database.session().prepare
            << "SELECT name, value_type, value_text FROM task_run_variables WHERE run_id = :id",
        use(runId), into(name), into(stored.type), into(stored.text));
    select.execute();
    while (select.fetch())
        variables[toText(name)] = fromStoredVariable(stored);
    return variables;
}

zn::ArkSelection RunStore::selection(std::int32_t runId)
{
    zn::ArkSelection selection;
    zn::ArkSelItem item;
    std::string path, configuration;
    std::int32_t type = 0;
    soci::statement select = (m_database.session().prepare
            << "SELECT file_id, folder_id, path, configuration, item_type, version FROM task_run_items "
               "WHERE run_id = :id ORDER BY position",
        use(runId), into(item.fileId), into(item.folderId), into(path), into(configuration), into(type),
        into(item.version));
    select.execute();
    while (select.fetch()) {
        item.path = toText(path);
        item.configuration = toText(configuration);
        item.itemType = static_cast<zn::ArkItemType>(type);
        selection.push_back(item);
    }
    return selection;
}

std::vector<RunMessage> RunStore::messages(std::int32_t runId)
{
    std::vector<RunMessage> messages;
    std::string path, sentence;
    soci::statement select = (m_database.session().prepare
            << "SELECT path, sentence FROM task_run_messages WHERE run_id = :id ORDER BY position",
        use(runId), into(path), into(sentence));
    select.execute();
    while (select.fetch())
        messages.push_back({toText(path), toText(sentence)});
    return messages;
}

std::vector<zn::ArkTaskResultDoc> RunStore::documents(std::int32_t runId)
{
    std::vector<zn::ArkTaskResultDoc> documents;
    zn::ArkTaskResultDoc document;
    soci::statement select = (m_database.session().prepare
            << "SELECT file_id, kind, folder_id, version FROM task_run_documents WHERE run_id = :id ORDER BY position",
        use(runId), into(document.fileId), into(document.kind), into(document.folderId), into(document.version));
    select.execute();
    while (select.fetch())
        documents.push_back(document);
    return documents;
}

} // namespace zn::arkin
