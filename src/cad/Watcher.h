#pragma once

#include "base/Text.h"
#include "platform/Clock.h"
#include "platform/Platform.h"

#include <atomic>
#include <functional>
#include <memory>
#include <thread>

namespace zn {

/// What the watcher does with a window, by its title.
enum class WindowAnswer { Nothing, Enter, EscapeIfOwned, Close, TaskScheduler };

/// The answer to a title; exact comparisons, with case, the first rule that fits.
WindowAnswer answerToTitle(TextView title);

/// Answers the CAD application's dialogs while nobody sits at the screen: looks at the top-level windows of one process
/// once a second, for 1800 rounds at most, on a thread of its own. One watcher runs at a time.
class Watcher {
public:
    /// `processId` is read in each round. `lastRoundStopped` is called on the watcher's thread if the stop comes in
    /// the last round.
    Watcher(
        const Platform& platform, const std::atomic<std::int32_t>& processId, std::function<void()> lastRoundStopped);
    ~Watcher();

    /// Stops an older watcher, clears the scheduler flag and starts.
    void start();
    /// Ends the watcher and waits for its thread. No wait of its own: the thread waits on the stop event.
    void stop();

    /// Whether the application's task scheduler dialog has come up since the start: the macro has stopped working.
    bool taskSchedulerDialogSeen() const { return m_taskSchedulerDialogSeen; }

private:
    void watch(WaitEvent& stopped);
    void lookAround();

    const Platform& m_platform;
    const std::atomic<std::int32_t>& m_processId;
    std::function<void()> m_lastRoundStopped;
    std::atomic<bool> m_taskSchedulerDialogSeen = false;
    std::unique_ptr<WaitEvent> m_stopEvent;
    std::thread m_thread;
};

} // namespace zn
