#include "arkin/desktop/FolderModel.h"

#include "arkin/desktop/frame/Texts.h"
#include "base/Paths.h"
#include "base/Status.h"

#include <QApplication>
#include <QStyle>

namespace zn::arkin {

struct FolderModel::Node {
    std::shared_ptr<zn::IArkFolder> folder;
    zn::Text name;
    Node* above = nullptr;
    int row = 0;
    bool fetched = false;
    std::vector<std::unique_ptr<Node>> below;
};

namespace {

/// A folder that can't be listed shows none below it.
std::vector<std::shared_ptr<zn::IArkFolder>> foldersOf(zn::IArkFolder& folder)
{
    std::vector<std::shared_ptr<zn::IArkFolder>> folders;
    std::shared_ptr<zn::IArkPosition> position;
    if (zn::failed(folder.GetFirstSubFolderPosition(position)))
        return folders;
    for (bool end = false; position->IsNull(end) == zn::S_FALSE;) {
        std::shared_ptr<zn::IArkFolder> next;
        if (zn::failed(folder.GetNextSubFolder(*position, next)))
            break;
        folders.push_back(std::move(next));
    }
    return folders;
}

zn::Text nameOf(zn::IArkFolder& folder)
{
    zn::Text path;
    folder.GetLocalPath(path);
    return zn::pathFileName(path);
}

} // namespace

FolderModel::FolderModel(zn::IArkVault& vault, QObject* parent)
    : QAbstractItemModel(parent)
    , m_top(std::make_unique<Node>())
    , m_icon(QApplication::style()->standardIcon(QStyle::SP_DirIcon))
{
    auto root = std::make_unique<Node>();
    zn::Text path;
    zn::checkStatus(vault.GetRootFolderPath(path), "The vault doesn't tell its root folder.");
    zn::checkStatus(vault.GetName(root->name), "The vault doesn't tell its name.");
    if (vault.GetFolderFromPath(path, root->folder) != zn::S_OK)
        throw zn::StatusError(zn::E_UNEXPECTED, "The vault's root folder can't be read.");
    root->above = m_top.get();
    m_top->below.push_back(std::move(root));
    m_top->fetched = true;
}

FolderModel::~FolderModel() = default;

FolderModel::Node* FolderModel::nodeOf(const QModelIndex& index) const
{
    return index.isValid() ? static_cast<Node*>(index.internalPointer()) : m_top.get();
}

std::shared_ptr<zn::IArkFolder> FolderModel::folder(const QModelIndex& index) const { return nodeOf(index)->folder; }

QModelIndex FolderModel::index(int row, int column, const QModelIndex& parent) const
{
    const auto& below = nodeOf(parent)->below;
    const bool there = column == 0 && row >= 0 && row < static_cast<int>(below.size());
    return there ? createIndex(row, column, below[static_cast<std::size_t>(row)].get()) : QModelIndex();
}

QModelIndex FolderModel::parent(const QModelIndex& index) const
{
    Node* const above = index.isValid() ? nodeOf(index)->above : nullptr;
    return !above || above == m_top.get() ? QModelIndex() : createIndex(above->row, 0, above);
}

int FolderModel::rowCount(const QModelIndex& parent) const { return static_cast<int>(nodeOf(parent)->below.size()); }

bool FolderModel::hasChildren(const QModelIndex& parent) const
{
    const Node* node = nodeOf(parent);
    return !node->fetched || !node->below.empty();
}

bool FolderModel::canFetchMore(const QModelIndex& parent) const { return !nodeOf(parent)->fetched; }

void FolderModel::fetchMore(const QModelIndex& parent)
{
    inSlot(nullptr, [&] {
        Node* const node = nodeOf(parent);
        node->fetched = true;
        const auto folders = foldersOf(*node->folder);
        if (folders.empty())
            return;
        beginInsertRows(parent, 0, static_cast<int>(folders.size()) - 1);
        for (const auto& folder : folders) {
            auto made = std::make_unique<Node>();
            made->folder = folder;
            made->name = nameOf(*folder);
            made->above = node;
            made->row = static_cast<int>(node->below.size());
            node->below.push_back(std::move(made));
        }
        endInsertRows();
    });
}

QVariant FolderModel::data(const QModelIndex& index, int role) const
{
    if (role == Qt::DisplayRole)
        return shown(nodeOf(index)->name);
    return role == Qt::DecorationRole ? QVariant(m_icon) : QVariant();
}

} // namespace zn::arkin
