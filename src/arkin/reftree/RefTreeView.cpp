#include "arkin/reftree/RefTreeView.h"

#include "arkin/reftree/RefTreeModel.h"

#include <algorithm>
#include <QHeaderView>
#include <QKeyEvent>
#include <QQueue>

#include <algorithm>

namespace zn::arkin {

namespace {

/// Files that share sub-assemblies have more places than anybody could look at, so opening all of them has an end.
constexpr int mostExpandedAtOnce = 5000;

/// Least widths of the columns in average characters; the last one takes the rest.
constexpr int columnCharacters[] = {40, 28, 9, 18};

} // namespace

RefTreeView::RefTreeView(QWidget* parent)
    : QTreeView(parent)
{
    setUniformRowHeights(true); // or else every row is measured before the first is shown
    setSelectionMode(ExtendedSelection);
    setAllColumnsShowFocus(true);
    setEditTriggers(NoEditTriggers);
    setTextElideMode(Qt::ElideMiddle);
}

void RefTreeView::setTreeModel(RefTreeModel& model)
{
    m_rows = &model;
    setModel(&model);
    const int character = fontMetrics().averageCharWidth();
    for (int column = 0; column < static_cast<int>(std::size(columnCharacters)); ++column)
        setColumnWidth(column, std::max(columnCharacters[column] * character, header()->sectionSizeHint(column)));
    const int last = header()->count() - 1;
    setColumnWidth(last, header()->sectionSizeHint(last)); // where there is no rest
}

void RefTreeView::expandMarked(const QModelIndex& parent)
{
    for (int row = 0; row < m_rows->rowCount(parent); ++row) {
        const QModelIndex index = m_rows->index(row, 0, parent);
        if (!m_rows->startsExpanded(index))
            continue;
        expand(index);
        expandMarked(index);
    }
}

void RefTreeView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Space)
        tickSelected();
    else if (event->key() == Qt::Key_Asterisk)
        expandBelow(currentIndex().siblingAtColumn(0));
    else
        QTreeView::keyPressEvent(event);
}

void RefTreeView::tickSelected()
{
    const bool isOn = m_rows->check(currentIndex()) == zn::FileRefCheck::On;
    for (const QModelIndex& index : selectionModel()->selectedRows())
        m_rows->setData(index, isOn ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
}

void RefTreeView::expandBelow(const QModelIndex& from)
{
    QQueue<QModelIndex> open;
    if (from.isValid())
        open.enqueue(from);
    for (int budget = mostExpandedAtOnce; !open.isEmpty() && budget > 0; --budget) {
        const QModelIndex index = open.dequeue();
        expand(index);
        for (int row = 0; row < m_rows->rowCount(index); ++row) {
            const QModelIndex child = m_rows->index(row, 0, index);
            if (m_rows->hasChildren(child))
                open.enqueue(child);
        }
    }
}

} // namespace zn::arkin
