#include "arkin/desktop/FileModel.h"

#include "arkin/desktop/frame/Texts.h"
#include "base/Paths.h"
#include "base/Status.h"

#include <QApplication>
#include <QStyle>

namespace zn::arkin {

FileModel::FileModel(QObject* parent)
    : QAbstractTableModel(parent)
    , m_icon(QApplication::style()->standardIcon(QStyle::SP_FileIcon))
{
}

void FileModel::setFolder(zn::IArkFolder& folder)
{
    std::vector<File> files;
    m_files.clear();
    choose();
    std::int32_t folderId = 0;
    zn::checkStatus(folder.GetId(folderId));
    std::shared_ptr<zn::IArkPosition> position;
    zn::checkStatus(folder.GetFirstFilePosition(position), "The files of this folder can't be listed.");
    for (bool end = false; position->IsNull(end) == zn::S_FALSE;) {
        std::shared_ptr<zn::IArkFile> next;
        File file;
        zn::checkStatus(folder.GetNextFile(*position, next), "The files of this folder can't be listed.");
        // A file that somebody deletes at this moment is left out.
        if (zn::failed(next->GetLocalPath(folderId, file.path)) || zn::failed(next->GetCurrentVersion(file.version)))
            continue;
        file.name = zn::pathFileName(file.path);
        files.push_back(std::move(file));
    }
    m_files = std::move(files);
    choose();
}

void FileModel::setFilter(const FileFilter& filter)
{
    m_filter = filter;
    choose();
}

void FileModel::choose()
{
    beginResetModel();
    m_shown.clear();
    for (std::size_t i = 0; i < m_files.size(); ++i)
        if (m_filter.shows(m_files[i].name))
            m_shown.push_back(i);
    endResetModel();
}

int FileModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_shown.size());
}
int FileModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : columns; }

QVariant FileModel::data(const QModelIndex& index, int role) const
{
    const File& row = file(index.row());
    const bool isName = index.column() == NameColumn;
    if (role == Qt::DisplayRole)
        return isName ? QVariant(shown(row.name)) : row.version == 0 ? QVariant("-") : QVariant(row.version);
    if (role == Qt::TextAlignmentRole && !isName)
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    return role == Qt::DecorationRole && isName ? QVariant(m_icon) : QVariant();
}

QVariant FileModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal)
        return QAbstractTableModel::headerData(section, orientation, role);
    return section == NameColumn ? own("Name") : own("Version");
}

} // namespace zn::arkin
