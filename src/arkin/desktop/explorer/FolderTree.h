#pragma once

#include "arkin/store/Vault.h"

#include <functional>
#include <QTreeWidget>

namespace zn::arkin {

/// The folders of a vault that the caller may read. What lies below one is read when it is opened.
class FolderTree : public QTreeWidget {
public:
    explicit FolderTree(Vault& vault, QWidget* parent = nullptr);

    std::int32_t currentFolder() const;
    /// Opens what lies above it and makes it the current one. False if the vault doesn't show it (any more).
    bool setCurrentFolder(std::int32_t folderId);
    static std::int32_t folderOf(const QTreeWidgetItem& item);
    /// Shows the vault's folders as they are now. What was open stays open; the current folder, or where it was the
    /// nearest above it that is still there, is the current one.
    void readAgain();

    /// Files with this mark in what is dragged may be dropped on a folder.
    QByteArray accepted;
    std::function<void(std::int32_t folderId)> dropped;

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void begin();
    bool isFromHere(const QDropEvent& event) const;
    QTreeWidgetItem* addFolder(QTreeWidgetItem* above, std::int32_t folderId, const QString& name);
    void fetch(QTreeWidgetItem& item);
    QTreeWidgetItem* itemOf(std::int32_t folderId);

    Vault& m_vault;
};

} // namespace zn::arkin
