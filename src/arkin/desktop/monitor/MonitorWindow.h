#pragma once

#include "arkin/desktop/pictures/DailyHost.h"

#include <QMainWindow>

namespace zn::arkin {

class RunsView;

/// The runs of a vault in a window of their own.
class MonitorWindow : public QMainWindow {
public:
    /// `host` outlives the window.
    explicit MonitorWindow(const DailyHost& host);
    ~MonitorWindow() override;

    /// Shows the run at once.
    void choose(std::int32_t runId);

    std::function<void()> whenClosed;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    RunsView* m_runs;
};

} // namespace zn::arkin
