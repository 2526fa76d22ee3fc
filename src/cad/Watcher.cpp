#include "cad/Watcher.h"

#include "platform/TopWindows.h"

namespace zn {

namespace {

constexpr int allRounds = 1800;
constexpr std::chrono::milliseconds roundPause{1000};
constexpr std::size_t titleLimit = 259;
constexpr TextView applicationName = u"Zentrel";

enum class Fit { Begins, Contains, Equals, Ends };

struct TitleRule {
    Fit fit;
    TextView text;
    WindowAnswer answer;
};

/// From the first rule to the first that fits. The break window of the macro editor is reached because the rule before
/// it takes no prefixes.
constexpr TitleRule titleRules[] = {
    {Fit::Begins, applicationName, WindowAnswer::Enter},
    {Fit::Contains, u"Zentrel.exe", WindowAnswer::Enter},
    {Fit::Equals, u"Formtrace", WindowAnswer::EscapeIfOwned},
    {Fit::Equals, u"Microsoft Visual Basic", WindowAnswer::Enter},
    {Fit::Begins, u"Microsoft Visual Basic [break]", WindowAnswer::Close},
    {Fit::Ends, u"Zentrel Task Scheduler", WindowAnswer::TaskScheduler},
};

bool fits(const TitleRule& rule, TextView title)
{
    switch (rule.fit) {
    case Fit::Begins:
        return title.starts_with(rule.text);
    case Fit::Contains:
        return title.find(rule.text) != TextView::npos;
    case Fit::Equals:
        return title == rule.text;
    case Fit::Ends:
        return title.ends_with(rule.text);
    }
    return false;
}

} // namespace

WindowAnswer answerToTitle(TextView title)
{
    for (const TitleRule& rule : titleRules) {
        if (fits(rule, title))
            return rule.answer;
    }
    return WindowAnswer::Nothing;
}

Watcher::Watcher(
    const Platform& platform, const std::atomic<std::int32_t>& processId, std::function<void()> lastRoundStopped)
    : m_platform(platform)
    , m_processId(processId)
    , m_lastRoundStopped(std::move(lastRoundStopped))
{
}

Watcher::~Watcher() { stop(); }

void Watcher::start()
{
    m_taskSchedulerDialogSeen = false;
    stop();
    m_stopEvent = std::make_unique<WaitEvent>();
    m_thread = std::thread([this] { watch(*m_stopEvent); });
}

void Watcher::stop()
{
    if (!m_stopEvent)
        return;
    m_stopEvent->set();
    m_thread.join();
    m_stopEvent.reset();
}

void Watcher::watch(WaitEvent& stopped)
{
    if (stopped.waitFor(std::chrono::milliseconds(0)))
        return;
    int rounds = allRounds;
    while (true) {
        if (rounds == 0) {
            rounds = -1; // out of rounds: ends without touching the application
            break;
        }
        --rounds;
        lookAround();
        if (m_platform.clock.wait(stopped, roundPause))
            break;
    }
    if (rounds == 0)
        m_lastRoundStopped();
}

void Watcher::lookAround()
{
    TopWindows& windows = m_platform.windows;
    for (const WindowHandle window : windows.enumerate()) {
        if (windows.processId(window) != m_processId)
            continue;
        const Text title = windows.title(window, titleLimit);
        if (title.empty())
            continue;
        switch (answerToTitle(title)) {
        case WindowAnswer::Nothing:
            break;
        case WindowAnswer::TaskScheduler:
            m_taskSchedulerDialogSeen = true;
            windows.postKey(window, keyEnter);
            break;
        case WindowAnswer::Enter:
            windows.postKey(window, keyEnter);
            break;
        case WindowAnswer::EscapeIfOwned:
            if (windows.title(windows.parent(window), titleLimit).starts_with(applicationName))
                windows.postKey(window, keyEscape);
            break;
        case WindowAnswer::Close:
            windows.postClose(window);
            break;
        }
    }
}

} // namespace zn
