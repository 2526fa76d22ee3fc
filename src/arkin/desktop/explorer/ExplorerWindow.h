#pragma once

#include "arkin/desktop/explorer/CardColumns.h"
#include "arkin/desktop/explorer/VisitedFolders.h"
#include "arkin/desktop/pictures/DailyHost.h"
#include "arkin/store/Vault.h"

#include <QMainWindow>
#include <vector>

class QAction;
class QLabel;
class QLineEdit;
class QMenu;
class QTabWidget;
class QToolBar;
class QTreeView;

namespace zn::arkin {

class FileDetails;
class FileFilterBox;
class FileTable;
class FolderTree;
class PictureMaker;
class PicturePane;
class RunsView;
struct FileWork;

/// The window of a vault, for people who know file managers: its folders, the files of one with what is known of them,
/// what can be done with the chosen ones, the menu entries of the tasks, and the runs. It shows the vault as it was
/// read; F5 reads again.
class ExplorerWindow : public QMainWindow {
public:
    /// Begins in the folder; 0 for the one that was open when such a window was closed last, or the vault's root.
    /// `host` outlives the window.
    ExplorerWindow(const DailyHost& host, std::int32_t folderId);
    ~ExplorerWindow() override;

    std::function<void()> whenClosed;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    using Work = void (ExplorerWindow::*)();

    void makeActions();
    QAction* addAction(QToolBar& bar, const char* name, const QString& text, QKeySequence key, Work work);
    void addFileAction(QToolBar& bar, const FileWork& work);
    void makeSearch();
    void makeViews();
    void makeRuns();
    void connectViews();
    void enableDragging();
    void addFiles();
    void import(const QList<QUrl>& urls);
    void enterFolder();
    void goBack();
    void goForward();
    void goToParent();
    void refresh();
    /// Does what changes the list, and lets the chosen files be the chosen ones again.
    void keepChoice(const std::function<void()>& work);
    void showPath();
    void search();
    void filter();
    void noteChoice();
    void showPicture();
    std::vector<Place> chosenPlaces() const;
    void showMenu(QMenu& menu, const QPoint& at);
    void showFileMenu(const QPoint& at);
    void showFolderMenu(const QPoint& at);
    void showTaskMenu();
    void launch(const zn::Text& task, zn::ArkSelection selection);
    void showRun(std::int32_t runId);
    zn::ArkSelection chosenFiles() const;
    zn::ArkSelection chosenFolder() const;
    void restoreState();

    const DailyHost& m_host;
    Vault& m_vault;
    FileTable* m_files;
    FolderTree* m_folders;
    CardColumns m_cardColumns;
    QTreeView* m_list;
    FileDetails* m_details;
    PicturePane* m_picture;
    PictureMaker* m_pictures;
    QLineEdit* m_search;
    FileFilterBox* m_filter;
    QToolBar* m_path;
    QLabel* m_count;
    QTabWidget* m_pages; ///< files, and runs
    RunsView* m_runs;
    QAction* m_tasks = nullptr;
    QAction* m_back = nullptr;
    QAction* m_forward = nullptr;
    QAction* m_up = nullptr;
    QList<QAction*> m_fileActions; ///< need a chosen file
    VisitedFolders m_visited;
};

} // namespace zn::arkin
