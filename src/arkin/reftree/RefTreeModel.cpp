#include "arkin/reftree/RefTreeModel.h"

#include "qtglue/Texts.h"

#include <QBrush>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QPalette>

namespace zn::arkin {

using zn::FileRefCheck;
using zn::IFileRefItem;
using zn::IFileRefItem2;
using zn::shown;
using zn::Text;

namespace {

QString versionText(IFileRefItem& item)
{
    auto* more = dynamic_cast<IFileRefItem2*>(&item);
    std::int32_t version = 0;
    if (!more || zn::failed(more->GetVersion(version)))
        return {};
    return version > 0 ? QString::number(version) : QCoreApplication::translate("RefTree", "Latest");
}

QString stateText(IFileRefItem& item)
{
    auto* more = dynamic_cast<IFileRefItem2*>(&item);
    Text text;
    return more && !zn::failed(more->GetStateText(text)) ? shown(text) : QString();
}

template <zn::Status (IFileRefItem::*get)(Text&)> QString textOf(IFileRefItem& item)
{
    Text text;
    return zn::failed((item.*get)(text)) ? QString() : shown(text);
}

/// The columns in the order of `RefTreeModel::Column`.
constexpr struct {
    const char* title;
    QString (*text)(IFileRefItem&);
} columns[] = {
    {QT_TRANSLATE_NOOP("RefTree", "File"), textOf<&IFileRefItem::GetName>},
    {QT_TRANSLATE_NOOP("RefTree", "State"), stateText},
    {QT_TRANSLATE_NOOP("RefTree", "Version"), versionText},
    {QT_TRANSLATE_NOOP("RefTree", "Configuration"), textOf<&IFileRefItem::GetConfiguration>},
    {QT_TRANSLATE_NOOP("RefTree", "Found in"), textOf<&IFileRefItem::GetPath>},
};

QVariant iconOf(IFileRefItem& item, FileTypeIcons& icons)
{
    auto* typed = dynamic_cast<zn::IFileRefItemIcon*>(&item);
    Text extension;
    if (!typed || zn::failed(typed->GetIconType(extension)))
        return {};
    return icons.of(shown(extension));
}

} // namespace

struct RefTreeModel::Node {
    Node* parent = nullptr;
    int row = 0;
    std::shared_ptr<IFileRefItem> item;
    bool isOpen = false;                         ///< the number of children is known
    std::vector<std::unique_ptr<Node>> children; ///< each made when it is first asked for
};

RefTreeModel::RefTreeModel(QObject* parent, CheckCommand check)
    : QAbstractItemModel(parent)
    , m_check(std::move(check))
    , m_root(std::make_unique<Node>())
{
    m_root->isOpen = true;
}

RefTreeModel::~RefTreeModel() = default;

void RefTreeModel::setRows(const std::vector<std::shared_ptr<IFileRefItem>>& roots)
{
    beginResetModel();
    m_root->children.clear();
    for (const auto& item : roots) {
        auto& made = m_root->children.emplace_back(std::make_unique<Node>());
        made->parent = m_root.get();
        made->row = static_cast<int>(m_root->children.size()) - 1;
        made->item = item;
    }
    endResetModel();
}

RefTreeModel::Node* RefTreeModel::node(const QModelIndex& index) const
{
    return index.isValid() ? static_cast<Node*>(index.internalPointer()) : m_root.get();
}

IFileRefItem* RefTreeModel::item(const QModelIndex& index) const { return node(index)->item.get(); }

bool RefTreeModel::startsExpanded(const QModelIndex& index) const
{
    auto* remembering = dynamic_cast<zn::IFileRefItem3*>(item(index));
    bool expanded = false;
    return remembering && !zn::failed(remembering->GetExpanded(expanded)) && expanded;
}

FileRefCheck RefTreeModel::check(const QModelIndex& index) const
{
    auto* more = dynamic_cast<IFileRefItem2*>(item(index));
    FileRefCheck check = FileRefCheck::NoBox;
    return more && !zn::failed(more->GetCheck(check)) ? check : FileRefCheck::NoBox;
}

void RefTreeModel::openChildren(Node& node)
{
    if (node.isOpen)
        return;
    node.isOpen = true;
    std::int32_t count = 0;
    if (!zn::failed(node.item->GetChildCount(count)) && count > 0)
        node.children.resize(static_cast<std::size_t>(count));
}

QModelIndex RefTreeModel::index(int row, int column, const QModelIndex& parent) const
{
    Node& above = *node(parent);
    openChildren(above);
    if (row < 0 || static_cast<std::size_t>(row) >= above.children.size() || column < 0 || column >= ColumnCount)
        return {};
    auto& child = above.children[static_cast<std::size_t>(row)];
    if (!child) {
        std::shared_ptr<IFileRefItem> made;
        if (zn::failed(above.item->GetChild(row, made)) || !made)
            return {};
        child = std::make_unique<Node>();
        child->parent = &above;
        child->row = row;
        child->item = std::move(made);
    }
    return createIndex(row, column, child.get());
}

QModelIndex RefTreeModel::parent(const QModelIndex& child) const
{
    Node* above = child.isValid() ? node(child)->parent : nullptr;
    return above && above != m_root.get() ? createIndex(above->row, 0, above) : QModelIndex();
}

int RefTreeModel::rowCount(const QModelIndex& parent) const
{
    if (parent.column() > 0)
        return 0;
    Node& above = *node(parent);
    openChildren(above);
    return static_cast<int>(above.children.size());
}

int RefTreeModel::columnCount(const QModelIndex&) const { return ColumnCount; }

QVariant RefTreeModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    IFileRefItem& row = *item(index);
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole: // the whole text where a column is too narrow for it
        return columns[index.column()].text(row);
    case Qt::DecorationRole:
        return index.column() == FileColumn ? iconOf(row, m_icons) : QVariant();
    case Qt::ForegroundRole:
        if (check(index) != FileRefCheck::NoBox)
            return {};
        return QGuiApplication::palette().brush(QPalette::Disabled, QPalette::Text);
    case Qt::CheckStateRole:
        if (const FileRefCheck state = check(index); index.column() == FileColumn && state != FileRefCheck::NoBox)
            return state == FileRefCheck::On ? Qt::Checked : Qt::Unchecked;
        return {};
    default:
        return {};
    }
}

bool RefTreeModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::CheckStateRole || check(index) == FileRefCheck::NoBox)
        return false;
    return m_check(*item(index), value.toInt() == Qt::Checked);
}

Qt::ItemFlags RefTreeModel::flags(const QModelIndex& index) const
{
    const Qt::ItemFlags row = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    const bool hasBox = index.column() == FileColumn && check(index) != FileRefCheck::NoBox;
    return hasBox ? row | Qt::ItemIsUserCheckable : row;
}

QVariant RefTreeModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section >= ColumnCount)
        return {};
    return QCoreApplication::translate("RefTree", columns[section].title);
}

} // namespace zn::arkin
