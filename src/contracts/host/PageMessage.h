#pragma once

#include <QCoreApplication>
#include <QEvent>

/// Private messages between a page and the window that holds it, beside the toolkit's own. For window code only.
namespace zn {

/// To the page before its holder leaves it for another page or accepts it. A result other than 0 means: stay.
inline constexpr int pageLeaveMessage = 1125;
/// To the page at any time. The result is the list position of the selected format.
inline constexpr int pageFormatMessage = 1126;
/// From a page to its launch parent, after the format was changed: the page needs another size now.
inline constexpr int pageFormatChangedMessage = 1127;

/// A message on its way; who answers it sets `result` and accepts the event, as any handler of an event.
class PageMessage : public QEvent {
public:
    explicit PageMessage(int message)
        : QEvent(typeOf(message))
    {
    }

    static QEvent::Type typeOf(int message) { return static_cast<QEvent::Type>(QEvent::User + message); }

    int result = 0;
};

/// Sends the message at once and returns the result; 0 from a receiver that doesn't know it, or from none.
inline int sendPageMessage(QObject* receiver, int message)
{
    if (!receiver)
        return 0;
    PageMessage event(message);
    QCoreApplication::sendEvent(receiver, &event);
    return event.result;
}

} // namespace zn
