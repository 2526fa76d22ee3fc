#include "addin/pages/script/MacroChecker.h"

#include <exception>
#include <memory>

namespace zn {

namespace {

constexpr int delayMilliseconds = 400; ///< longer than the pause between two keys

/// None if the check itself failed.
std::shared_ptr<const std::vector<TemplateProblem>> problemsOf(const Text& source)
{
    try {
        return std::make_shared<const std::vector<TemplateProblem>>(checkTemplate(source));
    } catch (const std::exception&) {
        return nullptr;
    }
}

} // namespace

MacroChecker::MacroChecker(Source source, Report report)
    : m_source(std::move(source))
    , m_report(std::move(report))
{
    m_thread.setMaxThreadCount(1);
    m_timer.setSingleShot(true);
    m_timer.setInterval(delayMilliseconds);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] {
        try {
            start();
        } catch (const std::exception&) {
            m_report(nullptr);
        }
    });
}

MacroChecker::~MacroChecker() { m_thread.waitForDone(); }

void MacroChecker::sourceChanged()
{
    ++m_revision;
    m_timer.start();
}

void MacroChecker::start()
{
    m_thread.clear();
    m_thread.start([this, revision = m_revision, source = m_source()] {
        auto problems = problemsOf(source);
        // Delivered by the timer's thread, and dropped if the timer has gone by then.
        QMetaObject::invokeMethod(
            &m_timer, [this, revision, problems] { finish(revision, problems.get()); }, Qt::QueuedConnection);
    });
}

void MacroChecker::finish(int revision, const std::vector<TemplateProblem>* problems)
{
    if (revision == m_revision)
        m_report(problems);
}

} // namespace zn
