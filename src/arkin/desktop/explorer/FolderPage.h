#pragma once

#include "arkin/desktop/explorer/CardColumns.h"
#include "arkin/desktop/explorer/VisitedFolders.h"
#include "arkin/desktop/pictures/DailyHost.h"
#include "arkin/store/Vault.h"

#include <functional>
#include <memory>
#include <QUrl>
#include <QWidget>

class QAction;
class QCheckBox;
class QLineEdit;
class QMenu;
class QSplitter;
class QToolBar;
class QTreeView;

namespace zn::arkin {

class FileDetails;
class FileFilterBox;
class FileTable;
class FolderTree;
class PictureMaker;
class PicturePane;
class SearchIndex;

/// One folder of a vault at a time: the tree to choose it, its files with search and filters, what is known of the
/// chosen file, and its picture. It shows the vault as it was read.
class FolderPage : public QWidget {
public:
    /// `fileActions` work on the chosen files; they are the window's. `host` outlives the page.
    FolderPage(const DailyHost& host, QList<QAction*> fileActions);
    ~FolderPage() override;

    std::int32_t folder() const;
    /// The folder's name; the vault's for its root.
    QString title() const;
    /// The sentence on what is shown and chosen.
    const QString& count() const { return m_count; }
    std::vector<Place> chosenPlaces() const;
    zn::ArkSelection chosenFiles() const;
    bool canGoBack() const { return m_visited.canGoBack(); }
    bool canGoForward() const { return m_visited.canGoForward(); }

    /// False if the vault doesn't have the folder any more.
    bool open(std::int32_t folderId);
    void goBack();
    void goForward();
    void goToParent();
    /// Reads the vault again, when it is seen next.
    void refresh();
    void addFiles();
    void focusList();
    void focusSearch();
    /// The order and widths of the columns, and the card values among them.
    QByteArray columns() const;
    const QStringList& cardColumns() const { return m_cardColumns.names(); }
    void setColumns(const QByteArray& columns, const QStringList& cards);

    /// Another folder was entered, or other files are chosen.
    std::function<void()> changed;
    std::function<void(const zn::Text& task, zn::ArkSelection)> launch;
    std::function<void(std::int32_t runId)> showRun;
    std::function<void(std::int32_t folderId)> openInTab;
    /// What a menu's entry does, while it is under the pointer; empty afterwards.
    std::function<void(const QString&)> explain;

protected:
    void showEvent(QShowEvent* event) override;

private:
    QToolBar* makeHead();
    QSplitter* makeViews();
    void connectViews();
    void enableDragging();
    void import(const QList<QUrl>& urls);
    void enterFolder();
    void readAgain();
    /// Does what changes the list, and lets the chosen files be the chosen ones again.
    void keepChoice(const std::function<void()>& work);
    void showPath();
    bool isSearchingEverywhere() const;
    void search();
    /// The files of the whole vault that the words in the search box fit.
    void showFound();
    void filter();
    void noteChoice();
    void showPicture();
    /// Of the chosen version. False unless one file is chosen.
    bool askForPicture(PictureMaker& maker);
    zn::ArkSelection chosenFolder() const;
    void showMenu(QMenu& menu, const QPoint& at);
    void showFileMenu(const QPoint& at);
    void showFolderMenu(const QPoint& at);
    /// Does what gives the folder another place, and goes there.
    void changeFolder(const std::function<std::int32_t(std::int32_t folderId)>& work);

    const DailyHost& m_host;
    Vault& m_vault;
    QList<QAction*> m_fileActions;
    FileTable* m_files;
    FolderTree* m_folders;
    CardColumns m_cardColumns;
    QTreeView* m_list;
    FileDetails* m_details;
    PicturePane* m_picture;
    PictureMaker* m_pictures;
    PictureMaker* m_models;
    QLineEdit* m_search;
    QCheckBox* m_everywhere;
    std::unique_ptr<SearchIndex> m_index; ///< made when it is first needed
    bool m_showsFound = false;            ///< in place of the folder's files
    FileFilterBox* m_filter;
    QToolBar* m_path;
    QString m_count;
    bool m_isStale = false;
    VisitedFolders m_visited;
};

} // namespace zn::arkin
