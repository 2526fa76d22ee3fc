#include "arkin/desktop/monitor/RunChoice.h"

#include "arkin/desktop/monitor/RunTable.h"

namespace zn::arkin {

namespace {

bool isOfKind(const RunInfo& run, RunKind kind, std::int64_t now)
{
    switch (kind) {
    case RunKind::Open:
        return !run.ended();
    case RunKind::Failed:
        return (run.ended() && run.state != zn::TaskRunState::Cancelled && !run.wentWell()) || workerDied(run, now);
    default:
        return true;
    }
}

std::int64_t workedFor(const RunInfo& run, std::int64_t now)
{
    return run.startedAt == 0 ? -1 : (run.ended() ? run.endedAt : now) - run.startedAt;
}

} // namespace

void RunChoice::setTask(const zn::Text& name)
{
    m_task = name;
    invalidateFilter();
}

void RunChoice::setKind(RunKind kind)
{
    m_kind = kind;
    invalidateFilter();
}

void RunChoice::setUser(const zn::Text& name)
{
    m_user = name;
    invalidateFilter();
}

void RunChoice::setSince(std::int64_t at)
{
    m_since = at;
    invalidateFilter();
}

bool RunChoice::filterAcceptsRow(int row, const QModelIndex&) const
{
    const auto& table = static_cast<const RunTable&>(*sourceModel());
    const RunInfo& run = table.run(row);
    return (m_task.empty() || zn::equalNoCase(run.taskName, m_task)) && (m_user.empty() || run.userName == m_user)
        && run.launchedAt >= m_since && isOfKind(run, m_kind, table.now());
}

bool RunChoice::lessThan(const QModelIndex& left, const QModelIndex& right) const
{
    const auto& table = static_cast<const RunTable&>(*sourceModel());
    const RunInfo& a = table.run(left.row());
    const RunInfo& b = table.run(right.row());
    switch (left.column()) {
    case RunTable::NumberColumn:
    case RunTable::LaunchedColumn:
        return a.id < b.id;
    case RunTable::TimeColumn:
        return workedFor(a, table.now()) < workedFor(b, table.now());
    case RunTable::ProgressColumn:
        return a.progressPosition < b.progressPosition;
    default:
        return QSortFilterProxyModel::lessThan(left, right);
    }
}

} // namespace zn::arkin
