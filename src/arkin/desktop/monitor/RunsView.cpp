#include "arkin/desktop/monitor/RunsView.h"

#include "arkin/desktop/frame/Texts.h"
#include "arkin/desktop/monitor/RunsPage.h"
#include "arkin/desktop/monitor/SchedulesPage.h"
#include "arkin/desktop/monitor/WorkersPage.h"
#include "arkin/store/Codes.h"

#include <QLabel>
#include <QTabWidget>
#include <QTimer>
#include <QVBoxLayout>

namespace zn::arkin {

namespace {

constexpr int lookEvery = 1000; // milliseconds

} // namespace

RunsView::RunsView(const DailyHost& host, QWidget* parent)
    : QWidget(parent)
    , m_host(host)
    , m_trouble(new QLabel)
    , m_tabs(new QTabWidget)
    , m_runs(new RunsPage(host))
    , m_workers(new WorkersPage(host))
    , m_schedules(new SchedulesPage(host))
    , m_timer(new QTimer(this))
{
    setObjectName("runs");
    m_trouble->setObjectName("trouble");
    m_trouble->setTextFormat(Qt::PlainText);
    m_trouble->setWordWrap(true);
    m_trouble->hide();
    m_tabs->setObjectName("monitorTabs");
    m_tabs->setDocumentMode(true);
    m_tabs->addTab(m_runs, own("Runs"));
    m_tabs->addTab(m_workers, own("Workers"));
    m_tabs->addTab(m_schedules, own("Schedules"));
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_trouble);
    layout->addWidget(m_tabs, 1);

    m_runs->open = [this](const zn::Text& path) {
        if (open)
            open(path);
    };
    m_runs->ended = [this](const RunInfo& run) {
        if (ended)
            ended(run);
    };
    m_runs->changed = m_workers->changed = m_schedules->changed = [this] { look(); };
    m_workers->runWanted = m_schedules->runWanted = [this](std::int32_t runId) { choose(runId); };
    connect(m_timer, &QTimer::timeout, this, [this] { look(); });
    look();
    m_timer->start(lookEvery);
}

void RunsView::choose(std::int32_t runId)
{
    look();
    m_tabs->setCurrentWidget(m_runs);
    m_runs->choose(runId);
}

void RunsView::look()
{
    // Nobody sits in front of every failure that passes by itself: it stands in the window until the next look.
    zn::guarded(
        [&] {
            const auto now = m_host.tasks.clock.now();
            const auto turn = m_host.tasks.database.turn();
            m_runs->look(turn, now);
            m_workers->look(turn, now);
            m_schedules->look(turn);
            m_trouble->hide();
        },
        [&] {
            m_trouble->setText(shown(currentFailure().sentence));
            m_trouble->show();
        });
}

} // namespace zn::arkin
