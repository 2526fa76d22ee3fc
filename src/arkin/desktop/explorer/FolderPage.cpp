#include "arkin/desktop/explorer/FolderPage.h"

#include "arkin/desktop/explorer/DeletedFiles.h"
#include "arkin/desktop/explorer/FileDetails.h"
#include "arkin/desktop/explorer/FileFilterBox.h"
#include "arkin/desktop/explorer/FileImport.h"
#include "arkin/desktop/explorer/FileTable.h"
#include "arkin/desktop/explorer/FileWork.h"
#include "arkin/desktop/explorer/FolderTree.h"
#include "arkin/desktop/explorer/FolderWork.h"
#include "arkin/desktop/explorer/TaskMenu.h"
#include "arkin/desktop/frame/Texts.h"
#include "arkin/desktop/pictures/PictureMaker.h"
#include "arkin/desktop/pictures/PicturePane.h"
#include "arkin/store/SearchIndex.h"
#include "base/Paths.h"

#include <algorithm>
#include <climits>
#include <QAction>
#include <QCheckBox>
#include <QFileDialog>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QProgressDialog>
#include <QSplitter>
#include <QTimer>
#include <QToolBar>
#include <QTreeView>
#include <QUuid>
#include <QVBoxLayout>

namespace zn::arkin {

namespace {

/// Columns of the files in units of a letter.
constexpr std::pair<int, int> columnWidths[]
    = {{FileTable::NameColumn, 36}, {FileTable::VersionColumn, 9}, {FileTable::StateColumn, 16},
        {FileTable::CheckedOutColumn, 22}, {FileTable::SizeColumn, 13}, {FileTable::ChangedColumn, 22}};

} // namespace

FolderPage::FolderPage(const DailyHost& host, QList<QAction*> fileActions)
    : m_host(host)
    , m_vault(*host.tasks.opened)
    , m_fileActions(std::move(fileActions))
    , m_files(new FileTable(this))
    , m_folders(new FolderTree(m_vault))
    , m_cardColumns(m_vault)
    , m_list(new QTreeView)
    , m_details(new FileDetails(host))
    , m_picture(new PicturePane)
    , m_pictures(new PictureMaker(host, this))
    , m_models(new PictureMaker(host, this, PictureMaker::Form::Model))
    , m_search(new QLineEdit)
    , m_everywhere(new QCheckBox(own("In all folders")))
    , m_filter(new FileFilterBox(host))
    , m_path(new QToolBar)
{
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->setSpacing(0);
    column->addWidget(makeHead());
    column->addWidget(makeViews(), 1);
    connectViews();
    enableDragging();
    inSlot(this, [this] { enterFolder(); });
}

FolderPage::~FolderPage() = default;

QToolBar* FolderPage::makeHead()
{
    auto* const head = new QToolBar;
    m_path->setObjectName("path");
    head->addWidget(m_path);
    auto* const space = new QWidget;
    space->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    head->addWidget(space);
    m_search->setObjectName("search");
    m_search->setPlaceholderText(own("Search names and cards"));
    m_search->setAccessibleName(own("Search names and cards"));
    m_search->setClearButtonEnabled(true);
    m_search->setMinimumWidth(26 * fontMetrics().averageCharWidth());
    m_search->setMaximumWidth(52 * fontMetrics().averageCharWidth());
    head->addWidget(m_search);
    m_everywhere->setObjectName("everywhere");
    m_everywhere->setVisible(!m_host.cacheFolder.empty());
    head->addWidget(m_everywhere);
    head->addWidget(m_filter);
    return head;
}

QSplitter* FolderPage::makeViews()
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
    giveTitlesRoom(*m_list);
    m_list->setContextMenuPolicy(Qt::CustomContextMenu);
    m_list->addActions(m_fileActions);
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
    return whole;
}

