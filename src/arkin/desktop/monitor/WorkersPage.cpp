#include "arkin/desktop/monitor/WorkersPage.h"

#include "arkin/desktop/frame/Texts.h"
#include "arkin/desktop/monitor/RunTexts.h"
#include "arkin/desktop/monitor/StopQuestion.h"
#include "arkin/store/Codes.h"
#include "base/Paths.h"

#include <algorithm>
#include <QAction>
#include <QGuiApplication>
#include <QShowEvent>
#include <QToolBar>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace zn::arkin {

namespace {

constexpr std::int64_t readEvery = 5; // seconds

bool isSame(const WorkerInfo& a, const WorkerInfo& b) { return a.id == b.id && a.process == b.process; }

class WaitCursor {
public:
    WaitCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;
    ~WaitCursor() { QGuiApplication::restoreOverrideCursor(); }
};

QString stateWord(const WorkerInfo& worker, std::int64_t now)
{
    return QCoreApplication::translate("WorkerState", zn::toUtf8(workerStateText(worker, now)).c_str());
}

} // namespace

WorkersPage::WorkersPage(const DailyHost& host, QWidget* parent)
    : QWidget(parent)
    , m_host(host)
    , m_bar(new QToolBar)
    , m_list(new QTreeWidget)
{
    setObjectName("workersPage");
    m_list->setObjectName("workers");
    m_list->setAccessibleName(own("Workers"));
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setAllColumnsShowFocus(true);
    m_list->setSelectionMode(QTreeWidget::ExtendedSelection);
    m_list->setContextMenuPolicy(Qt::ActionsContextMenu);
    m_list->setHeaderLabels({own("Worker"), own("User"), own("Machine"), own("Process"), own("State"), own("Since"),
        own("Run"), own("File"), own("Heard of")});
    const int unit = fontMetrics().averageCharWidth();
    int column = 0;
    for (const int width : {10, 14, 16, 10, 24, 26, 26, 30})
        m_list->setColumnWidth(column++, width * unit);
    giveTitlesRoom(*m_list);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_bar);
    layout->addWidget(m_list, 1);
    makeActions();
    connect(m_list, &QTreeWidget::itemSelectionChanged, this, [this] { enableActions(); });
    connect(m_list, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem* row) {
        inSlot(this, [&] {
            const auto& worker = m_workers.at(static_cast<std::size_t>(m_list->indexOfTopLevelItem(row)));
            if (worker.run)
                runWanted(worker.run->id);
        });
    });
}

void WorkersPage::makeActions()
{
    m_start = m_bar->addAction(own("&Start Worker"));
    m_start->setObjectName("startWorker");
    m_start->setToolTip(own("Starts a worker on this machine, which goes on when this window is closed."));
    m_start->setEnabled(static_cast<bool>(m_host.tasks.startWorker));
    m_stop = m_bar->addAction(own("S&top Worker"));
    m_stop->setObjectName("stopWorker");
    m_list->addActions({m_start, m_stop});
    connect(m_start, &QAction::triggered, this, [this] { inSlot(this, [this] { start(); }); });
    connect(m_stop, &QAction::triggered, this, [this] { inSlot(this, [this] { stop(); }); });
    enableActions();
}

void WorkersPage::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    m_turn = -1;
    if (changed)
        changed();
}

void WorkersPage::look(std::int64_t turn, std::int64_t now)
{
    if (!isVisible())
        return;
    m_now = now;
    if (turn != m_turn || now - m_readAt >= readEvery) {
        auto workers = WorkerStore(m_host.tasks.database, m_host.tasks.vaultId).list();
        m_turn = turn;
        m_readAt = now;
        const bool sameRows = std::ranges::equal(workers, m_workers, isSame);
        const auto before = chosen();
        m_workers = std::move(workers);
        if (!sameRows) {
            m_list->clear();
            for (const WorkerInfo& worker : m_workers)
                (new QTreeWidgetItem(m_list))->setSelected(std::ranges::any_of(before, [&](const WorkerInfo& old) {
                    return isSame(old, worker);
                }));
        }
    }
    fill();
}

void WorkersPage::fill()
{
    for (std::size_t i = 0; i < m_workers.size(); ++i)
        fillRow(*m_list->topLevelItem(static_cast<int>(i)), m_workers[i]);
    enableActions();
}

void WorkersPage::fillRow(QTreeWidgetItem& row, const WorkerInfo& worker) const
{
    const QString file = worker.run ? shown(zn::pathFileName(worker.run->progressText)) : QString();
    const QString texts[]
        = {worker.id == 0 ? QString() : QString::number(worker.id), shown(worker.userName), shown(worker.process.host),
            QString::number(worker.process.process), stateWord(worker, m_now), momentText(worker.since),
            worker.run ? QStringLiteral("%1 “%2”").arg(worker.run->id).arg(shown(worker.run->taskName)) : QString(),
            file, own("%1 ago").arg(spanText(std::max<std::int64_t>(m_now - worker.heardAt, 0)))};
    int column = 0;
    for (const QString& text : texts)
        row.setText(column++, text);
    row.setToolTip(7, worker.run ? shown(worker.run->progressText) : QString());
}

std::vector<WorkerInfo> WorkersPage::chosen() const
{
    std::vector<WorkerInfo> workers;
    for (std::size_t i = 0; i < m_workers.size(); ++i)
        if (m_list->topLevelItem(static_cast<int>(i))->isSelected())
            workers.push_back(m_workers[i]);
    return workers;
}

void WorkersPage::enableActions()
{
    m_stop->setEnabled(std::ranges::any_of(chosen(), [](const WorkerInfo& worker) { return worker.id != 0; }));
}

void WorkersPage::start()
{
    const WaitCursor waiting;
    m_host.tasks.startWorker();
    changed();
}

void WorkersPage::stop()
{
    QStringList failures;
    for (const WorkerInfo& worker : chosen())
        if (worker.id != 0)
            zn::guarded([&] { stopOne(worker); }, [&] { failures << shown(currentFailure().sentence); });
    changed();
    if (!failures.isEmpty())
        tell(this, failures.join('\n'));
}

void WorkersPage::stopOne(const WorkerInfo& worker)
{
    const bool asks = worker.run && !isGone(worker, m_host.tasks.clock.now());
    if (const auto when = asks ? askWhenToStop(this, worker) : std::optional(StopWhen::AfterRun))
        stopWorker(m_host.tasks, worker.id, *when);
}

} // namespace zn::arkin
