#include "arkin/desktop/monitor/RunsPage.h"

#include "arkin/desktop/frame/Texts.h"
#include "arkin/desktop/monitor/RunChoice.h"
#include "arkin/desktop/monitor/RunPane.h"
#include "arkin/desktop/monitor/RunTable.h"
#include "arkin/store/CheckOut.h"
#include "arkin/store/Vault.h"
#include "arkin/tasks/LaunchCheck.h"
#include "arkin/tasks/RunAgain.h"
#include "arkin/tasks/RunRequests.h"

#include <QAction>
#include <QComboBox>
#include <QDate>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QMessageBox>
#include <QSplitter>
#include <QToolBar>
#include <QTreeView>
#include <QVBoxLayout>

namespace zn::arkin {

namespace {

QComboBox* addCombo(QHBoxLayout& row, const char* name, const QString& title, const QStringList& entries)
{
    auto* const combo = new QComboBox;
    combo->setObjectName(name);
    combo->setAccessibleName(title);
    combo->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    combo->addItems(entries);
    row.addWidget(combo);
    return combo;
}

std::int64_t daysAgo(int days) { return QDate::currentDate().addDays(-days).startOfDay().toSecsSinceEpoch(); }

bool canBeSuspended(const RunInfo& run)
{
    return run.state == zn::TaskRunState::Queued || run.state == zn::TaskRunState::Running;
}

bool canBeResumed(const RunInfo& run)
{
    return run.state == zn::TaskRunState::Suspended || run.state == zn::TaskRunState::SuspendRequested;
}

bool hasEnded(const RunInfo& run) { return run.ended(); }

bool hasFailures(const RunInfo& run) { return run.ended() && !run.wentWell(); }

bool canBeCancelled(const RunInfo& run) { return !run.ended() && run.state != zn::TaskRunState::CancelRequested; }

} // namespace

RunsPage::RunsPage(const DailyHost& host, QWidget* parent)
    : QWidget(parent)
    , m_host(host)
    , m_table(new RunTable(this))
    , m_choice(new RunChoice(this))
    , m_bar(new QToolBar)
    , m_list(new QTreeView)
    , m_pane(new RunPane(host))
{
    setObjectName("runsPage");
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(makeFilters());
    layout->addWidget(m_bar);
    m_choice->setSourceModel(m_table);
    m_list->setObjectName("runList");
    m_list->setAccessibleName(own("Runs"));
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setAllColumnsShowFocus(true);
    m_list->setSelectionMode(QTreeView::ExtendedSelection);
    m_list->setModel(m_choice);
    m_list->setSortingEnabled(true);
    m_list->sortByColumn(RunTable::NumberColumn, Qt::DescendingOrder);
    m_list->setContextMenuPolicy(Qt::ActionsContextMenu);
    const int unit = fontMetrics().averageCharWidth();
    for (const auto& [column, width] :
        {std::pair(RunTable::NumberColumn, 7), {RunTable::TaskColumn, 24}, {RunTable::StateColumn, 26},
            {RunTable::ProgressColumn, 16}, {RunTable::UserColumn, 12}, {RunTable::LaunchedColumn, 26}})
        m_list->setColumnWidth(column, width * unit);
    giveTitlesRoom(*m_list);

    auto* const split = new QSplitter(Qt::Vertical);
    split->addWidget(m_list);
    split->addWidget(m_pane);
    split->setChildrenCollapsible(false);
    layout->addWidget(split, 1);

    makeActions();
    m_pane->open = [this](const zn::Text& path) {
        if (open)
            open(path);
    };
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this,
        [this] { inSlot(this, [this] { showChosen(); }); });
}

RunsPage::~RunsPage() = default;

QWidget* RunsPage::makeFilters()
{
    auto* const filters = new QWidget;
    auto* const row = new QHBoxLayout(filters);
    row->setContentsMargins({});
    m_task = addCombo(*row, "task", own("Task"), {own("All tasks")});
    m_kind = addCombo(*row, "kind", own("State"), {own("All states"), own("Not ended"), own("With failures")});
    m_user = addCombo(*row, "user", own("User"), {own("Everybody"), own("Mine")});
    m_since = addCombo(*row, "since", own("Launched"),
        {own("At any time"), own("Today"), own("Since yesterday"), own("In the last 7 days")});
    row->addStretch();
    for (QComboBox* combo : {m_task, m_kind, m_user, m_since})
        connect(combo, &QComboBox::currentIndexChanged, this, [this] { inSlot(this, [this] { filter(); }); });
    return filters;
}

void RunsPage::makeActions()
{
    addRequest("suspend", own("&Suspend"), requestSuspend, canBeSuspended);
    addRequest("resume", own("&Resume"), requestResume, canBeResumed);
    addRequest("cancel", own("&Cancel"), requestCancel, canBeCancelled);
    addAgain("again", own("Run &Again"), false, hasEnded);
    addAgain("againFailed", own("Again for &Failed Files"), true, hasFailures);
    m_details = m_bar->addAction(own("&Details …"));
    m_details->setObjectName("details");
    m_details->setEnabled(false);
    m_list->addAction(m_details);
    connect(m_details, &QAction::triggered, this, [this] {
        inSlot(this, [this] {
            if (const auto runs = chosen(); runs.size() == 1)
                m_host.showDetails(runs.front().id);
        });
    });
}

