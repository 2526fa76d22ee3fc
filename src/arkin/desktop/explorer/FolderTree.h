#pragma once

#include "arkin/store/Vault.h"

#include <QTreeWidget>

namespace zn::arkin {

/// The folders of a vault that the caller may read. What lies below one is read when it is opened.
class FolderTree : public QTreeWidget {
public:
    explicit FolderTree(Vault& vault, QWidget* parent = nullptr);

    std::int32_t currentFolder() const;
    /// Opens what lies above it and makes it the current one.
    void setCurrentFolder(std::int32_t folderId);

private:
    QTreeWidgetItem* addFolder(QTreeWidgetItem* above, std::int32_t folderId, const QString& name);
    void fetch(QTreeWidgetItem& item);
    QTreeWidgetItem* itemOf(std::int32_t folderId);

    Vault& m_vault;
};

} // namespace zn::arkin
