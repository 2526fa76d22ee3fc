#include "arkin/desktop/explorer/ExplorerWindow.h"

#include "arkin/desktop/explorer/DeletedFiles.h"
#include "arkin/desktop/explorer/FileDetails.h"
#include "arkin/desktop/explorer/FileFilterBox.h"
#include "arkin/desktop/explorer/FileImport.h"
#include "arkin/desktop/explorer/FileTable.h"
#include "arkin/desktop/explorer/FileWork.h"
#include "arkin/desktop/explorer/FolderTree.h"
#include "arkin/desktop/explorer/TaskMenu.h"
#include "arkin/desktop/frame/Texts.h"
#include "arkin/desktop/monitor/EndNotice.h"
#include "arkin/desktop/monitor/OpenFile.h"
#include "arkin/desktop/monitor/RunsView.h"
#include "arkin/desktop/pictures/PictureMaker.h"
#include "arkin/desktop/pictures/PicturePane.h"
#include "base/Paths.h"

#include <algorithm>
#include <QAction>
#include <QCloseEvent>
#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QSettings>
#include <QSplitter>
#include <QStatusBar>
#include <QTabWidget>
#include <QTimer>
#include <QToolBar>
#include <QTreeView>

namespace zn::arkin {

namespace {

/// Columns of the files in units of a letter.
constexpr std::pair<int, int> columnWidths[]
    = {{FileTable::NameColumn, 36}, {FileTable::VersionColumn, 9}, {FileTable::StateColumn, 16},
        {FileTable::CheckedOutColumn, 22}, {FileTable::SizeColumn, 13}, {FileTable::ChangedColumn, 22}};

} // namespace

ExplorerWindow::ExplorerWindow(const DailyHost& host, std::int32_t folderId)
    : m_host(host)
    , m_vault(*host.tasks.opened)
    , m_files(new FileTable(this))
    , m_folders(new FolderTree(m_vault))
    , m_cardColumns(m_vault)
    , m_list(new QTreeView)
    , m_details(new FileDetails(host))
    , m_picture(new PicturePane)
    , m_pictures(new PictureMaker(host, this))
    , m_search(new QLineEdit)
    , m_filter(new FileFilterBox(host))
    , m_path(new QToolBar(this))
    , m_count(new QLabel)
    , m_pages(new QTabWidget)
    , m_runs(new RunsView(host))
{
    setObjectName("explorer");
    setWindowTitle(own("Vault “%1”").arg(shown(m_vault.info().name)));
    makeActions();
    makeSearch();
    makeViews();
    makeRuns();
    connectViews();
    enableDragging();
    restoreState();
    if (folderId != 0)
        m_folders->setCurrentFolder(folderId);
    inSlot(this, [this] { enterFolder(); });
    m_list->setFocus();
}

ExplorerWindow::~ExplorerWindow()
{
    QSettings settings(QStringLiteral("arkin"), QStringLiteral("explorer"));
    settings.setValue("geometry", saveGeometry());
    settings.setValue("columns", m_list->header()->saveState());
    settings.setValue("cards", m_cardColumns.names());
    settings.setValue("folder", m_folders->currentFolder());
}

void ExplorerWindow::closeEvent(QCloseEvent* event)
{
    QMainWindow::closeEvent(event);
    if (whenClosed)
        whenClosed();
}

void ExplorerWindow::restoreState()
{
    const QSettings settings(QStringLiteral("arkin"), QStringLiteral("explorer"));
    if (!restoreGeometry(settings.value("geometry").toByteArray()))
        resizeByFont(*this, 160, 42);
    m_cardColumns.setNames(settings.value("cards").toStringList());
    m_cardColumns.fill(*m_files, m_folders->currentFolder());
    m_list->header()->restoreState(settings.value("columns").toByteArray());
    if (const int folder = settings.value("folder").toInt(); folder > 0)
        zn::guarded([&] { m_folders->setCurrentFolder(folder); }, [] {}); // it may be another home's
}

QAction* ExplorerWindow::addAction(QToolBar& bar, const char* name, const QString& text, QKeySequence key, Work work)
{
    QAction* const action = bar.addAction(text);
    action->setObjectName(name);
    action->setShortcut(key);
    connect(action, &QAction::triggered, this, [this, work] { inSlot(this, [&] { (this->*work)(); }); });
    return action;
}

void ExplorerWindow::addFileAction(QToolBar& bar, const FileWork& work)
{
    auto* const action = new QAction(own(work.text), this);
    action->setObjectName(work.name);
    if (work.key.key() != Qt::Key_unknown)
        action->setShortcut(work.key);
    // Plain keys belong to whatever has the focus.
    const bool isPlain = work.key.keyboardModifiers() == Qt::NoModifier;
    action->setShortcutContext(isPlain ? Qt::WidgetShortcut : Qt::WindowShortcut);
    if (work.onToolBar)
        bar.addAction(action);
    m_list->addAction(action);
    m_fileActions.push_back(action);
    connect(action, &QAction::triggered, this, [this, &work] {
        inSlot(this, [&] {
            const auto places = chosenPlaces();
            if (places.empty())
                return;
            zn::guarded([&] { work.work(m_vault, this, places); }, [&] { tellCurrentFailure(this); });
            if (work.changesVault)
                refresh();
        });
    });
}

void ExplorerWindow::makeActions()
{
    auto* const bar = new QToolBar(own("Actions"), this);
    bar->setObjectName("actions");
    bar->setMovable(false);
    addToolBar(bar);
    m_back = addAction(*bar, "back", own("&Back"), QKeySequence::Back, &ExplorerWindow::goBack);
    m_forward = addAction(*bar, "forward", own("&Forward"), QKeySequence::Forward, &ExplorerWindow::goForward);
    m_up = addAction(*bar, "up", own("&Up"), QKeySequence(Qt::ALT | Qt::Key_Up), &ExplorerWindow::goToParent);
    addAction(*bar, "refresh", own("&Refresh"), QKeySequence::Refresh, &ExplorerWindow::refresh);
    bar->addSeparator();
    addAction(*bar, "add", own("&Add …"), QKeySequence(Qt::CTRL | Qt::Key_N), &ExplorerWindow::addFiles);
    for (const FileWork& work : fileWorks())
        addFileAction(*bar, work);
    bar->addSeparator();
    m_tasks
        = addAction(*bar, "tasks", own("&Tasks"), QKeySequence(Qt::CTRL | Qt::Key_T), &ExplorerWindow::showTaskMenu);
}

void ExplorerWindow::makeSearch()
{
    addToolBarBreak();
    m_path->setObjectName("path");
    m_path->setWindowTitle(own("Path"));
    m_path->setMovable(false);
    addToolBar(m_path);
    auto* const searching = new QToolBar(own("Search"), this);
    searching->setObjectName("searching");
    searching->setMovable(false);
    m_search->setObjectName("search");
    m_search->setPlaceholderText(own("Search names and cards"));
    m_search->setAccessibleName(own("Search names and cards"));
    m_search->setClearButtonEnabled(true);
    m_search->setMinimumWidth(26 * fontMetrics().averageCharWidth());
    searching->addWidget(m_search);
    searching->addWidget(m_filter);
    addToolBar(searching);
    auto* const find = new QAction(this);
    find->setShortcut(QKeySequence::Find);
    connect(find, &QAction::triggered, m_search, [this] { m_search->setFocus(); });
    QWidget::addAction(find);
    connect(m_search, &QLineEdit::textChanged, this, [this] { inSlot(this, [this] { search(); }); });
    connect(m_filter, &QComboBox::currentIndexChanged, this, [this] { inSlot(this, [this] { filter(); }); });
}

void ExplorerWindow::makeViews()
{
    m_list->setObjectName("files");
    m_list->setAccessibleName(own("Files"));
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setAllColumnsShowFocus(true);
    m_list->setSelectionMode(QTreeView::ExtendedSelection);
    m_list->setModel(m_files);
    m_list->setSortingEnabled(true);
    m_list->sortByColumn(FileTable::NameColumn, Qt::AscendingOrder);
    for (const auto& [column, width] : columnWidths)
        m_list->setColumnWidth(column, width * fontMetrics().averageCharWidth());
    m_list->setContextMenuPolicy(Qt::CustomContextMenu);
    m_folders->setContextMenuPolicy(Qt::CustomContextMenu);

    auto* const right = new QSplitter(Qt::Vertical);
    right->addWidget(m_list);
    auto* const below = new QSplitter;
    below->addWidget(m_details);
    below->addWidget(m_picture);
    below->setStretchFactor(0, 1);
    right->addWidget(below);
    right->setSizes({22 * fontMetrics().lineSpacing(), 16 * fontMetrics().lineSpacing()});
    auto* const whole = new QSplitter;
    whole->addWidget(m_folders);
    whole->addWidget(right);
    whole->setStretchFactor(1, 4);
    whole->setSizes({28 * fontMetrics().averageCharWidth(), 120 * fontMetrics().averageCharWidth()});
    m_pages->addTab(whole, own("&Files of the Vault"));
    setCentralWidget(m_pages);
    statusBar()->addWidget(m_count, 1);
    m_count->setObjectName("count");
}

void ExplorerWindow::makeRuns()
{
    m_pages->setObjectName("pages");
    m_pages->setDocumentMode(true);
    m_pages->addTab(m_runs, own("R&uns"));
    m_runs->open = [this](const zn::Text& path) { openFile(m_vault, path); };
    auto* const notice = new EndNotice(this);
    m_runs->ended = [this, notice](const RunInfo& run) {
        notice->tell(run);
        refresh(); // its outputs may be in this folder
    };
}

void ExplorerWindow::connectViews()
{
    connect(m_folders, &QTreeWidget::currentItemChanged, this, [this] { inSlot(this, [this] { enterFolder(); }); });
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] { noteChoice(); });
    connect(m_list, &QTreeView::doubleClicked, this, [this] { findChild<QAction*>("open")->trigger(); });
    m_details->whenChosen = [this] { inSlot(this, [this] { showPicture(); }); };
    m_details->whenChanged = [this] { refresh(); };
    m_details->showRun = [this](std::int32_t runId) { showRun(runId); };
    m_pictures->shown = [this](const QImage& picture) { m_picture->show(picture); };
    m_pictures->told = [this](const QString& sentence) { m_picture->tell(sentence); };
    m_list->header()->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_list->header(), &QHeaderView::customContextMenuRequested, this, [this](const QPoint& at) {
        inSlot(this, [&] {
            if (m_cardColumns.choose(m_list->header()->mapToGlobal(at)))
                keepChoice([this] { m_cardColumns.fill(*m_files, m_folders->currentFolder()); });
        });
    });
    connect(m_list, &QTreeView::customContextMenuRequested, this,
        [this](const QPoint& at) { inSlot(this, [&] { showFileMenu(at); }); });
    connect(m_folders, &QTreeView::customContextMenuRequested, this,
        [this](const QPoint& at) { inSlot(this, [&] { showFolderMenu(at); }); });
}

