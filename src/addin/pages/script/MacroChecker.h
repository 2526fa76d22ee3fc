#pragma once

#include "addin/pages/script/TemplateCheck.h"

#include <functional>
#include <QThreadPool>
#include <QTimer>

namespace zn {

/// Checks a macro template a moment after its last change, on a thread of its own.
/// Lives on the windows' thread, on which it also reports.
class MacroChecker {
public:
    using Source = std::function<Text()>;
    /// Null in place of a list: the check itself failed, for want of memory for instance.
    using Report = std::function<void(const std::vector<TemplateProblem>*)>;

    MacroChecker(Source source, Report report);
    /// Waits for a check that is under way.
    ~MacroChecker();

    /// The source has changed: checks it as soon as it has been left alone for a moment.
    void sourceChanged();

private:
    void start();
    void finish(int revision, const std::vector<TemplateProblem>* problems);

    Source m_source;
    Report m_report;
    QTimer m_timer;
    QThreadPool m_thread;
    int m_revision = 0; ///< of the source; a report on an older one is dropped
};

} // namespace zn