void FolderPage::connectViews()
{
    connect(m_search, &QLineEdit::textChanged, this, [this] { inSlot(this, [this] { search(); }); });
    connect(m_everywhere, &QCheckBox::toggled, this, [this] { inSlot(this, [this] { search(); }); });
    connect(m_filter, &QComboBox::currentIndexChanged, this, [this] { inSlot(this, [this] { filter(); }); });
    connect(m_folders, &QTreeWidget::currentItemChanged, this, [this] { inSlot(this, [this] { enterFolder(); }); });
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] { noteChoice(); });
    connect(m_list, &QTreeView::doubleClicked, this, [this] {
        for (QAction* action : m_fileActions)
            if (action->objectName() == "open")
                action->trigger();
    });
    m_details->whenChosen = [this] { inSlot(this, [this] { showPicture(); }); };
    m_details->whenChanged = [this] { refresh(); };
    m_details->showRun = [this](std::int32_t runId) { showRun(runId); };
    m_pictures->shown = [this](const QImage& picture) { m_picture->show(picture); };
    m_pictures->told = [this](const QString& sentence) { m_picture->tell(sentence); };
    // What can't be turned is just looked at.
    m_models->told = [](const QString&) {};
    m_models->given = [this](const std::string& ply) { inSlot(this, [&] { m_picture->setModel(TurningModel(ply)); }); };
    m_picture->modelWanted = [this] { askForPicture(*m_models); };
    m_list->header()->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_list->header(), &QHeaderView::customContextMenuRequested, this, [this](const QPoint& at) {
        inSlot(this, [&] {
            if (m_cardColumns.choose(m_list->header()->mapToGlobal(at)))
                keepChoice([this] { m_cardColumns.fill(*m_files, folder()); });
        });
    });
    connect(m_list, &QTreeView::customContextMenuRequested, this,
        [this](const QPoint& at) { inSlot(this, [&] { showFileMenu(at); }); });
    connect(m_folders, &QTreeView::customContextMenuRequested, this,
        [this](const QPoint& at) { inSlot(this, [&] { showFolderMenu(at); }); });
}

void FolderPage::enableDragging()
{
    m_list->setDragDropMode(QAbstractItemView::DragDrop);
    m_list->setDefaultDropAction(Qt::CopyAction);
    m_files->urlsOf = [this](const std::vector<std::int32_t>& fileIds) {
        QList<QUrl> urls;
        inSlot(this, [&] {
            for (const std::int32_t fileId : fileIds) {
                const auto& file = m_files->file(m_files->rowOf(fileId));
                const auto path = localCopy(m_vault, {fileId, file.folderId});
                urls << QUrl::fromLocalFile(QString::fromStdString(path.string()));
            }
        });
        return urls;
    };
    // The program that the files come from waits for the end of the drop.
    m_files->dropped = [this](const QList<QUrl>& urls) {
        QTimer::singleShot(0, this, [this, urls] { inSlot(this, [&] { import(urls); }); });
    };
    m_files->mark = QUuid::createUuid().toByteArray();
    m_folders->accepted = m_files->mark;
    m_folders->dropped = [this](std::int32_t target) {
        QTimer::singleShot(0, this, [this, target] {
            inSlot(this, [&] {
                if (moveFiles(m_vault, this, chosenPlaces(), target))
                    refresh();
            });
        });
    };
}

void FolderPage::addFiles() { import(QFileDialog::getOpenFileUrls(this, own("Add Files"))); }

void FolderPage::import(const QList<QUrl>& urls)
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
    zn::guarded([&] { importFiles(m_vault, this, folder(), paths); }, [&] { tellCurrentFailure(this); });
    refresh();
}

std::int32_t FolderPage::folder() const { return m_folders->currentFolder(); }

QString FolderPage::title() const
{
    const auto* const item = m_folders->currentItem();
    return item ? item->text(0) : QString();
}

bool FolderPage::open(std::int32_t folderId) { return m_folders->setCurrentFolder(folderId); }

