#pragma once

#include "arkin/reftree/FileTypeIcons.h"
#include "contracts/host/XRefTree.h"

#include <functional>
#include <QAbstractItemModel>

namespace zn::arkin {

/// The rows of the tree. Nothing is asked of an add-in's row before the view needs it: its children when it is opened,
/// its texts and its icon when it is painted.
class RefTreeModel final : public QAbstractItemModel {
public:
    enum Column { FileColumn, StateColumn, VersionColumn, ConfigurationColumn, PathColumn, ColumnCount };
    /// Tells the add-in of a tick; false when it refuses.
    using CheckCommand = std::function<bool(zn::IFileRefItem& row, bool checked)>;

    RefTreeModel(QObject* parent, CheckCommand check);
    ~RefTreeModel() override;

    void setRows(const std::vector<std::shared_ptr<zn::IFileRefItem>>& roots);
    zn::IFileRefItem* item(const QModelIndex& index) const;
    /// Whether the add-in wants the row expanded.
    bool startsExpanded(const QModelIndex& index) const;
    zn::FileRefCheck check(const QModelIndex& index) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Node;
    Node* node(const QModelIndex& index) const;
    static void openChildren(Node& node);

    CheckCommand m_check;
    mutable FileTypeIcons m_icons; ///< a cache that readers fill
    std::unique_ptr<Node> m_root;
};

} // namespace zn::arkin
