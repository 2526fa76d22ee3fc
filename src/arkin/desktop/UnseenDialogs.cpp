#include "arkin/desktop/UnseenDialogs.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QMessageBox>
#include <QTimer>
#include <utility>

namespace zn::arkin {

UnseenDialogs::UnseenDialogs() { qApp->installEventFilter(this); }
UnseenDialogs::~UnseenDialogs() { qApp->removeEventFilter(this); }

std::string UnseenDialogs::take() { return std::exchange(m_said, {}); }

bool UnseenDialogs::eventFilter(QObject* object, QEvent* event)
{
    auto* const dialog = event->type() == QEvent::Show ? qobject_cast<QDialog*>(object) : nullptr;
    if (dialog && dialog->isModal()) {
        const auto* const box = qobject_cast<QMessageBox*>(dialog);
        m_said += (m_said.empty() ? "" : " ") + (box ? box->text() : dialog->windowTitle()).toStdString();
        // Its event loop begins after this event.
        QTimer::singleShot(0, dialog, &QDialog::reject);
    }
    return QObject::eventFilter(object, event);
}

} // namespace zn::arkin
