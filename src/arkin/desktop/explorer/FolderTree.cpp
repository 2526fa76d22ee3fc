#include "arkin/desktop/explorer/FolderTree.h"

#include "arkin/desktop/explorer/FileTable.h"
#include "arkin/desktop/frame/Texts.h"
#include "base/Paths.h"

#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QStyle>
#include <QTreeWidgetItemIterator>

namespace zn::arkin {

namespace {

constexpr int folderRole = Qt::UserRole;
constexpr int fetchedRole = Qt::UserRole + 1;

} // namespace

FolderTree::FolderTree(Vault& vault, QWidget* parent)
    : QTreeWidget(parent)
    , m_vault(vault)
{
    setObjectName("folders");
    setAccessibleName(own("Folders"));
    setHeaderHidden(true);
    setUniformRowHeights(true);
    connect(
        this, &QTreeWidget::itemExpanded, this, [this](QTreeWidgetItem* item) { inSlot(this, [&] { fetch(*item); }); });
    setAcceptDrops(true);
    begin();
    setCurrentItem(topLevelItem(0));
}

void FolderTree::begin()
{
    addFolder(nullptr, m_vault.folders().rootId(), shown(m_vault.info().name))->setExpanded(true);
    fetch(*topLevelItem(0)); // the signal of the opening may be blocked
}

QTreeWidgetItem* FolderTree::addFolder(QTreeWidgetItem* above, std::int32_t folderId, const QString& name)
{
    auto* const item = above ? new QTreeWidgetItem(above, {name}) : new QTreeWidgetItem(this, {name});
    item->setData(0, folderRole, folderId);
    item->setIcon(0, QApplication::style()->standardIcon(QStyle::SP_DirIcon));
    item->setChildIndicatorPolicy(QTreeWidgetItem::ShowIndicator);
    return item;
}

void FolderTree::fetch(QTreeWidgetItem& item)
{
    if (item.data(0, fetchedRole).toBool())
        return;
    item.setData(0, fetchedRole, true);
    for (const std::int32_t child : m_vault.folders().children(item.data(0, folderRole).toInt()))
        if (m_vault.permissions().allowed(child, Right::Read))
            addFolder(&item, child, shown(zn::pathFileName(m_vault.folders().pathOf(child))));
    item.setChildIndicatorPolicy(QTreeWidgetItem::DontShowIndicatorWhenChildless);
}

std::int32_t FolderTree::folderOf(const QTreeWidgetItem& item) { return item.data(0, folderRole).toInt(); }

void FolderTree::readAgain()
{
    std::vector<std::int32_t> opened, current;
    for (QTreeWidgetItemIterator at(this); *at; ++at)
        if ((*at)->isExpanded())
            opened.push_back(folderOf(**at));
    for (const auto* item = currentItem(); item; item = item->parent())
        current.push_back(folderOf(*item));
    clear();
    m_vault.folders().forget();
    begin();
    for (const std::int32_t folderId : opened)
        if (QTreeWidgetItem* const item = itemOf(folderId)) {
            fetch(*item);
            item->setExpanded(true);
        }
    for (const std::int32_t folderId : current)
        if (setCurrentFolder(folderId))
            return;
}

/// Files that are dragged from elsewhere are added by the list.
bool FolderTree::isFromHere(const QDropEvent& event) const
{
    return !accepted.isEmpty() && event.mimeData()->data(FileTable::markFormat) == accepted;
}

void FolderTree::dragEnterEvent(QDragEnterEvent* event) { event->setAccepted(isFromHere(*event)); }

void FolderTree::dragMoveEvent(QDragMoveEvent* event)
{
    event->setAccepted(isFromHere(*event) && itemAt(event->position().toPoint()));
}

void FolderTree::dropEvent(QDropEvent* event)
{
    const auto* const item = itemAt(event->position().toPoint());
    if (!item || !isFromHere(*event))
        return;
    // The list that the files come from has nothing to remove.
    event->setDropAction(Qt::CopyAction);
    event->accept();
    dropped(folderOf(*item));
}

QTreeWidgetItem* FolderTree::itemOf(std::int32_t folderId)
{
    if (folderId == m_vault.folders().rootId())
        return topLevelItem(0);
    QTreeWidgetItem* above = nullptr;
    zn::guarded([&] { above = itemOf(m_vault.folders().parentOf(folderId)); }, [] {}); // the folder may have gone
    if (!above)
        return nullptr;
    fetch(*above);
    for (int i = 0; i < above->childCount(); ++i)
        if (above->child(i)->data(0, folderRole).toInt() == folderId)
            return above->child(i);
    return nullptr;
}

std::int32_t FolderTree::currentFolder() const
{
    const QTreeWidgetItem* item = currentItem();
    return item ? folderOf(*item) : 0;
}

bool FolderTree::setCurrentFolder(std::int32_t folderId)
{
    QTreeWidgetItem* const item = itemOf(folderId);
    if (!item)
        return false;
    for (QTreeWidgetItem* above = item->parent(); above; above = above->parent())
        above->setExpanded(true);
    setCurrentItem(item);
    scrollToItem(item);
    return true;
}

} // namespace zn::arkin