void ExplorerWindow::enableDragging()
{
    m_list->setDragDropMode(QAbstractItemView::DragDrop);
    m_list->setDefaultDropAction(Qt::CopyAction);
    m_files->urlsOf = [this](const std::vector<std::int32_t>& fileIds) {
        QList<QUrl> urls;
        inSlot(this, [&] {
            for (const std::int32_t fileId : fileIds) {
                const auto path = localCopy(m_vault, {fileId, m_folders->currentFolder()});
                urls << QUrl::fromLocalFile(QString::fromStdString(path.string()));
            }
        });
        return urls;
    };
    // The program that the files come from waits for the end of the drop.
    m_files->dropped = [this](const QList<QUrl>& urls) {
        QTimer::singleShot(0, this, [this, urls] { inSlot(this, [&] { import(urls); }); });
    };
}

void ExplorerWindow::addFiles() { import(QFileDialog::getOpenFileUrls(this, own("Add Files"))); }

void ExplorerWindow::import(const QList<QUrl>& urls)
{
    const auto root = m_vault.local().toMachine(m_vault.info().root);
    std::vector<std::filesystem::path> paths;
    for (const QUrl& url : urls) {
        const std::filesystem::path path(url.toLocalFile().toStdString());
        const auto inside = path.lexically_relative(root);
        if (!inside.empty() && *inside.begin() != "..") // as when files of the list are dropped on it
            throw zn::StatusError(zn::E_INVALIDARG,
                "The file " + path.string() + " lies in the vault's folder already; files are added from elsewhere.");
        if (!path.empty())
            paths.push_back(path);
    }
    const std::int32_t folder = m_folders->currentFolder();
    zn::guarded([&] { importFiles(m_vault, this, folder, paths); }, [&] { tellCurrentFailure(this); });
    refresh();
}

