#pragma once

#include "arkin/tasks/RunStore.h"

#include <QAbstractTableModel>

namespace zn::arkin {

/// The runs of a vault, the newest first, as they were read last.
class RunTable : public QAbstractTableModel {
public:
    enum Column {
        NumberColumn,
        TaskColumn,
        StateColumn,
        ProgressColumn,
        UserColumn,
        LaunchedColumn,
        TimeColumn,
        columns
    };

    using QAbstractTableModel::QAbstractTableModel;

    /// Reads what is new since the last time, and what can have changed: all runs the first time, then those that are
    /// newer, hadn't ended, or have ended since. True if anything has changed.
    bool update(RunStore& runs, std::int64_t now);
    /// Tells the views that the times of runs at work have moved, and that their workers may have died.
    void tick(std::int64_t now);

    const RunInfo& run(int row) const { return m_runs[static_cast<std::size_t>(row)]; }
    /// -1 if it isn't there.
    int rowOf(std::int32_t runId) const;
    std::int64_t now() const { return m_now; }
    /// The names that the runs' tasks have and had, each once.
    QStringList taskNames() const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    void readAll(RunStore& runs);
    void put(const RunInfo& run);

    std::vector<RunInfo> m_runs; ///< by falling number
    std::int64_t m_readAt = 0;
    std::int64_t m_now = 0;
};

} // namespace zn::arkin
