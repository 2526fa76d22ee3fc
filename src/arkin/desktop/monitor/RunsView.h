#pragma once

#include "arkin/desktop/pictures/DailyHost.h"

#include <QWidget>

class QLabel;
class QTabWidget;
class QTimer;

namespace zn::arkin {

class RunsPage;
class SchedulesPage;
class WorkersPage;

/// What goes on with the tasks of a vault: runs, workers and schedules. It looks once a second whether the database has
/// changed, and reads only then.
class RunsView : public QWidget {
public:
    explicit RunsView(const DailyHost& host, QWidget* parent = nullptr);

    /// Makes the run the chosen one, whatever is filtered.
    void choose(std::int32_t runId);
    /// Looks now.
    void look();

    /// The local path of an output that the user wants to see.
    std::function<void(const zn::Text& path)> open;
    /// A run that this user launched has ended while it was watched.
    std::function<void(const RunInfo& run)> ended;

private:
    const DailyHost& m_host;
    QLabel* m_trouble;
    QTabWidget* m_tabs;
    RunsPage* m_runs;
    WorkersPage* m_workers;
    SchedulesPage* m_schedules;
    QTimer* m_timer;
};

} // namespace zn::arkin
