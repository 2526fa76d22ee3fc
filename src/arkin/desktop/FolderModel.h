#pragma once

#include "contracts/host/ArkVault.h"

#include <QAbstractItemModel>
#include <QIcon>

namespace zn::arkin {

/// The vault's folders that the caller may read, as a tree under the vault's root. The folders below one are asked for
/// when it is opened.
class FolderModel : public QAbstractItemModel {
public:
    /// Raises `StatusError` with a sentence if the vault doesn't give its root.
    explicit FolderModel(zn::IArkVault& vault, QObject* parent = nullptr);
    ~FolderModel() override;

    std::shared_ptr<zn::IArkFolder> folder(const QModelIndex& index) const;
    QModelIndex root() const { return index(0, 0); }

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& = {}) const override { return 1; }
    bool hasChildren(const QModelIndex& parent = {}) const override;
    bool canFetchMore(const QModelIndex& parent) const override;
    void fetchMore(const QModelIndex& parent) override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    struct Node;
    Node* nodeOf(const QModelIndex& index) const;

    std::unique_ptr<Node> m_top; ///< above the vault's root
    QIcon m_icon;
};

} // namespace zn::arkin