void RunsPage::addRequest(const char* name, const QString& text, Request request, bool (*fits)(const RunInfo&))
{
    QAction* const action = m_bar->addAction(text);
    action->setObjectName(name);
    action->setEnabled(false);
    m_list->addAction(action);
    m_asks.push_back({action, fits});
    connect(action, &QAction::triggered, this, [this, request] { inSlot(this, [&] { ask(request); }); });
}

void RunsPage::filter()
{
    constexpr int days[] = {0, 0, 1, 7};
    m_choice->setTask(m_task->currentIndex() <= 0 ? zn::Text() : typed(m_task->currentText()));
    m_choice->setKind(static_cast<RunKind>(m_kind->currentIndex()));
    m_choice->setUser(m_user->currentIndex() == 0 ? zn::Text() : m_host.tasks.userName);
    m_choice->setSince(m_since->currentIndex() == 0 ? 0 : daysAgo(days[m_since->currentIndex()]));
}

void RunsPage::fillTasks()
{
    QStringList names{m_task->itemText(0)};
    names << m_table->taskNames();
    if (names.size() == m_task->count())
        return;
    const QString before = m_task->currentText();
    const QSignalBlocker quiet(m_task);
    m_task->clear();
    m_task->addItems(names);
    m_task->setCurrentIndex(std::max(m_task->findText(before), 0));
}

void RunsPage::look(std::int64_t turn, std::int64_t now)
{
    if (turn == m_turn)
        return m_table->tick(now);
    RunStore runs(m_host.tasks.database, m_host.tasks.vaultId);
    m_table->update(runs, now);
    m_turn = turn;
    fillTasks();
    noteEnds();
    showChosen();
}

void RunsPage::noteEnds()
{
    std::vector<std::int32_t> watched;
    for (int row = 0; row < m_table->rowCount(); ++row)
        if (const RunInfo& run = m_table->run(row); !run.ended() && run.userName == m_host.tasks.userName)
            watched.push_back(run.id);
    for (const std::int32_t id : m_watched)
        if (const int row = m_table->rowOf(id); row >= 0 && m_table->run(row).ended() && ended)
            ended(m_table->run(row));
    m_watched = std::move(watched);
}

std::vector<RunInfo> RunsPage::chosen() const
{
    std::vector<RunInfo> runs;
    for (const QModelIndex& index : m_list->selectionModel()->selectedRows())
        runs.push_back(m_table->run(m_choice->mapToSource(index).row()));
    return runs;
}

void RunsPage::showChosen()
{
    const auto runs = chosen();
    for (const AskAction& ask : m_asks)
        ask.action->setEnabled(std::ranges::any_of(runs, ask.fits));
    m_details->setEnabled(runs.size() == 1);
    m_pane->show(runs.size() == 1 ? std::optional(runs.front()) : std::nullopt, m_table->now());
}

void RunsPage::choose(std::int32_t runId)
{
    const int row = m_table->rowOf(runId);
    if (row < 0)
        return;
    QModelIndex index = m_choice->mapFromSource(m_table->index(row, 0));
    if (!index.isValid()) {
        for (QComboBox* combo : {m_task, m_kind, m_user, m_since})
            combo->setCurrentIndex(0);
        index = m_choice->mapFromSource(m_table->index(row, 0));
    }
    m_list->setCurrentIndex(index);
    m_list->scrollTo(index);
}

void RunsPage::ask(Request request)
{
    RunStore runs(m_host.tasks.database, m_host.tasks.vaultId);
    const auto now = m_host.tasks.clock.now();
    QStringList failures;
    for (const RunInfo& run : chosen())
        zn::guarded([&] { request(runs, run.id, now); }, [&] { failures << shown(currentFailure().sentence); });
    putBackCopies(*m_host.tasks.opened); // of runs that had lost their workers
    changed();
    if (!failures.isEmpty())
        tell(this, failures.join('\n'));
}

void RunsPage::addAgain(const char* name, const QString& text, bool onlyFailed, bool (*fits)(const RunInfo&))
{
    QAction* const action = m_bar->addAction(text);
    action->setObjectName(name);
    action->setEnabled(false);
    m_list->addAction(action);
    m_asks.push_back({action, fits});
    connect(action, &QAction::triggered, this, [this, onlyFailed] { inSlot(this, [&] { runAgain(onlyFailed); }); });
}

void RunsPage::runAgain(bool onlyFailed)
{
    std::int32_t last = 0;
    QStringList failures;
    for (const RunInfo& run : chosen()) {
        const auto launch = [&](bool anyway) {
            last = launchAgain(m_host.tasks, run.id, {.onlyFailed = onlyFailed, .anyway = anyway}).id;
        };
        try {
            launch(false);
        } catch (const CannotRun& obstacle) {
            const auto answer = QMessageBox::question(this, own("Run Again"),
                shown(std::string_view(obstacle.what())) + '\n' + own("Do you want to launch it all the same?"));
            if (answer == QMessageBox::Yes)
                zn::guarded([&] { launch(true); }, [&] { failures << shown(currentFailure().sentence); });
        } catch (...) {
            failures << shown(currentFailure().sentence);
        }
    }
    if (last != 0) {
        changed();
        choose(last);
    }
    if (!failures.isEmpty())
        tell(this, failures.join('\n'));
}

} // namespace zn::arkin
