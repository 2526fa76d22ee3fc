#include "arkin/tasks/ScheduleStore.h"

#include "arkin/tasks/TaskSchema.h"

#include <soci/soci.h>

namespace zn::arkin {

using soci::into;
using soci::use;
using zn::toText;
using zn::toUtf8;

ScheduleStore::ScheduleStore(Database& database, std::int32_t vaultId)
    : m_database(database)
    , m_vaultId(vaultId)
{
    applySchema(database, taskSchema);
}

std::int32_t ScheduleStore::add(const Schedule& schedule)
{
    Transaction transaction(m_database);
    auto& session = m_database.session();
    const auto id = m_database.allocateIds("task_schedules");
    const auto task = toUtf8(schedule.taskName), user = toUtf8(schedule.userName);
    const std::int32_t onlyChanged = schedule.onlyChanged ? 1 : 0;
    const long long created = schedule.createdAt, next = schedule.nextAt;
    session
        << "INSERT INTO task_schedules (id, vault_id, task_name, user_name, minute, days, zone, created_at, next_at, "
           "last_due, last_at, last_run, last_sentence, only_changed) VALUES (:id, :vault, :task, :user, :minute, "
           ":days, :zone, "
           ":created, :next, 0, 0, 0, '', :changed)",
        use(id), use(m_vaultId), use(task), use(user), use(schedule.time.minute), use(schedule.time.days),
        use(schedule.time.zone), use(created), use(next), use(onlyChanged);
    std::int32_t position = 0;
    for (const auto& item : schedule.items) {
        const auto path = toUtf8(item.path);
        const auto type = static_cast<std::int32_t>(item.itemType);
        session << "INSERT INTO task_schedule_items (schedule_id, position, file_id, folder_id, path, item_type) "
                   "VALUES (:id, :position, :file, :folder, :path, :type)",
            use(id), use(position), use(item.fileId), use(item.folderId), use(path), use(type);
        ++position;
    }
    transaction.commit();
    return id;
}

std::vector<Schedule> ScheduleStore::list(zn::TextView taskName)
{
    auto schedules = select("next_at >= :from ORDER BY id", 0);
    std::erase_if(schedules,
        [&](const Schedule& schedule) { return !taskName.empty() && !zn::equalNoCase(schedule.taskName, taskName); });
    for (Schedule& schedule : schedules)
        schedule.items = itemsOf(schedule.id);
    return schedules;
}

std::optional<Schedule> ScheduleStore::due(std::int64_t now)
{
    auto schedules = select("next_at <= :now ORDER BY next_at, id LIMIT 1", now);
    if (schedules.empty())
        return {};
    schedules[0].items = itemsOf(schedules[0].id);
    return std::move(schedules[0]);
}

std::vector<Schedule> ScheduleStore::select(const std::string& condition, std::int64_t now)
{
    std::vector<Schedule> schedules;
    Schedule row;
    std::string task, user;
    long long created = 0, next = 0, lastDue = 0, lastAt = 0;
    std::int32_t onlyChanged = 0;
    const long long time = now;
    soci::statement select = (m_database.session().prepare
            << "SELECT id, task_name, user_name, minute, days, zone, created_at, next_at, last_due, last_at, last_run, "
               "last_sentence, only_changed FROM task_schedules WHERE vault_id = :vault AND "
            << condition,
        use(m_vaultId), use(time), into(row.id), into(task), into(user), into(row.time.minute), into(row.time.days),
        into(row.time.zone), into(created), into(next), into(lastDue), into(lastAt), into(row.lastRun),
        into(row.lastSentence), into(onlyChanged));
    select.execute();
    while (select.fetch()) {
        row.taskName = toText(task);
        row.userName = toText(user);
        row.createdAt = created;
        row.nextAt = next;
        row.lastDue = lastDue;
        row.lastAt = lastAt;
        row.onlyChanged = onlyChanged != 0;
        schedules.push_back(row);
    }
    return schedules;
}

zn::ArkSelection ScheduleStore::itemsOf(std::int32_t id)
{
    zn::ArkSelection items;
    zn::ArkSelItem item;
    item.version = -1;
    std::string path;
    std::int32_t type = 0;
    soci::statement select = (m_database.session().prepare
            << "SELECT file_id, folder_id, path, item_type FROM task_schedule_items WHERE schedule_id = :id "
               "ORDER BY position",
        use(id), into(item.fileId), into(item.folderId), into(path), into(type));
    select.execute();
    while (select.fetch()) {
        item.path = toText(path);
        item.itemType = static_cast<zn::ArkItemType>(type);
        items.push_back(item);
    }
    return items;
}

bool ScheduleStore::settle(const Schedule& schedule, const ScheduleOutcome& outcome)
{
    const long long next = outcome.nextAt, at = outcome.at, due = schedule.nextAt;
    soci::statement update = (m_database.session().prepare
            << "UPDATE task_schedules SET next_at = :next, last_due = :due, last_at = :at, last_run = :run, "
               "last_sentence = :sentence WHERE id = :id AND next_at = :same_due",
        use(next), use(due), use(at), use(outcome.run), use(outcome.sentence), use(schedule.id), use(due));
    update.execute(true);
    return update.get_affected_rows() > 0;
}

void ScheduleStore::remove(std::int32_t id)
{
    Transaction transaction(m_database);
    m_database.session() << "DELETE FROM task_schedule_items WHERE schedule_id = :id", use(id);
    m_database.session() << "DELETE FROM task_schedules WHERE id = :id", use(id);
    transaction.commit();
}

} // namespace zn::arkin
