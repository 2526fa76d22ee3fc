#pragma once

#include "arkin/desktop/FileFilter.h"
#include "contracts/host/ArkVault.h"

#include <QDialog>

class QComboBox;
class QDialogButtonBox;
class QLabel;
class QTreeView;

namespace zn::arkin {

class FileModel;
class FolderModel;

/// Picks one folder of the vault in its tree, or, with file filters, files in the folder that is chosen in the tree.
/// What the caller may not read isn't shown.
class BrowseDialog : public QDialog {
public:
    /// For one folder. Raises a sentence if the vault can't be read.
    BrowseDialog(zn::IArkVault& vault, const QString& title, QWidget* parent);
    /// For files; `several` lets the user pick more than one.
    BrowseDialog(zn::IArkVault& vault, const QString& title, const std::vector<FileFilter>& filters, bool several,
        QWidget* parent);

    std::shared_ptr<zn::IArkFolder> folder() const;
    /// Paths of the local view, in the order in which they were chosen.
    const std::vector<zn::Text>& paths() const { return m_paths; }

private:
    void makeFolders(zn::IArkVault& vault, const QString& title);
    void makeFiles(const std::vector<FileFilter>& filters, bool several);
    void enterFolder();
    void noteChoice();

    FolderModel* m_folderModel = nullptr;
    QTreeView* m_folders = nullptr;
    FileModel* m_fileModel = nullptr;
    QTreeView* m_files = nullptr;
    QComboBox* m_filter = nullptr;
    QLabel* m_count = nullptr;
    QDialogButtonBox* m_buttons = nullptr;
    std::vector<zn::Text> m_paths;
};

} // namespace zn::arkin