void ExplorerWindow::enterFolder()
{
    const std::int32_t folder = m_folders->currentFolder();
    if (folder == 0)
        return;
    m_visited.enter(folder);
    m_files->setFiles(listFolder(m_vault, folder));
    m_cardColumns.fill(*m_files, folder);
    filter();
    if (!m_search->text().isEmpty())
        search();
    m_back->setEnabled(m_visited.canGoBack());
    m_forward->setEnabled(m_visited.canGoForward());
    m_up->setEnabled(folder != m_vault.folders().rootId());
    showPath();
    noteChoice();
}

void ExplorerWindow::goBack() { m_folders->setCurrentFolder(m_visited.back()); }

void ExplorerWindow::goForward() { m_folders->setCurrentFolder(m_visited.forward()); }

void ExplorerWindow::goToParent()
{
    m_folders->setCurrentFolder(m_vault.folders().parentOf(m_folders->currentFolder()));
}

void ExplorerWindow::refresh()
{
    keepChoice([this] { enterFolder(); });
}

void ExplorerWindow::keepChoice(const std::function<void()>& work)
{
    std::vector<std::int32_t> chosen;
    for (const Place& place : chosenPlaces())
        chosen.push_back(place.fileId);
    work();
    QItemSelection again;
    for (const std::int32_t fileId : chosen)
        if (const int row = m_files->rowOf(fileId); row >= 0)
            again.select(m_files->index(row, 0), m_files->index(row, 0));
    m_list->selectionModel()->select(again, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    if (!again.isEmpty())
        m_list->selectionModel()->setCurrentIndex(again.first().topLeft(), QItemSelectionModel::NoUpdate);
    noteChoice();
}

void ExplorerWindow::showPath()
{
    m_path->clear();
    std::vector<std::int32_t> above;
    for (std::int32_t folder = m_folders->currentFolder(); folder != 0; folder = m_vault.folders().parentOf(folder)) {
        above.push_back(folder);
        if (folder == m_vault.folders().rootId())
            break;
    }
    std::reverse(above.begin(), above.end());
    for (const std::int32_t folder : above) {
        const bool isRoot = folder == m_vault.folders().rootId();
        const QString name
            = isRoot ? shown(m_vault.info().name) : shown(zn::pathFileName(m_vault.folders().pathOf(folder)));
        QAction* const step = m_path->addAction(isRoot ? name : QStringLiteral("› %1").arg(name));
        connect(step, &QAction::triggered, this,
            [this, folder] { inSlot(this, [&] { m_folders->setCurrentFolder(folder); }); });
    }
}

void ExplorerWindow::search()
{
    if (!m_files->hasCardTexts() && !m_search->text().isEmpty())
        m_files->setCardTexts(cardTextsOf(m_vault, m_folders->currentFolder()));
    keepChoice([this] { m_files->setSearch(m_search->text()); });
}

void ExplorerWindow::showPicture()
{
    const auto places = chosenPlaces();
    const FileRow file = places.size() == 1 ? m_vault.file(places.front().fileId) : FileRow();
    if (file.latestVersion == 0) {
        m_pictures->forget();
        m_picture->tell({});
        return;
    }
    const std::int32_t version = m_details->chosenVersion();
    m_pictures->ask(places.front(), version == 0 ? file.latestVersion : version);
}

void ExplorerWindow::filter()
{
    auto fitting = m_filter->fitting(m_folders->currentFolder(), m_files->all());
    keepChoice([&] { m_files->setOnly(std::move(fitting)); });
}

std::vector<Place> ExplorerWindow::chosenPlaces() const
{
    std::vector<Place> places;
    for (const QModelIndex& index : m_list->selectionModel()->selectedRows())
        places.push_back({m_files->file(index.row()).fileId, m_folders->currentFolder()});
    return places;
}

void ExplorerWindow::noteChoice()
{
    inSlot(this, [this] {
        const auto places = chosenPlaces();
        for (QAction* action : m_fileActions)
            action->setEnabled(!places.empty());
        m_details->setFile(places.size() == 1 ? std::optional(places.front()) : std::nullopt);
        showPicture();
        const int rows = m_files->rowCount();
        m_count->setText(!places.empty()  ? own("%1 of %2 files selected").arg(places.size()).arg(rows)
                : rows < m_files->total() ? own("%1 of %2 files").arg(rows).arg(m_files->total())
                                          : own("%1 files").arg(rows));
    });
}

zn::ArkSelection ExplorerWindow::chosenFiles() const
{
    zn::ArkSelection selection;
    for (const Place& place : chosenPlaces()) {
        zn::ArkSelItem item;
        item.fileId = place.fileId;
        item.folderId = place.folderId;
        item.path = m_vault.pathOf(place);
        item.version = -1;
        selection.push_back(std::move(item));
    }
    return selection;
}

zn::ArkSelection ExplorerWindow::chosenFolder() const
{
    zn::ArkSelItem item;
    item.itemType = zn::ArkItemType::Folder;
    item.folderId = m_folders->currentFolder();
    item.path = m_vault.local().pathOf(item.folderId, u"");
    return {item};
}

void ExplorerWindow::showMenu(QMenu& menu, const QPoint& at)
{
    connect(&menu, &QMenu::hovered, this, [this](QAction* entry) { statusBar()->showMessage(entry->statusTip()); });
    menu.exec(at);
    statusBar()->clearMessage();
}

void ExplorerWindow::showFileMenu(const QPoint& at)
{
    QMenu menu;
    menu.setObjectName("fileMenu");
    menu.addActions(m_fileActions);
    menu.addSeparator();
    TaskStore tasks(m_host.tasks.database, m_host.tasks.vaultId);
    if (!chosenPlaces().empty())
        addTaskEntries(menu, tasks, [this](const zn::Text& task) { launch(task, chosenFiles()); });
    showMenu(menu, m_list->viewport()->mapToGlobal(at));
}

void ExplorerWindow::showFolderMenu(const QPoint& at)
{
    QMenu menu;
    menu.setObjectName("folderMenu");
    TaskStore tasks(m_host.tasks.database, m_host.tasks.vaultId);
    addTaskEntries(menu, tasks, [this](const zn::Text& task) { launch(task, chosenFolder()); });
    menu.addSeparator();
    const auto restore = [this] {
        inSlot(this, [this] {
            if (restoreDeletedFiles(m_vault, this, m_folders->currentFolder()))
                refresh();
        });
    };
    menu.addAction(own("Deleted Files …"), this, restore)->setObjectName("deletedFiles");
    showMenu(menu, m_folders->viewport()->mapToGlobal(at));
}

void ExplorerWindow::showTaskMenu()
{
    QMenu menu;
    menu.setObjectName("taskMenu");
    TaskStore tasks(m_host.tasks.database, m_host.tasks.vaultId);
    // Without a chosen file the task asks for its files itself.
    if (addTaskEntries(menu, tasks, [this](const zn::Text& task) { launch(task, chosenFiles()); }) == 0)
        menu.addAction(own("No task has a menu entry."))->setEnabled(false);
    const QWidget* const button = findChild<QToolBar*>("actions")->widgetForAction(m_tasks);
    showMenu(menu, button->mapToGlobal(button->rect().bottomLeft()));
}

void ExplorerWindow::showRun(std::int32_t runId)
{
    m_pages->setCurrentWidget(m_runs);
    m_runs->choose(runId);
}

void ExplorerWindow::launch(const zn::Text& task, zn::ArkSelection selection)
{
    inSlot(this, [&] {
        const auto definition = TaskStore(m_host.tasks.database, m_host.tasks.vaultId).get(task);
        const auto run = m_host.launch(definition, std::move(selection));
        if (run)
            showRun(run->id);
    });
}

} // namespace zn::arkin