void FolderPage::enterFolder()
{
    const std::int32_t entered = folder();
    if (entered == 0)
        return;
    m_visited.enter(entered);
    if (isSearchingEverywhere())
        m_search->clear(); // what is entered is wanted now
    m_showsFound = false;
    m_files->setFiles(listFolder(m_vault, entered));
    m_cardColumns.fill(*m_files, entered);
    filter();
    if (!m_search->text().isEmpty())
        search();
    showPath();
    noteChoice();
}

void FolderPage::goBack()
{
    while (m_visited.canGoBack() && !open(m_visited.back())) { } // folders that have gone are passed over
}

void FolderPage::goForward()
{
    while (m_visited.canGoForward() && !open(m_visited.forward())) { }
}

void FolderPage::goToParent() { open(m_vault.folders().parentOf(folder())); }

void FolderPage::refresh()
{
    m_isStale = !isVisible();
    if (!m_isStale)
        readAgain();
}

void FolderPage::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (m_isStale)
        inSlot(this, [this] { refresh(); });
}

void FolderPage::readAgain()
{
    keepChoice([this] {
        const QSignalBlocker silent(m_folders);
        m_folders->readAgain();
        if (isSearchingEverywhere())
            showFound();
        else
            enterFolder();
    });
}

void FolderPage::keepChoice(const std::function<void()>& work)
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

void FolderPage::showPath()
{
    m_path->clear();
    QStringList names;
    std::vector<std::int32_t> folders;
    for (const auto* item = m_folders->currentItem(); item; item = item->parent()) {
        names << item->text(0);
        folders.push_back(FolderTree::folderOf(*item));
    }
    for (qsizetype i = names.size() - 1; i >= 0; --i) {
        QAction* const step
            = m_path->addAction(i == names.size() - 1 ? names[i] : QStringLiteral("› %1").arg(names[i]));
        connect(step, &QAction::triggered, this,
            [this, to = folders[static_cast<std::size_t>(i)]] { inSlot(this, [&] { open(to); }); });
    }
}

bool FolderPage::isSearchingEverywhere() const
{
    return m_everywhere->isChecked() && !m_search->text().trimmed().isEmpty();
}

void FolderPage::search()
{
    m_filter->setEnabled(!isSearchingEverywhere());
    if (isSearchingEverywhere()) {
        keepChoice([this] { showFound(); });
        return;
    }
    if (m_showsFound)
        enterFolder();
    if (!m_files->hasCardTexts() && !m_search->text().isEmpty())
        m_files->setCardTexts(cardTextsOf(m_vault, folder()));
    keepChoice([this] { m_files->setSearch(m_search->text()); });
}

void FolderPage::showFound()
{
    constexpr std::size_t most = 1000; // more than a person reads
    if (!m_index)
        m_index = std::make_unique<SearchIndex>(m_vault, m_host.cacheFolder);
    QProgressDialog progress(own("Reading names and cards …"), QString(), 0, 0, this);
    progress.setWindowModality(Qt::WindowModal);
    progress.setMinimumDuration(1000);
    m_index->catchUp([&](std::int64_t done) { progress.setValue(static_cast<int>(done % INT_MAX)); });
    progress.reset();
    FileTable::CardColumn folders{own("Folder"), {}};
    std::vector<ListedFile> found = listFiles(m_vault, m_index->find(typed(m_search->text()), most));
    const auto key = [](const ListedFile& file) { return zn::foldCase(zn::toText(file.name)); };
    std::ranges::stable_sort(found, {}, key); // as a folder's listing has them
    for (const ListedFile& file : found)
        folders.values[file.fileId] = "\\" + zn::toUtf8(m_vault.folders().pathOf(file.folderId));
    m_showsFound = true;
    m_files->setSearch({});
    m_files->setOnly({});
    m_files->setFiles(std::move(found));
    m_files->setCardColumns({std::move(folders)});
}

void FolderPage::filter()
{
    auto fitting = m_filter->fitting(folder(), m_files->all());
    keepChoice([&] { m_files->setOnly(std::move(fitting)); });
}

void FolderPage::focusList() { m_list->setFocus(); }

