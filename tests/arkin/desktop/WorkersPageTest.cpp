#include "arkin/desktop/monitor/RunsView.h"
#include "arkin/tasks/RunClaim.h"
#include "arkin/tasks/Worker.h"
#include "arkin/tasks/WorkerStore.h"
#include "platform/linux/SystemClock.h"
#include "platform/Sqlite.h"
#include "tests/arkin/desktop/DesktopFixture.h"

#include <csignal>
#include <QAction>
#include <QTabWidget>
#include <QTreeWidget>
#include <sys/wait.h>
#include <unistd.h>

namespace zn::arkin::test {

namespace {

/// "waiting|" or "at work|1 “Nightly”", a line each.
QString shownWorkers(const QTreeWidget& list)
{
    QStringList lines;
    for (int row = 0; row < list.topLevelItemCount(); ++row)
        lines << list.topLevelItem(row)->text(4) + '|' + list.topLevelItem(row)->text(6);
    return lines.join('\n');
}

/// A process that does nothing until it is ended.
class Idler {
public:
    Idler()
        : m_process(fork())
    {
        while (m_process == 0)
            pause();
    }
    ~Idler()
    {
        kill(m_process, SIGKILL);
        waitpid(m_process, nullptr, 0);
    }
    const ProcessMark& mark() const { return m_mark; }

private:
    pid_t m_process;
    ProcessMark m_mark = markOf(m_process);
};

} // namespace

class WorkersPageTest : public DesktopFixture {
protected:
    WorkersPageTest()
    {
        daily.tasks.startWorker = [this] { worker = std::thread([this] { work(); }); };
    }

public:
    ~WorkersPageTest() override
    {
        interrupted = true;
        if (worker.joinable())
            worker.join();
    }
    /// As a worker's process does.
    void work()
    {
        Database database(vault.store.database().connection());
        const TaskHost own{database, host.vaultId, object, registry, files, clock, u"ben"};
        const Worker::Listener quiet{
            [](const RunInfo&) {}, {}, [](const RunInfo&) {}, [](const RunInfo&, const auto&) {}};
        Worker(own, quiet, interrupted).work(false);
    }
    /// Chooses the row and presses Stop.
    static void stop(QWidget& view, int row)
    {
        auto& list = *find<QTreeWidget>(view, "workers");
        list.setCurrentItem(list.topLevelItem(row));
        find<QAction>(view, "stopWorker")->trigger();
    }

    zn::SystemClock clock;
    std::atomic<bool> interrupted = false;
    std::thread worker;
    DailyHost daily{
        {vault.store.database(), host.vaultId, object, registry, files, clock, u"anna", &vault.vault}, {}, {}, {}};
};

TEST_F(WorkersPageTest, OneIsStartedSeenToWaitAndStopped)
{
    RunsView view(daily);
    view.show();
    const auto& list = *find<QTreeWidget>(view, "workers");
    find<QTabWidget>(view, "monitorTabs")->setCurrentIndex(1);
    EXPECT_EQ(shownWorkers(list), "");
    EXPECT_FALSE(find<QAction>(view, "stopWorker")->isEnabled());
    find<QAction>(view, "startWorker")->trigger();
    EXPECT_TRUE(QTest::qWaitFor([&] { return shownWorkers(list) == "waiting|"; }));
    EXPECT_EQ(list.topLevelItem(0)->text(1), "ben");
    stop(view, 0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return shownWorkers(list).isEmpty(); }));
    worker.join();
}

TEST_F(WorkersPageTest, OneAtWorkIsStoppedWhenThePersonSays)
{
    const Idler process;
    const ProcessMark elsewhere{u"elsewhere", 5, 5};
    const auto task = define();
    const auto now = clock.now();
    RunStore runs(vault.store.database(), host.vaultId);
    WorkerStore workers(vault.store.database(), host.vaultId);
    for (const ProcessMark& mark : {process.mark(), elsewhere}) {
        runs.enqueue(task, {newGuid(), u"anna", {}, {}}, now);
        workers.enter(u"ben", mark, now);
        RunClaim::takeNext(runs, mark, now)->writeProgress(2, 1, u"Z:\\v\\arm.step");
    }
    RunsView view(daily);
    view.show();
    find<QTabWidget>(view, "monitorTabs")->setCurrentIndex(1);
    const auto& list = *find<QTreeWidget>(view, "workers");
    EXPECT_EQ(shownWorkers(list), "at work|1 “Nightly”\nat work|2 “Nightly”");
    EXPECT_EQ(list.topLevelItem(1)->text(7), "arm.step");

    const auto press = [](const QString& text) {
        return [text](QWidget& box) {
            for (auto* button : static_cast<QMessageBox&>(box).buttons())
                if (button->text() == text)
                    return button->click();
            FAIL() << text.toStdString();
        };
    };
    const Answers answers(
        {[](QWidget& box) { static_cast<QMessageBox&>(box).reject(); }, press("After &Run"), press("At &Once"),
            [&](QWidget& box) {
                for (const auto* button : static_cast<QMessageBox&>(box).buttons())
                    EXPECT_NE(button->text(), "At &Once") << "on another machine";
                press("After &File")(box);
            }});
    stop(view, 0);
    EXPECT_EQ(shownWorkers(list), "at work|1 “Nightly”\nat work|2 “Nightly”");
    stop(view, 0);
    EXPECT_EQ(shownWorkers(list), "stops after its run|1 “Nightly”\nat work|2 “Nightly”");
    stop(view, 0);
    EXPECT_EQ(shownWorkers(list), "at work|2 “Nightly”\ngone|1 “Nightly”");
    EXPECT_FALSE(mayBeAlive(process.mark()));
    EXPECT_EQ(runs.get(2).state, TaskRunState::Running);
    stop(view, 0);
    EXPECT_EQ(runs.get(2).state, TaskRunState::CancelRequested);
    find<QTreeWidget>(view, "workers")->itemActivated(list.topLevelItem(1), 0);
    EXPECT_EQ(find<QTabWidget>(view, "monitorTabs")->currentIndex(), 0);
}

} // namespace zn::arkin::test
