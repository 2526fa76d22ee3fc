#include "arkin/desktop/explorer/FolderTree.h"

#include "arkin/desktop/frame/Texts.h"
#include "base/Paths.h"

#include <QApplication>
#include <QStyle>

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
    auto* const root = addFolder(nullptr, vault.folders().rootId(), shown(vault.info().name));
    root->setExpanded(true);
    setCurrentItem(root);
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

QTreeWidgetItem* FolderTree::itemOf(std::int32_t folderId)
{
    if (folderId == m_vault.folders().rootId())
        return topLevelItem(0);
    QTreeWidgetItem* const above = itemOf(m_vault.folders().parentOf(folderId));
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
    return item ? item->data(0, folderRole).toInt() : 0;
}

void FolderTree::setCurrentFolder(std::int32_t folderId)
{
    if (QTreeWidgetItem* item = itemOf(folderId)) {
        for (QTreeWidgetItem* above = item->parent(); above; above = above->parent())
            above->setExpanded(true);
        setCurrentItem(item);
        scrollToItem(item);
    }
}

} // namespace zn::arkin