void FolderPage::focusSearch() { m_search->setFocus(); }

QByteArray FolderPage::columns() const { return m_list->header()->saveState(); }

void FolderPage::setColumns(const QByteArray& columns, const QStringList& cards)
{
    m_cardColumns.setNames(cards);
    m_cardColumns.fill(*m_files, folder());
    m_list->header()->restoreState(columns);
    giveTitlesRoom(*m_list); // it may have been kept in another language
}

void FolderPage::showPicture()
{
    m_models->forget();
    if (askForPicture(*m_pictures))
        return;
    m_pictures->forget();
    m_picture->tell({});
}

bool FolderPage::askForPicture(PictureMaker& maker)
{
    const auto places = chosenPlaces();
    const FileRow file = places.size() == 1 ? m_vault.file(places.front().fileId) : FileRow();
    if (file.latestVersion == 0)
        return false;
    const std::int32_t version = m_details->chosenVersion();
    maker.ask(places.front(), version == 0 ? file.latestVersion : version);
    return true;
}

std::vector<Place> FolderPage::chosenPlaces() const
{
    std::vector<Place> places;
    for (const QModelIndex& index : m_list->selectionModel()->selectedRows())
        places.push_back({m_files->file(index.row()).fileId, m_files->file(index.row()).folderId});
    return places;
}

void FolderPage::noteChoice()
{
    inSlot(this, [this] {
        const auto places = chosenPlaces();
        m_details->setFile(places.size() == 1 ? std::optional(places.front()) : std::nullopt);
        showPicture();
        const int rows = m_files->rowCount();
        m_count = !places.empty()     ? own("%1 of %2 files selected").arg(places.size()).arg(rows)
            : rows < m_files->total() ? own("%1 of %2 files").arg(rows).arg(m_files->total())
                                      : own("%1 files").arg(rows);
        if (changed)
            changed();
    });
}

zn::ArkSelection FolderPage::chosenFiles() const
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

zn::ArkSelection FolderPage::chosenFolder() const
{
    zn::ArkSelItem item;
    item.itemType = zn::ArkItemType::Folder;
    item.folderId = folder();
    item.path = m_vault.local().pathOf(item.folderId, u"");
    return {item};
}

void FolderPage::showMenu(QMenu& menu, const QPoint& at)
{
    connect(&menu, &QMenu::hovered, this, [this](QAction* entry) { explain(entry->statusTip()); });
    menu.exec(at);
    explain({});
}

void FolderPage::showFileMenu(const QPoint& at)
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

void FolderPage::changeFolder(const std::function<std::int32_t(std::int32_t)>& work)
{
    inSlot(this, [&] {
        const std::int32_t now = work(folder());
        if (now == 0)
            return;
        const QSignalBlocker silent(m_folders);
        m_folders->readAgain();
        open(now);
        enterFolder();
    });
}

void FolderPage::showFolderMenu(const QPoint& at)
{
    QMenu menu;
    menu.setObjectName("folderMenu");
    const auto entry = [&](const char* name, const char* text, const std::function<void()>& work) {
        QAction* const action = menu.addAction(own(text));
        action->setObjectName(name);
        connect(action, &QAction::triggered, this, [this, work] { inSlot(this, work); });
    };
    entry("openInTab", "Open in New Tab", [this] { openInTab(folder()); });
    for (const FolderWork& one : folderWorks())
        entry(one.name, one.text,
            [&] { changeFolder([&](std::int32_t folderId) { return one.work(m_vault, this, folderId); }); });
    entry("deletedFiles", "Deleted Files …", [this] {
        if (restoreDeletedFiles(m_vault, this, folder()))
            refresh();
    });
    menu.addSeparator();
    TaskStore tasks(m_host.tasks.database, m_host.tasks.vaultId);
    addTaskEntries(menu, tasks, [this](const zn::Text& task) { launch(task, chosenFolder()); });
    showMenu(menu, m_folders->viewport()->mapToGlobal(at));
}

} // namespace zn::arkin
