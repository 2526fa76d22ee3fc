#include "arkin/desktop/explorer/ExplorerWindow.h"

#include "arkin/desktop/explorer/FileWork.h"
#include "arkin/desktop/explorer/FolderPage.h"
#include "arkin/desktop/explorer/TaskMenu.h"
#include "arkin/desktop/frame/Texts.h"
#include "arkin/desktop/monitor/EndNotice.h"
#include "arkin/desktop/monitor/OpenFile.h"
#include "arkin/desktop/monitor/RunsView.h"

#include <QAction>
#include <QCloseEvent>
#include <QLabel>
#include <QMenu>
#include <QSettings>
#include <QStatusBar>
#include <QTabBar>
#include <QTabWidget>
#include <QToolBar>
#include <QToolButton>

namespace zn::arkin {

ExplorerWindow::ExplorerWindow(const DailyHost& host, std::int32_t folderId)
    : m_host(host)
    , m_vault(*host.tasks.opened)
    , m_count(new QLabel)
    , m_pages(new QTabWidget)
    , m_runs(new RunsView(host))
{
    setObjectName("explorer");
    setWindowTitle(own("Vault “%1”").arg(shown(m_vault.info().name)));
    makeActions();
    makePages();
    makeRuns();
    restoreState(folderId);
    page().focusList();
}

ExplorerWindow::~ExplorerWindow()
{
    QSettings settings(QStringLiteral("arkin"), QStringLiteral("explorer"));
    settings.setValue("geometry", saveGeometry());
    settings.setValue("columns", page().columns());
    settings.setValue("cards", page().cardColumns());
    QStringList folders;
    for (const FolderPage* one : folderPages())
        folders << QString::number(one->folder());
    settings.setValue("folders", folders);
    settings.setValue("tab", m_pages->indexOf(m_page));
    m_pages->disconnect(this); // its pages go with the window
}

void ExplorerWindow::closeEvent(QCloseEvent* event)
{
    QMainWindow::closeEvent(event);
    if (whenClosed)
        whenClosed();
}

void ExplorerWindow::restoreState(std::int32_t folderId)
{
    const QSettings settings(QStringLiteral("arkin"), QStringLiteral("explorer"));
    if (!restoreGeometry(settings.value("geometry").toByteArray()))
        resizeByFont(*this, 160, 42);
    const QStringList folders
        = folderId != 0 ? QStringList(QString::number(folderId)) : settings.value("folders").toStringList();
    for (const QString& folder : folders)
        addPage(folder.toInt());
    if (folders.isEmpty())
        addPage(m_vault.folders().rootId());
    for (FolderPage* const one : folderPages())
        one->setColumns(settings.value("columns").toByteArray(), settings.value("cards").toStringList());
    const int tab = folderId != 0 ? 0 : settings.value("tab").toInt();
    m_pages->setCurrentIndex(tab >= 0 && tab < m_pages->count() - 1 ? tab : 0);
    choosePage();
    connect(m_pages, &QTabWidget::currentChanged, this, [this] { choosePage(); });
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
    m_fileActions.push_back(action);
    connect(action, &QAction::triggered, this, [this, &work] {
        inSlot(this, [&] {
            const auto places = page().chosenPlaces();
            if (places.empty())
                return;
            zn::guarded([&] { work.work(m_vault, this, places); }, [&] { tellCurrentFailure(this); });
            if (work.changesVault)
                refresh();
        });
    });
}

void ExplorerWindow::addKey(const char* name, QKeySequence key, Work work)
{
    auto* const action = new QAction(this);
    action->setObjectName(name);
    action->setShortcut(key);
    connect(action, &QAction::triggered, this, [this, work] { inSlot(this, [&] { (this->*work)(); }); });
    QWidget::addAction(action);
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
    addKey("find", QKeySequence::Find, &ExplorerWindow::focusSearch);
    addKey("newTab", QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_T), &ExplorerWindow::newTab);
    addKey("closeTab", QKeySequence(Qt::CTRL | Qt::Key_W), &ExplorerWindow::closeCurrentTab);
}

void ExplorerWindow::makePages()
{
    m_pages->setObjectName("pages");
    m_pages->setDocumentMode(true);
    m_pages->setTabsClosable(true);
    auto* const more = new QToolButton;
    more->setObjectName("moreTabs");
    more->setText("+");
    more->setAutoRaise(true);
    more->setToolTip(own("New Tab (Ctrl+Shift+T)"));
    more->setAccessibleName(own("New Tab (Ctrl+Shift+T)"));
    m_pages->setCornerWidget(more);
    setCentralWidget(m_pages);
    statusBar()->addWidget(m_count, 1);
    m_count->setObjectName("count");
    connect(more, &QToolButton::clicked, this, [this] { inSlot(this, [this] { newTab(); }); });
    connect(m_pages, &QTabWidget::tabCloseRequested, this, [this](int index) { closeTab(index); });
}

