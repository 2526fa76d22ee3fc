#pragma once

#include "arkin/desktop/pictures/DailyHost.h"
#include "arkin/tasks/ScheduleStore.h"

#include <QWidget>

class QAction;
class QShowEvent;
class QToolBar;
class QTreeWidget;

namespace zn::arkin {

/// When tasks are launched by themselves, on what, and what came of the last time.
class SchedulesPage : public QWidget {
public:
    explicit SchedulesPage(const DailyHost& host, QWidget* parent = nullptr);

    /// While it is shown, reads the schedules when the database isn't in the turn of the last look.
    void look(std::int64_t turn);

    /// Asks for a look at once.
    std::function<void()> changed;
    /// The user wants to see the last run.
    std::function<void(std::int32_t runId)> runWanted;

protected:
    void showEvent(QShowEvent* event) override;

private:
    void makeActions();
    void fill();
    QString textOf(const Schedule& schedule) const;
    std::vector<Schedule> chosen() const;
    void add();
    void remove();

    const DailyHost& m_host;
    QToolBar* m_bar;
    QTreeWidget* m_list;
    QAction* m_remove = nullptr;
    std::vector<Schedule> m_schedules; ///< in the order of the rows
    std::int64_t m_turn = -1;
};

} // namespace zn::arkin
