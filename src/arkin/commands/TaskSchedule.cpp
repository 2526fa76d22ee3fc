#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/commands/frame/LaunchItem.h"
#include "arkin/tasks/ScheduleStore.h"

#include <iostream>

namespace zn::arkin {

namespace {

class TaskSchedule : public Command {
public:
    void declare(Arguments& take) override
    {
        take.option("NAME", m_name, "Name of the task").required();
        take.option("PATH", m_paths, "Files and folders of the vault").required();
        take.option("--daily", m_daily, "Every day at this time, such as 22:00").shownAs("TIME");
        take.option("--weekly", m_weekly, "On days of the week, such as 'mon,thu 22:00'").shownAs("DAYS TIME");
        take.flag("--only-changed", m_onlyChanged,
            "Leave out files whose version, task, macro, CAD application and references are those of their last "
            "outputs");
        take.option("--zone", m_zone, "The time zone whose clocks count, such as Europe/Berlin; else this machine's");
    }

    int run(Session& session) override
    {
        Schedule schedule;
        schedule.time = chosenTime();
        schedule.onlyChanged = m_onlyChanged;
        schedule.taskName
            = TaskStore(session.store().database(), session.vault().info().id).get(zn::toText(m_name)).name;
        for (const auto& path : m_paths)
            schedule.items.push_back(launchItem(session, path));
        schedule.userName = zn::toText(session.vault().caller().user);
        schedule.createdAt = session.platform().clock().now();
        schedule.nextAt = nextTime(schedule.time, schedule.createdAt);
        schedule.id = ScheduleStore(session.store().database(), session.vault().info().id).add(schedule);
        if (session.json())
            printJson({{"schedule", schedule.id}, {"task", zn::toUtf8(schedule.taskName)},
                {"when", scheduleText(schedule.time)}, {"onlyChanged", schedule.onlyChanged},
                {"next", jsonTime(schedule.nextAt)}});
        else
            std::cout << "Schedule " << schedule.id << " launches '" << zn::toUtf8(schedule.taskName) << "' "
                      << scheduleText(schedule.time) << (schedule.onlyChanged ? ", on what has changed" : "")
                      << ", next at " << shownTime(schedule.nextAt)
                      << ". A worker must be running then, or the next one makes up for it.\n";
        return commandDone;
    }

private:
    ScheduleTime chosenTime() const
    {
        if (m_daily.empty() == m_weekly.empty())
            throw zn::commandline::WrongUse("Say when: --daily 22:00, or --weekly 'mon,thu 22:00'.");
        ScheduleTime time;
        time.zone = m_zone.empty() ? zoneHere() : m_zone;
        const auto blank = m_weekly.find(' ');
        const auto minute
            = minuteOfDay(m_daily.empty() && blank < m_weekly.size() ? m_weekly.substr(blank + 1) : m_daily);
        if (!minute)
            throw zn::commandline::WrongUse("'" + m_daily + m_weekly
                + "' has no time of the day: give hours and minutes, such as 22:00"
                + (m_weekly.empty() ? "." : ", behind the days: 'mon,thu 22:00'."));
        time.minute = *minute;
        if (m_weekly.empty())
            return time;
        const auto days = daysOfWeek(m_weekly.substr(0, blank));
        if (!days)
            throw zn::commandline::WrongUse("'" + m_weekly
                + "' names no days of the week: give some of mon, tue, wed, thu, fri, sat, sun with commas between.");
        time.days = *days;
        return time;
    }

    std::string m_name;
    std::vector<std::string> m_paths;
    std::string m_daily;
    std::string m_weekly;
    std::string m_zone;
    bool m_onlyChanged = false;
};

class TaskSchedules : public Command {
public:
    void declare(Arguments& take) override { take.option("--task", m_task, "Only those of this task"); }

    int run(Session& session) override
    {
        TaskStore tasks(session.store().database(), session.vault().info().id);
        auto list = Json::array();
        std::vector<std::vector<std::string>> rows{{"SCHEDULE", "TASK", "WHEN", "NEXT", "LAST", "RUN", "ON", "TEXT"}};
        for (const auto& schedule :
            ScheduleStore(session.store().database(), session.vault().info().id).list(zn::toText(m_task))) {
            const bool isTaskGone = !tasks.find(schedule.taskName);
            if (session.json())
                list.push_back(toJson(session, schedule, isTaskGone));
            const auto first = session.shown(schedule.items.at(0).path);
            const auto more = schedule.items.size() - 1;
            rows.push_back({std::to_string(schedule.id), zn::toUtf8(schedule.taskName),
                scheduleText(schedule.time) + (schedule.onlyChanged ? ", only what changed" : ""),
                shownTime(schedule.nextAt), shownTime(schedule.lastAt),
                schedule.lastRun == 0 ? "-" : std::to_string(schedule.lastRun),
                more == 0 ? first : first + " and " + std::to_string(more) + " more",
                isTaskGone ? "The task is deleted: 'arkin task unschedule " + std::to_string(schedule.id)
                        + "' removes the schedule."
                           : schedule.lastSentence});
        }
        if (session.json())
            printJson(list);
        else
            printTable(rows, "There are no schedules; 'arkin task schedule' makes one.");
        return commandDone;
    }

private:
    static Json toJson(Session& session, const Schedule& schedule, bool isTaskGone)
    {
        auto paths = Json::array();
        for (const auto& item : schedule.items)
            paths.push_back(session.shown(item.path));
        return {{"schedule", schedule.id}, {"task", zn::toUtf8(schedule.taskName)}, {"taskDeleted", isTaskGone},
            {"user", zn::toUtf8(schedule.userName)}, {"when", scheduleText(schedule.time)},
            {"zone", schedule.time.zone}, {"onlyChanged", schedule.onlyChanged}, {"paths", paths},
            {"next", jsonTime(schedule.nextAt)}, {"lastDue", jsonTime(schedule.lastDue)},
            {"last", jsonTime(schedule.lastAt)},
            {"lastRun", schedule.lastRun == 0 ? Json(nullptr) : Json(schedule.lastRun)},
            {"text", schedule.lastSentence}};
    }

    std::string m_task;
};

class TaskUnschedule : public Command {
public:
    void declare(Arguments& take) override
    {
        take.option("SCHEDULE", m_which, "The schedule's number, or a task's name for all that it has").required();
    }

    int run(Session& session) override
    {
        ScheduleStore store(session.store().database(), session.vault().info().id);
        auto removed = Json::array();
        for (const auto& schedule : store.list()) {
            const auto number = std::to_string(schedule.id);
            if (number != m_which && !zn::equalNoCase(schedule.taskName, zn::toText(m_which)))
                continue;
            store.remove(schedule.id);
            removed.push_back(schedule.id);
            if (!session.json())
                std::cout << "Schedule " << number << " of '" << zn::toUtf8(schedule.taskName) << "' is removed.\n";
        }
        if (removed.empty())
            throw zn::StatusError(zn::E_INVALIDARG,
                "There is no schedule '" + m_which
                    + "', and no task of this name has one; 'arkin task schedules' shows "
                      "them.");
        if (session.json())
            printJson({{"removed", removed}});
        return commandDone;
    }

private:
    std::string m_which;
};

} // namespace

MadeCommand taskScheduleCommand() { return std::make_unique<TaskSchedule>(); }
MadeCommand taskSchedulesCommand() { return std::make_unique<TaskSchedules>(); }
MadeCommand taskUnscheduleCommand() { return std::make_unique<TaskUnschedule>(); }

} // namespace zn::arkin
