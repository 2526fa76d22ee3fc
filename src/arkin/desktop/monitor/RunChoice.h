#pragma once

#include "arkin/tasks/RunStore.h"

#include <QSortFilterProxyModel>

namespace zn::arkin {

/// Which runs a person wants to see.
enum class RunKind { All, Open, Failed };

/// The runs that fit what was chosen, in the order of a column.
class RunChoice : public QSortFilterProxyModel {
public:
    using QSortFilterProxyModel::QSortFilterProxyModel;

    /// Empty for all tasks.
    void setTask(const zn::Text& name);
    void setKind(RunKind kind);
    /// Empty for everybody's.
    void setUser(const zn::Text& name);
    /// Launched at this time or later; 0 for all.
    void setSince(std::int64_t at);

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override;
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;

private:
    zn::Text m_task;
    RunKind m_kind = RunKind::All;
    zn::Text m_user;
    std::int64_t m_since = 0;
};

} // namespace zn::arkin
