#include "arkin/desktop/monitor/RunTable.h"

#include "arkin/desktop/frame/Texts.h"
#include "arkin/desktop/monitor/RunTexts.h"

#include <algorithm>
#include <set>

namespace zn::arkin {

namespace {

constexpr const char* titles[] = {"Run", "Task", "State", "Progress", "User", "Launched", "Duration"};

/// A run that ended while its table was read may not be in it yet.
constexpr std::int64_t overlap = 5;

} // namespace

bool RunTable::update(RunStore& runs, std::int64_t now)
{
    m_now = now;
    if (m_readAt == 0) {
        readAll(runs);
        m_readAt = now;
        return true;
    }
    const auto newest = m_runs.empty() ? 0 : m_runs.front().id;
    const auto changed = runs.listChanged(newest, m_readAt - overlap);
    m_readAt = now;
    for (auto run = changed.rbegin(); run != changed.rend(); ++run) // the oldest first, so that new ones go on top
        put(*run);
    if (static_cast<std::int64_t>(m_runs.size()) != runs.count())
        readAll(runs); // old ones were removed
    return !changed.empty();
}

void RunTable::tick(std::int64_t now)
{
    m_now = now;
    for (int row = 0; row < rowCount(); ++row)
        if (run(row).taken())
            dataChanged(index(row, StateColumn), index(row, TimeColumn));
}

void RunTable::readAll(RunStore& runs)
{
    beginResetModel();
    m_runs = runs.list();
    endResetModel();
}

void RunTable::put(const RunInfo& run)
{
    const auto at
        = std::ranges::lower_bound(m_runs, run.id, std::greater(), [](const RunInfo& known) { return known.id; });
    const int row = static_cast<int>(at - m_runs.begin());
    if (at != m_runs.end() && at->id == run.id) {
        *at = run;
        dataChanged(index(row, 0), index(row, columns - 1));
        return;
    }
    beginInsertRows({}, row, row);
    m_runs.insert(at, run);
    endInsertRows();
}

int RunTable::rowOf(std::int32_t runId) const
{
    const auto at = std::ranges::find(m_runs, runId, &RunInfo::id);
    return at == m_runs.end() ? -1 : static_cast<int>(at - m_runs.begin());
}

QStringList RunTable::taskNames() const
{
    std::set<QString> names;
    for (const RunInfo& run : m_runs)
        names.insert(shown(run.taskName));
    return {names.begin(), names.end()};
}

int RunTable::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_runs.size());
}

int RunTable::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : columns; }

QVariant RunTable::data(const QModelIndex& index, int role) const
{
    const RunInfo& run = m_runs[static_cast<std::size_t>(index.row())];
    if (role != Qt::DisplayRole)
        return {};
    switch (index.column()) {
    case NumberColumn:
        return run.id;
    case TaskColumn:
        return shown(run.taskName);
    case StateColumn:
        return runStateText(run, m_now);
    case ProgressColumn:
        return progressText(run);
    case UserColumn:
        return shown(run.userName);
    case LaunchedColumn:
        return momentText(run.launchedAt);
    default:
        return workTimeText(run, m_now);
    }
}

QVariant RunTable::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return own(titles[section]);
}

} // namespace zn::arkin
