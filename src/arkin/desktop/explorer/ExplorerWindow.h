#pragma once

#include "arkin/desktop/pictures/DailyHost.h"
#include "arkin/store/Vault.h"

#include <QKeySequence>
#include <QMainWindow>

class QAction;
class QLabel;
class QTabWidget;
class QToolBar;

namespace zn::arkin {

class FolderPage;
class RunsView;
struct FileWork;

/// The window of a vault, for people who know file managers: folders, each in a tab, what can be done with the chosen
/// files, the menu entries of the tasks, and the runs. It shows the vault as it was read; F5 reads again.
class ExplorerWindow : public QMainWindow {
public:
    /// Begins in the folder; 0 for those that were open when such a window was closed last, or the vault's root.
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
    void addKey(const char* name, QKeySequence key, Work work);
    void makePages();
    void makeRuns();
    void restoreState(std::int32_t folderId);
    FolderPage* addPage(std::int32_t folderId);
    /// The page in front; the one that was there last while the runs are.
    FolderPage& page() const { return *m_page; }
    std::vector<FolderPage*> folderPages() const;
    void choosePage();
    void showPage();
    void newTab();
    void closeTab(int index);
    void showCloseButtons();
    void closeCurrentTab();
    void addFiles();
    void goBack();
    void goForward();
    void goToParent();
    /// Reads the vault again, on each page when it is seen.
    void refresh();
    void focusSearch();
    void showTaskMenu();
    void launch(const zn::Text& task, zn::ArkSelection selection);
    void showRun(std::int32_t runId);

    const DailyHost& m_host;
    Vault& m_vault;
    QLabel* m_count;
    QTabWidget* m_pages; ///< folders, and at the end the runs
    FolderPage* m_page = nullptr;
    RunsView* m_runs;
    QAction* m_tasks = nullptr;
    QAction* m_back = nullptr;
    QAction* m_forward = nullptr;
    QAction* m_up = nullptr;
    QList<QAction*> m_fileActions; ///< need a chosen file
};

} // namespace zn::arkin
