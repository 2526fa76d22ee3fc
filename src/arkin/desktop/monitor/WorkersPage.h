#pragma once

#include "arkin/desktop/pictures/DailyHost.h"
#include "arkin/tasks/WorkerStore.h"

#include <QWidget>

class QAction;
class QShowEvent;
class QToolBar;
class QTreeWidget;
class QTreeWidgetItem;

namespace zn::arkin {

/// Who works on the vault's queue, where and on what, and who waits. Starts workers on this machine, and stops them.
class WorkersPage : public QWidget {
public:
    explicit WorkersPage(const DailyHost& host, QWidget* parent = nullptr);

    /// While it is shown, reads the workers when the database isn't in the turn of the last look, and every few seconds
    /// what they have given as signs of life, for which there are no turns.
    void look(std::int64_t turn, std::int64_t now);

    /// Asks for a look at once.
    std::function<void()> changed;
    /// The user wants to see what a worker does.
    std::function<void(std::int32_t runId)> runWanted;

protected:
    void showEvent(QShowEvent* event) override;

private:
    void makeActions();
    void fill();
    void fillRow(QTreeWidgetItem& row, const WorkerInfo& worker) const;
    void enableActions();
    std::vector<WorkerInfo> chosen() const;
    void start();
    void stop();
    void stopOne(const WorkerInfo& worker);

    const DailyHost& m_host;
    QToolBar* m_bar;
    QTreeWidget* m_list;
    QAction* m_start = nullptr;
    QAction* m_stop = nullptr;
    std::vector<WorkerInfo> m_workers; ///< in the order of the rows
    std::int64_t m_turn = -1;
    std::int64_t m_readAt = 0;
    std::int64_t m_now = 0;
};

} // namespace zn::arkin
