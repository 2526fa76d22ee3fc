#include "addin/pages/lists/VListModel.h"

#include "addin/pages/lists/SortKeys.h"
#include "qtglue/Windows.h"

#include <algorithm>
#include <numeric>

namespace zn {

namespace {

/// The rows' numbers in the order of the sorted column.
std::vector<int> sortedOrder(const std::deque<VListCtrlItemRef>& rows, int column, Qt::SortOrder order)
{
    SortKeys makeKey;
    std::vector<std::string> keys;
    keys.reserve(rows.size());
    for (const VListCtrlItemRef& row : rows)
        keys.push_back(makeKey(row->text(column)));
    std::vector<int> numbers(rows.size());
    std::iota(numbers.begin(), numbers.end(), 0);
    const auto keyOf = [&keys](int number) -> const std::string& { return keys[static_cast<std::size_t>(number)]; };
    std::ranges::stable_sort(
        numbers, [&](int a, int b) { return order == Qt::AscendingOrder ? keyOf(a) < keyOf(b) : keyOf(b) < keyOf(a); });
    return numbers;
}

} // namespace

void VListModel::addColumn(const QString& title)
{
    const auto at = static_cast<int>(m_columns.size());
    beginInsertColumns({}, at, at);
    m_columns.append(title);
    endInsertColumns();
}

void VListModel::insertItem(int position, VListCtrlItemRef row)
{
    m_rows.insert(m_rows.begin() + position, std::move(row));
}

void VListModel::showRows()
{
    beginResetModel();
    m_shown = static_cast<int>(m_rows.size());
    endResetModel();
}

void VListModel::removeItem(int position)
{
    beginRemoveRows({}, position, position);
    m_rows.erase(m_rows.begin() + position);
    m_shown = static_cast<int>(m_rows.size());
    endRemoveRows();
}

void VListModel::clear()
{
    m_rows.clear();
    showRows();
}

int VListModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : m_shown; }

int VListModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_columns.size());
}

QVariant VListModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= static_cast<int>(m_rows.size()))
        return {};
    const VListCtrlItem& row = *m_rows[static_cast<std::size_t>(index.row())];
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole)
        return row.text(index.column());
    if (role == Qt::DecorationRole && m_images) {
        const QIcon icon = m_images->icon(row.image(index.column()));
        return icon.isNull() ? QVariant() : QVariant(icon);
    }
    return {};
}

QVariant VListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= m_columns.size())
        return {};
    if (role == Qt::DisplayRole)
        return m_columns[section];
    return role == Qt::TextAlignmentRole ? QVariant(Qt::AlignLeft | Qt::AlignVCenter) : QVariant();
}

void VListModel::sort(int column, Qt::SortOrder order)
{
    if (column < 0 || column >= m_columns.size())
        return;
    // Called by the view's slots, through which no exception may pass.
    guarded([&] { takeOrder(sortedOrder(m_rows, column, order)); }, m_tellFailure);
}

void VListModel::takeOrder(const std::vector<int>& numbers)
{
    Q_EMIT layoutAboutToBeChanged({}, VerticalSortHint);
    std::deque<VListCtrlItemRef> sorted;
    std::vector<int> places(numbers.size()); // of each row, by its place before
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const auto before = static_cast<std::size_t>(numbers[i]);
        places[before] = static_cast<int>(i);
        sorted.push_back(std::move(m_rows[before]));
    }
    m_rows = std::move(sorted);
    const QModelIndexList from = persistentIndexList();
    QModelIndexList to;
    for (const QModelIndex& one : from)
        to.append(index(places[static_cast<std::size_t>(one.row())], one.column()));
    changePersistentIndexList(from, to);
    Q_EMIT layoutChanged({}, VerticalSortHint);
}

} // namespace zn
