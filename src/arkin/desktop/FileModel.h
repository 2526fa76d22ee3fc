#pragma once

#include "arkin/desktop/FileFilter.h"
#include "contracts/host/ArkVault.h"

#include <QAbstractTableModel>
#include <QIcon>

namespace zn::arkin {

/// The files of one folder of the vault that a filter shows, by name, with their latest version.
class FileModel : public QAbstractTableModel {
public:
    enum Column { NameColumn, VersionColumn, columns };

    explicit FileModel(QObject* parent = nullptr);

    /// Reads the folder. Raises `StatusError` if it can't be listed; the model is empty then.
    void setFolder(zn::IArkFolder& folder);
    void setFilter(const FileFilter& filter);
    /// Path of the local view.
    const zn::Text& path(int row) const { return file(row).path; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct File {
        zn::Text path;
        zn::Text name;
        std::int32_t version = 0;
    };
    const File& file(int row) const { return m_files[m_shown[static_cast<std::size_t>(row)]]; }
    void choose();

    std::vector<File> m_files;
    std::vector<std::size_t> m_shown; ///< places in `m_files`
    FileFilter m_filter;
    QIcon m_icon;
};

} // namespace zn::arkin
