#include "addin/session/Watcher.h"

namespace zn {

namespace {

constexpr int watchedRounds = 1800;
constexpr std::chrono::milliseconds roundTime{1000};
constexpr std::size_t titleLimit = 259;
constexpr TextView applicationTitle = u"Zentrel";

enum class Fit { Begins, Contains, Is, Ends };

struct DialogRow {
    Fit fit;
    TextView title;
    DialogAnswer answer;
};

// The first row that fits counts. The application's main window fits the first one too, if it has a title.
constexpr DialogRow dialogs[] = {
    {Fit::Begins, applicationTitle, DialogAnswer::Enter},
    {Fit::Contains, u"Zentrel.exe", DialogAnswer::Enter},
    {Fit::Is, u"Formtrace", DialogAnswer::EscapeIfOwnedByApplication},
    {Fit::Is, u"Microsoft Visual Basic", DialogAnswer::Enter},
    {Fit::Begins, u"Microsoft Visual Basic [break]", DialogAnswer::Close},
    {Fit::Ends, u"Zentrel Task Scheduler", DialogAnswer::EnterAsSchedulerDialog},
};

bool fits(const DialogRow& row, TextView title)
{
    switch (row.fit) {
    case Fit::Begins:
        return title.starts_with(row.title);
    case Fit::Contains:
        return title.find(row.title) != TextView::npos;
    case Fit::Is:
        return title == row.title;
    case Fit::Ends:
        return title.ends_with(row.title);
    }
    return false;
}

} // namespace

DialogAnswer answerTo(TextView title)
{
    for (const DialogRow& row : dialogs)
        if (fits(row, title))
            return row.answer;
    return DialogAnswer::None;
}

Watcher::Watcher(const Platform& platform, std::function<void()> closeSession)
    : m_platform(platform)
    , m_closeSession(std::move(closeSession))
{
}

Watcher::~Watcher() { stop(); }

void Watcher::start()
{
    m_taskSchedulerDialogSeen = false;
    stop();
    m_stop = std::make_unique<WaitEvent>();
    m_thread = std::thread([this, &stop = *m_stop] { watch(stop); });
}

void Watcher::stop()
{
    if (!m_stop)
        return;
    m_stop->set();
    m_thread.join();
    m_stop.reset();
}

void Watcher::watch(WaitEvent& stop)
{
    Clock& clock = m_platform.clock;
    if (clock.wait(stop, std::chrono::milliseconds(0)))
        return;
    int rounds = watchedRounds;
    for (;;) {
        if (rounds == 0) {
            rounds = -1;
            break;
        }
        --rounds;
        answerDialogs();
        if (clock.wait(stop, roundTime))
            break;
    }
    // Only a stop in the very last round closes the application by force.
    if (rounds == 0)
        m_closeSession();
}

void Watcher::answerDialogs()
{
    // A window that tells no process must not pass for one of a process that hasn't been started yet.
    const std::int32_t processId = m_processId;
    if (processId == 0)
        return;
    TopWindows& windows = m_platform.windows;
    for (const WindowHandle window : windows.enumerate()) {
        if (windows.processId(window) != processId)
            continue;
        const Text title = windows.title(window, titleLimit);
        if (!title.empty())
            answer(window, title);
    }
}

void Watcher::answer(WindowHandle window, TextView title)
{
    TopWindows& windows = m_platform.windows;
    switch (answerTo(title)) {
    case DialogAnswer::None:
        break;
    case DialogAnswer::EscapeIfOwnedByApplication:
        // The add-on asks the same question for other owners, who wait for a person's answer.
        if (windows.title(windows.parent(window), titleLimit).starts_with(applicationTitle))
            windows.postKey(window, keyEscape);
        break;
    case DialogAnswer::Close:
        windows.postClose(window);
        break;
    case DialogAnswer::EnterAsSchedulerDialog:
        m_taskSchedulerDialogSeen = true;
        [[fallthrough]];
    case DialogAnswer::Enter:
        windows.postKey(window, keyEnter);
        break;
    }
}

} // namespace zn
