#include "addin/pages/lists/VListCtrl.h"

#include <algorithm>
#include <numeric>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>

namespace zn {

namespace {

constexpr int unitsPerWidth = 10;

} // namespace

VListCtrl::VListCtrl(QWidget* parent)
    : QTreeView(parent)
    , m_model(this)
{
    setModel(&m_model);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setSelectionMode(ExtendedSelection);
    setHorizontalScrollMode(ScrollPerPixel);
    header()->setStretchLastSection(false);
    // The order of insertion holds until somebody asks for another one.
    header()->setSortIndicator(-1, Qt::AscendingOrder);
    setSortingEnabled(true);
    connect(header(), &QHeaderView::sectionResized, this, [this] {
        if (!m_widthsAreOurs)
            m_userChangedWidths = true;
    });
}

void VListCtrl::setImages(ImageListRef images)
{
    setIconSize(QSize(images->size(), images->size()));
    m_model.setImages(std::move(images));
}

void VListCtrl::addColumn(const QString& title, int width)
{
    m_widthsAreOurs = true;
    m_model.addColumn(title);
    m_widths.push_back(width);
    applyWidths();
}

void VListCtrl::applyWidths()
{
    m_widthsAreOurs = true;
    const int units = std::max(unitsPerWidth, std::accumulate(m_widths.begin(), m_widths.end(), 0));
    const int unit = viewport()->width() / units;
    int widest = 0;
    for (std::size_t i = 0; i < m_widths.size(); ++i) {
        const auto column = static_cast<int>(i);
        header()->resizeSection(column, std::max(unit * m_widths[i], header()->sectionSizeHint(column)));
        if (header()->sectionSize(column) > header()->sectionSize(widest))
            widest = column;
    }
    // What titles take beyond their share, the widest column gives.
    if (const int excess = header()->length() - viewport()->width(); excess > 0 && !m_widths.empty())
        header()->resizeSection(
            widest, std::max(header()->sectionSize(widest) - excess, header()->sectionSizeHint(widest)));
    m_widthsAreOurs = false;
}

void VListCtrl::resizeEvent(QResizeEvent* event)
{
    QTreeView::resizeEvent(event);
    if (!m_userChangedWidths && event->size().width() != event->oldSize().width())
        applyWidths();
}

void VListCtrl::insertItem(int position, VListCtrlItemRef row) { m_model.insertItem(position, std::move(row)); }

void VListCtrl::showRows()
{
    m_model.showRows();
    viewport()->update();
}

void VListCtrl::removeItem(int position) { m_model.removeItem(position); }

void VListCtrl::removeAllItems() { m_model.clear(); }

int VListCtrl::itemCount() const { return m_model.rowCount(); }

VListCtrlItem& VListCtrl::item(int position) const { return *m_model.rows().at(static_cast<std::size_t>(position)); }

std::vector<int> VListCtrl::selectedItems() const
{
    std::vector<int> positions;
    for (const QModelIndex& index : selectionModel()->selectedRows())
        positions.push_back(index.row());
    std::ranges::sort(positions);
    return positions;
}

void VListCtrl::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Copy))
        copySelection();
    else
        QTreeView::keyPressEvent(event);
}

void VListCtrl::copySelection()
{
    QString lines;
    for (const int position : selectedItems()) {
        QStringList cells;
        for (int column = 0; column < m_model.columnCount(); ++column)
            cells.append(item(position).text(column));
        lines += cells.join(QLatin1Char('\t')) + QLatin1Char('\n');
    }
    if (!lines.isEmpty())
        QGuiApplication::clipboard()->setText(lines);
}

void VListCtrl::contextMenuEvent(QContextMenuEvent* event)
{
    QMenu menu(this);
    menu.setObjectName("sortMenu");
    for (int column = 0; column < m_model.columnCount(); ++column) {
        QAction* action = menu.addAction(m_model.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString());
        action->setCheckable(true);
        action->setChecked(column == header()->sortIndicatorSection());
        connect(action, &QAction::triggered, this, [this, column] { sortBy(column); });
    }
    menu.exec(event->globalPos());
}

/// As a click on the title does: ascending first, then the other way round.
void VListCtrl::sortBy(int column)
{
    const bool again = header()->sortIndicatorSection() == column;
    const bool ascending = again && header()->sortIndicatorOrder() == Qt::AscendingOrder;
    sortByColumn(column, ascending ? Qt::DescendingOrder : Qt::AscendingOrder);
}

} // namespace zn
