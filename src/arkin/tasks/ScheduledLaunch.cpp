#include "arkin/tasks/ScheduledLaunch.h"

#include "arkin/store/Codes.h"
#include "arkin/store/Vault.h"
#include "arkin/tasks/LaunchFlow.h"

#include <algorithm>
#include <soci/soci.h>

namespace zn::arkin {

namespace {

/// One launching of one schedule.
class ScheduledLaunch {
public:
    ScheduledLaunch(TaskHost host, Schedule schedule)
        : m_host(std::move(host))
        , m_schedule(std::move(schedule))
        , m_store(m_host.database, m_host.vaultId)
    {
        m_host.userName = m_schedule.userName;
        m_outcome.at = m_host.clock.now();
        m_outcome.nextAt = nextAt();
    }

    /// None if another worker was quicker.
    std::optional<ScheduledRun> run(const UnattendedLaunch& launch)
    {
        try {
            const auto task = TaskStore(m_host.database, m_host.vaultId).get(m_schedule.taskName);
            LaunchFlow flow(m_host, task, selection());
            flow.launchOnlyChanged(m_schedule.onlyChanged);
            flow.writeAlongside([this](std::int32_t id) { settle(id); });
            return ScheduledRun{m_schedule, launch(flow), m_outcome.sentence};
        } catch (...) {
            if (m_late)
                return {};
            return fail(currentFailure().sentence);
        }
    }

private:
    /// A machine without the zone can't tell when the next day begins there, and launches after a day's hours.
    std::int64_t nextAt()
    {
        constexpr std::int64_t day = 86400;
        try {
            return nextTime(m_schedule.time, m_outcome.at);
        } catch (const zn::StatusError& error) {
            tell(error.what());
            return m_schedule.nextAt + ((m_outcome.at - m_schedule.nextAt) / day + 1) * day;
        }
    }

    void tell(const std::string& sentence) { m_outcome.sentence += (m_outcome.sentence.empty() ? "" : " ") + sentence; }

    /// What is left of the schedule's files and folders, where they are by now.
    zn::ArkSelection selection()
    {
        zn::ArkSelection found;
        for (zn::ArkSelItem item : m_schedule.items) {
            if (!m_host.opened || locate(*m_host.opened, item))
                found.push_back(item);
            else
                tell("The vault doesn't have " + m_host.files.toMachine(item.path).string()
                    + " any more; it was left out.");
        }
        if (found.empty())
            throw zn::StatusError(zn::E_ABORT,
                "Nothing is left of what schedule " + std::to_string(m_schedule.id)
                    + " should launch the task on. Remove it: 'arkin task unschedule " + std::to_string(m_schedule.id)
                    + "'.");
        return found;
    }

    static bool locate(Vault& vault, zn::ArkSelItem& item)
    {
        if (item.itemType == zn::ArkItemType::Folder)
            return vault.findFolder(item.path).has_value();
        const auto row = vault.files().row(item.fileId);
        const auto folders = row && !row->deleted ? vault.files().foldersOf(item.fileId) : std::vector<std::int32_t>();
        if (folders.empty())
            return false;
        if (std::find(folders.begin(), folders.end(), item.folderId) == folders.end())
            item.folderId = folders.front();
        item.path = vault.pathOf({item.fileId, item.folderId});
        return true;
    }

    /// Inside the transaction that stores the run.
    void settle(std::int32_t run)
    {
        m_outcome.run = run;
        m_late = !m_store.settle(m_schedule, m_outcome);
        if (m_late)
            throw zn::StatusError(zn::E_ABORT, "Another worker has launched it.");
        m_host.database.session() << "UPDATE task_runs SET launch_note = :note WHERE id = :id",
            soci::use(m_outcome.sentence), soci::use(run);
    }

    std::optional<ScheduledRun> fail(const std::string& sentence)
    {
        tell(sentence);
        RunStore runs(m_host.database, m_host.vaultId);
        const auto text = "It was scheduled for this time and couldn't be launched: " + sentence;
        TaskDefinition gone;
        gone.name = m_schedule.taskName;
        const auto task = TaskStore(m_host.database, m_host.vaultId).find(m_schedule.taskName).value_or(gone);
        Transaction transaction(m_host.database);
        m_outcome.run = runs.storeFailed(task, m_schedule.userName, text, m_outcome.at);
        if (!m_store.settle(m_schedule, m_outcome))
            return {};
        const ScheduledRun failed{m_schedule, runs.get(m_outcome.run), m_outcome.sentence};
        transaction.commit();
        return failed;
    }

    TaskHost m_host;
    Schedule m_schedule;
    ScheduleStore m_store;
    ScheduleOutcome m_outcome;
    bool m_late = false;
};

} // namespace

std::optional<ScheduledRun> launchWhatIsDue(const TaskHost& host, const UnattendedLaunch& launch)
{
    auto schedule = ScheduleStore(host.database, host.vaultId).due(host.clock.now());
    if (!schedule)
        return {};
    return ScheduledLaunch(host, *std::move(schedule)).run(launch);
}

} // namespace zn::arkin
