#pragma once

#include "arkin/tasks/RunStore.h"

#include <QObject>

class QSystemTrayIcon;
class QWidget;

namespace zn::arkin {

/// Tells that a run has ended, by the desktop's notices where it has a tray, else by letting the window ask for
/// attention. A click on the notice brings the window to the front.
class EndNotice : public QObject {
public:
    explicit EndNotice(QWidget* window);

    void tell(const RunInfo& run);

private:
    QWidget* m_window;
    QSystemTrayIcon* m_icon = nullptr; ///< null where there is no tray
};

} // namespace zn::arkin
