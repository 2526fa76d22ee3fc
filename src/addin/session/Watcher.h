#pragma once

#include "platform/Clock.h"
#include "platform/Platform.h"
#include "platform/TopWindows.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <thread>

namespace zn {

/// What is done to a window of the CAD process.
enum class DialogAnswer {
    None,
    Enter,
    EscapeIfOwnedByApplication,
    Close,
    EnterAsSchedulerDialog,
};

/// The answer to a dialog by its title, compared exactly, with case.
DialogAnswer answerTo(TextView title);

/// Answers the dialogs of the CAD application while nobody sits at the screen: once a second, for about half an hour, a
/// thread of its own looks at the windows of the watched process. After that time it ends without a word, and a
/// macro that still runs goes on unwatched.
///
/// `start` and `stop` belong to one thread.
class Watcher {
public:
    /// `closeSession` is called on the watcher's thread if the stop comes in the last round.
    Watcher(const Platform& platform, std::function<void()> closeSession);
    Watcher(const Watcher&) = delete;
    Watcher& operator=(const Watcher&) = delete;
    ~Watcher();

    /// Forgets a seen scheduler dialog, stops an older watcher, and starts to watch.
    void start();
    /// Ends the watch at once and waits for the thread. Nothing happens if none runs.
    void stop();

    /// Windows of this process are looked after; 0 is none. May be set while a watch runs.
    void setProcessId(std::int32_t processId) { m_processId = processId; }

    /// Whether the application's scheduler dialog came up since the last start: its macro has stopped working. Exact
    /// once the watcher has been stopped.
    bool taskSchedulerDialogSeen() const { return m_taskSchedulerDialogSeen; }

private:
    void watch(WaitEvent& stop);
    void answerDialogs();
    void answer(WindowHandle window, TextView title);

    const Platform& m_platform;
    std::function<void()> m_closeSession;
    std::atomic<std::int32_t> m_processId = 0;
    std::atomic<bool> m_taskSchedulerDialogSeen = false;
    /// Null while no watch runs.
    std::unique_ptr<WaitEvent> m_stop;
    std::thread m_thread;
};

} // namespace zn
