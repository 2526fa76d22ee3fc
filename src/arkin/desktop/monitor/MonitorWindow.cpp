#include "arkin/desktop/monitor/MonitorWindow.h"

#include "arkin/desktop/frame/Texts.h"
#include "arkin/desktop/monitor/EndNotice.h"
#include "arkin/desktop/monitor/OpenFile.h"
#include "arkin/desktop/monitor/RunsView.h"
#include "arkin/store/Vault.h"

#include <QSettings>

namespace zn::arkin {

MonitorWindow::MonitorWindow(const DailyHost& host)
    : m_runs(new RunsView(host))
{
    setObjectName("monitor");
    setWindowTitle(own("Runs of the vault “%1”").arg(shown(host.tasks.opened->info().name)));
    setCentralWidget(m_runs);
    m_runs->open = [this, &host](const zn::Text& path) { openFile(*host.tasks.opened, path); };
    auto* const notice = new EndNotice(this);
    m_runs->ended = [notice](const RunInfo& run) { notice->tell(run); };
    const QSettings settings(QStringLiteral("arkin"), QStringLiteral("monitor"));
    if (!restoreGeometry(settings.value("geometry").toByteArray()))
        resizeByFont(*this, 130, 40);
}

MonitorWindow::~MonitorWindow()
{
    QSettings(QStringLiteral("arkin"), QStringLiteral("monitor")).setValue("geometry", saveGeometry());
}

void MonitorWindow::choose(std::int32_t runId) { m_runs->choose(runId); }

void MonitorWindow::closeEvent(QCloseEvent* event)
{
    QMainWindow::closeEvent(event);
    if (whenClosed)
        whenClosed();
}

} // namespace zn::arkin