void ExplorerWindow::makeRuns()
{
    m_pages->addTab(m_runs, own("R&uns"));
    for (const auto side : {QTabBar::LeftSide, QTabBar::RightSide})
        m_pages->tabBar()->setTabButton(0, side, nullptr); // the runs stay
    m_runs->open = [this](const zn::Text& path) { openFile(m_vault, path); };
    auto* const notice = new EndNotice(this);
    m_runs->ended = [this, notice](const RunInfo& run) {
        notice->tell(run);
        refresh(); // its outputs may be in the folders that are shown
    };
}

FolderPage* ExplorerWindow::addPage(std::int32_t folderId)
{
    auto* const added = new FolderPage(m_host, m_fileActions);
    added->launch = [this](const zn::Text& task, zn::ArkSelection files) { launch(task, std::move(files)); };
    added->showRun = [this](std::int32_t runId) { showRun(runId); };
    added->explain = [this](const QString& sentence) { statusBar()->showMessage(sentence); };
    added->openInTab = [this](std::int32_t folder) {
        FolderPage* const another = addPage(folder);
        another->setColumns(page().columns(), page().cardColumns());
        m_pages->setCurrentWidget(another);
        another->focusList();
    };
    if (!m_page)
        m_page = added;
    m_pages->insertTab(m_pages->count() - 1, added, QString());
    showCloseButtons();
    added->changed = [this, added] {
        m_pages->setTabText(m_pages->indexOf(added), added->title().replace('&', "&&"));
        if (added == m_page)
            showPage();
    };
    added->open(folderId); // of another home or gone, it is the root
    added->changed();
    return added;
}

std::vector<FolderPage*> ExplorerWindow::folderPages() const
{
    std::vector<FolderPage*> pages;
    for (int i = 0; i < m_pages->count() - 1; ++i)
        pages.push_back(static_cast<FolderPage*>(m_pages->widget(i)));
    return pages;
}

void ExplorerWindow::choosePage()
{
    if (m_pages->currentWidget() != m_runs && m_pages->currentWidget())
        m_page = static_cast<FolderPage*>(m_pages->currentWidget());
    showPage();
}

void ExplorerWindow::showPage()
{
    inSlot(this, [this] {
        const bool hasChoice = !page().chosenPlaces().empty();
        for (QAction* action : m_fileActions)
            action->setEnabled(hasChoice);
        m_back->setEnabled(page().canGoBack());
        m_forward->setEnabled(page().canGoForward());
        m_up->setEnabled(page().folder() != m_vault.folders().rootId());
        m_count->setText(page().count());
    });
}

void ExplorerWindow::newTab() { page().openInTab(page().folder()); }

void ExplorerWindow::closeTab(int index)
{
    const auto pages = folderPages();
    if (pages.size() < 2 || index < 0 || index >= static_cast<int>(pages.size()))
        return;
    FolderPage* const closed = pages[static_cast<std::size_t>(index)];
    if (closed == m_page)
        m_page = pages[static_cast<std::size_t>(index == 0 ? 1 : index - 1)];
    m_pages->removeTab(index);
    closed->deleteLater();
    m_pages->setCurrentWidget(m_page);
    showCloseButtons();
}

/// One folder is always there, so the last one has none.
void ExplorerWindow::showCloseButtons()
{
    const auto count = static_cast<int>(folderPages().size());
    for (int i = 0; i < count; ++i) {
        for (const auto side : {QTabBar::LeftSide, QTabBar::RightSide})
            if (QWidget* const button = m_pages->tabBar()->tabButton(i, side))
                button->setVisible(count > 1);
    }
}

void ExplorerWindow::closeCurrentTab() { closeTab(m_pages->currentIndex()); }

void ExplorerWindow::addFiles() { page().addFiles(); }

void ExplorerWindow::goBack() { page().goBack(); }

void ExplorerWindow::goForward() { page().goForward(); }

void ExplorerWindow::goToParent() { page().goToParent(); }

void ExplorerWindow::refresh()
{
    for (FolderPage* const one : folderPages())
        one->refresh();
}

void ExplorerWindow::focusSearch() { page().focusSearch(); }

void ExplorerWindow::showTaskMenu()
{
    QMenu menu;
    menu.setObjectName("taskMenu");
    TaskStore tasks(m_host.tasks.database, m_host.tasks.vaultId);
    // Without a chosen file the task asks for its files itself.
    if (addTaskEntries(menu, tasks, [this](const zn::Text& task) { launch(task, page().chosenFiles()); }) == 0)
        menu.addAction(own("No task has a menu entry."))->setEnabled(false);
    connect(&menu, &QMenu::hovered, this, [this](QAction* entry) { statusBar()->showMessage(entry->statusTip()); });
    const QWidget* const button = findChild<QToolBar*>("actions")->widgetForAction(m_tasks);
    menu.exec(button->mapToGlobal(button->rect().bottomLeft()));
    statusBar()->clearMessage();
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
