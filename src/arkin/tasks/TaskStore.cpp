#include "arkin/tasks/TaskStore.h"

#include "arkin/store/Codes.h"
#include "arkin/tasks/TaskSchema.h"
#include "contracts/host/ArkTask.h"

#include <soci/soci.h>

namespace zn::arkin {

using soci::into;
using soci::use;
using zn::Text;
using zn::TextView;
using zn::toText;
using zn::toUtf8;

zn::TaskKind TaskDefinition::kind() const
{
    const auto type = variables.find(zn::Text(zn::kindVariable));
    return type == variables.end() ? zn::TaskKind::General : static_cast<zn::TaskKind>(type->second.toInt32());
}

TaskStore::TaskStore(Database& database, std::int32_t vaultId)
    : m_database(database)
    , m_vaultId(vaultId)
{
    applySchema(database, taskSchema);
}

void TaskStore::requireFreeName(TextView name)
{
    if (zn::trim(name).empty())
        throw zn::StatusError(zn::E_INVALIDARG, "A task needs a name that isn't blank.");
    if (find(name))
        throw zn::StatusError(E_ARK_NAME_ALREADY_EXISTS,
            "A task named '" + toUtf8(name) + "' exists already; delete it first or choose another name.");
}

std::int32_t TaskStore::create(const TaskDefinition& task)
{
    Transaction transaction(m_database);
    requireFreeName(task.name);
    const auto id = m_database.allocateIds("tasks");
    const auto name = toUtf8(task.name);
    const auto key = toUtf8(zn::foldCase(task.name));
    const auto addIn = toUtf8(task.addIn);
    const auto user = toUtf8(task.createdBy);
    const auto created = static_cast<long long>(task.createdAt);
    m_database.session() << "INSERT INTO tasks (id, vault_id, name, name_key, add_in, created_by, created_at) "
                            "VALUES (:id, :vault, :name, :key, :addin, :user, :at)",
        use(id), use(m_vaultId), use(name), use(key), use(addIn), use(user), use(created);
    writeHostSettings(id, task.host);
    writeVariables(id, task.variables);
    writeMenu(id, task.menu);
    transaction.commit();
    return id;
}

void TaskStore::writeHostSettings(std::int32_t taskId, const HostSettings& host)
{
    const std::int32_t keepsIdentical = host.keepsIdentical ? 1 : 0;
    m_database.session() << "UPDATE tasks SET file_limit = :limit, keeps_identical = :identical, "
                            "notice_failed = :failed, notice_ended = :ended WHERE id = :id",
        use(host.fileLimit), use(keepsIdentical), use(host.notices.failed), use(host.notices.ended), use(taskId);
}

std::optional<TaskDefinition> TaskStore::find(TextView name)
{
    TaskDefinition task;
    const auto key = toUtf8(zn::foldCase(name));
    std::string foundName, addIn, user, changedBy;
    long long created = 0, changed = 0;
    std::int32_t keepsIdentical = 0;
    m_database.session()
        << "SELECT id, name, add_in, created_by, created_at, revision, changed_by, changed_at, "
           "file_limit, keeps_identical, notice_failed, notice_ended FROM tasks WHERE vault_id = :vault AND "
           "name_key = :key",
        use(m_vaultId), use(key), into(task.id), into(foundName), into(addIn), into(user), into(created),
        into(task.revision), into(changedBy), into(changed), into(task.host.fileLimit), into(keepsIdentical),
        into(task.host.notices.failed), into(task.host.notices.ended);
    if (!m_database.session().got_data())
        return {};
    task.name = toText(foundName);
    task.addIn = toText(addIn);
    task.createdBy = toText(user);
    task.createdAt = created;
    task.changedBy = toText(changedBy);
    task.host.keepsIdentical = keepsIdentical != 0;
    task.changedAt = changed;
    task.variables = readVariables(task.id);
    task.menu = readMenu(task.id);
    return task;
}

TaskDefinition TaskStore::get(TextView name)
{
    auto task = find(name);
    if (!task)
        throw zn::StatusError(
            zn::E_INVALIDARG, "There is no task named '" + toUtf8(name) + "'; 'arkin task list' shows the tasks.");
    return *std::move(task);
}

std::vector<TaskDefinition> TaskStore::list()
{
    std::vector<TaskDefinition> tasks;
    TaskDefinition task;
    std::string name, addIn, user;
    long long created = 0;
    soci::statement select = (m_database.session().prepare
            << "SELECT id, name, add_in, created_by, created_at FROM tasks WHERE vault_id = :vault ORDER BY name_key",
        use(m_vaultId), into(task.id), into(name), into(addIn), into(user), into(created));
    select.execute();
    while (select.fetch()) {
        task.name = toText(name);
        task.addIn = toText(addIn);
        task.createdBy = toText(user);
        task.createdAt = created;
        tasks.push_back(task);
    }
    for (auto& each : tasks) {
        StoredVariable kind;
        m_database.session()
            << "SELECT value_type, value_text FROM task_variables WHERE task_id = :id AND name = '__type'",
            use(each.id), into(kind.type), into(kind.text);
        if (m_database.session().got_data())
            each.variables[zn::Text(zn::kindVariable)] = fromStoredVariable(kind);
    }
    return tasks;
}

std::optional<TaskConflict> TaskStore::change(
    std::int32_t taskId, const TaskChange& change, std::optional<std::int32_t> revision)
{
    Transaction transaction(m_database);
    auto& session = m_database.session();
    std::int32_t standing = 0;
    std::string user;
    long long at = 0;
    session << "SELECT revision, changed_by, changed_at FROM tasks WHERE id = :id", use(taskId), into(standing),
        into(user), into(at);
    if (!session.got_data())
        throw zn::StatusError(zn::E_INVALIDARG, "The task was deleted in the meantime.");
    if (revision && *revision != standing)
        return TaskConflict{toText(user), at};
    writeVariables(taskId, change.variables);
    if (change.menu)
        writeMenu(taskId, *change.menu);
    if (change.host)
        writeHostSettings(taskId, *change.host);
    user = toUtf8(change.user);
    at = change.at;
    session << "UPDATE tasks SET revision = revision + 1, changed_by = :user, changed_at = :at WHERE id = :id",
        use(user), use(at), use(taskId);
    transaction.commit();
    return {};
}

void TaskStore::remove(std::int32_t taskId)
{
    Transaction transaction(m_database);
    for (const char* table : {"task_variables", "task_menu_entries"})
        m_database.session() << "DELETE FROM " << table << " WHERE task_id = :id", use(taskId);
    m_database.session() << "DELETE FROM tasks WHERE id = :id", use(taskId);
    transaction.commit();
}

void TaskStore::writeVariables(std::int32_t taskId, const Variables& variables)
{
    for (const auto& [name, value] : variables) {
        const auto key = toUtf8(name);
        const auto stored = toStoredVariable(value);
        auto& session = m_database.session();
        session << "DELETE FROM task_variables WHERE task_id = :id AND name = :name", use(taskId), use(key);
        session << "INSERT INTO task_variables (task_id, name, value_type, value_text) VALUES (:id, :name, :t, :v)",
            use(taskId), use(key), use(stored.type), use(stored.text);
    }
}

void TaskStore::writeMenu(std::int32_t taskId, const std::vector<MenuEntry>& entries)
{
    auto& session = m_database.session();
    session << "DELETE FROM task_menu_entries WHERE task_id = :id", use(taskId);
    std::int32_t position = 0;
    for (const auto& entry : entries) {
        const auto menuText = toUtf8(entry.menuText);
        const auto statusText = toUtf8(entry.statusText);
        session << "INSERT INTO task_menu_entries (task_id, position, identifier, menu_text, status_text, flags) "
                   "VALUES (:id, :position, :identifier, :menu, :status, :flags)",
            use(taskId), use(position), use(entry.identifier), use(menuText), use(statusText), use(entry.flags);
        ++position;
    }
}

Variables TaskStore::readVariables(std::int32_t taskId)
{
    Variables variables;
    std::string name;
    StoredVariable stored;
    soci::statement select = (m_database.session().prepare
            << "SELECT name, value_type, value_text FROM task_variables WHERE task_id = :id",
        use(taskId), into(name), into(stored.type), into(stored.text));
    select.execute();
    while (select.fetch())
        variables[toText(name)] = fromStoredVariable(stored);
    return variables;
}

std::vector<MenuEntry> TaskStore::readMenu(std::int32_t taskId)
{
    std::vector<MenuEntry> entries;
    MenuEntry entry;
    std::string menuText, statusText;
    soci::statement select = (m_database.session().prepare
            << "SELECT identifier, menu_text, status_text, flags FROM task_menu_entries WHERE task_id = :id "
               "ORDER BY position",
        use(taskId), into(entry.identifier), into(menuText), into(statusText), into(entry.flags));
    select.execute();
    while (select.fetch()) {
        entry.menuText = toText(menuText);
        entry.statusText = toText(statusText);
        entries.push_back(entry);
    }
    return entries;
}

std::vector<TaskMenuEntry> TaskStore::menuEntries()
{
    std::vector<TaskMenuEntry> entries;
    for (const TaskDefinition& task : list())
        for (const MenuEntry& entry : readMenu(task.id))
            entries.push_back({entry, task.name});
    return entries;
}

} // namespace zn::arkin
