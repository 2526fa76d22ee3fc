#include "arkin/desktop/PageArea.h"

#include "arkin/desktop/frame/Texts.h"
#include "base/Status.h"
#include "contracts/host/PageMessage.h"

#include <QEvent>
#include <QScrollBar>

namespace zn::arkin {

PageArea::PageArea(const zn::Text& title, std::int32_t window, QWidget* parent)
    : QScrollArea(parent)
    , m_title(title)
    , m_page(zn::windowOf(window))
{
    if (window == 0 || !m_page)
        throw zn::StatusError(
            zn::E_UNEXPECTED, "The add-in's page '" + zn::toUtf8(title) + "' has no window that could be shown.");
    setFrameShape(NoFrame);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);
    setAccessibleName(shown(title));
    setWidget(m_page);
    m_page->show();
    m_page->installEventFilter(this);
}

bool PageArea::mayLeave() const { return zn::sendPageMessage(m_page, zn::pageLeaveMessage) == 0; }

void PageArea::takeFocus()
{
    if (!m_page)
        return;
    if (QWidget* last = m_page->focusWidget(); last && last != m_page)
        last->setFocus(Qt::OtherFocusReason);
    else
        m_page->setFocus(Qt::OtherFocusReason);
}

QSize PageArea::pageSize() const
{
    return m_page ? m_page->sizeHint().expandedTo(m_page->minimumSizeHint()).expandedTo(m_page->minimumSize())
                  : QSize(0, 0);
}

QSize PageArea::sizeHint() const { return pageSize(); }

QSize PageArea::minimumSizeHint() const
{
    // Narrower than its controls a page can't be read; lower it can be scrolled.
    const int lines = 8 * fontMetrics().lineSpacing();
    const QSize least = m_page ? m_page->minimumSizeHint() : QSize(0, 0);
    return {least.width() + verticalScrollBar()->sizeHint().width(), std::min(least.height(), lines)};
}

bool PageArea::eventFilter(QObject* object, QEvent* event)
{
    if (object == m_page && event->type() == QEvent::LayoutRequest) {
        updateGeometry();
        if (m_resized)
            m_resized();
    }
    return QScrollArea::eventFilter(object, event);
}

bool PageArea::viewportEvent(QEvent* event)
{
    // The page sees the viewport as its parent, whatever window it was made for.
    if (event->type() == zn::PageMessage::typeOf(zn::pageFormatChangedMessage)) {
        updateGeometry();
        if (m_resized)
            m_resized();
        return true;
    }
    return QScrollArea::viewportEvent(event);
}

} // namespace zn::arkin
