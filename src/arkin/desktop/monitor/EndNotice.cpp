#include "arkin/desktop/monitor/EndNotice.h"

#include "arkin/desktop/frame/Texts.h"
#include "arkin/desktop/monitor/RunTexts.h"

#include <QApplication>
#include <QStyle>
#include <QSystemTrayIcon>
#include <QWidget>

namespace zn::arkin {

EndNotice::EndNotice(QWidget* window)
    : QObject(window)
    , m_window(window)
{
    if (!QSystemTrayIcon::isSystemTrayAvailable())
        return;
    m_icon = new QSystemTrayIcon(QApplication::style()->standardIcon(QStyle::SP_ComputerIcon), this);
    m_icon->setToolTip(window->windowTitle());
    m_icon->show();
    const auto raise = [window] {
        window->showNormal();
        window->raise();
        window->activateWindow();
    };
    connect(m_icon, &QSystemTrayIcon::messageClicked, window, raise);
    connect(m_icon, &QSystemTrayIcon::activated, window, raise);
}

void EndNotice::tell(const RunInfo& run)
{
    QApplication::alert(m_window);
    if (m_icon)
        m_icon->showMessage(own("Run %1 of “%2”").arg(run.id).arg(shown(run.taskName)), runStateText(run, run.endedAt),
            run.wentWell() ? QSystemTrayIcon::Information : QSystemTrayIcon::Warning);
}

} // namespace zn::arkin
