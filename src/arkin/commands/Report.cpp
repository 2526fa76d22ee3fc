#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/OutputPicture.h"
#include "arkin/commands/frame/ReportPage.h"
#include "arkin/commands/frame/SinceTime.h"
#include "arkin/commands/frame/TaskText.h"

#include <algorithm>
#include <fstream>
#include <iostream>

namespace zn::arkin {

namespace {

bool isLacking(const RunFileResult& result)
{
    return result.outcome == zn::FileOutcome::Failed || result.outcome == zn::FileOutcome::Skipped;
}

class Report : public Command {
public:
    void declare(Arguments& take) override
    {
        take.option("--since", m_since, "From when on: today, yesterday, 12h, 7d or a date (default: yesterday)");
        take.option("--task", m_task, "Only the runs of this task");
        take.flag("--failed", m_failed, "Of the files only those that failed or were skipped");
        take.option("--html", m_page, "Write a page for a browser to this file");
    }

    int run(Session& session) override
    {
        RunStore runs(session.store().database(), session.vault().info().id);
        const auto now = session.platform().clock().now();
        const auto since = sinceTime(m_since, now);
        auto json = Json::array();
        OutputPictures pictures(session);
        std::vector<ReportedRun> reported;
        std::vector<RunFileResult> all;
        std::vector<RunInfo> list = runs.list(zn::toText(m_task));
        std::reverse(list.begin(), list.end());
        for (const RunInfo& run : list) {
            if (run.ended() ? run.endedAt < since : run.launchedAt < since && !run.taken())
                continue;
            if (session.json())
                json.push_back(toJson(session, run));
            const auto results = runs.results(run.id);
            all.insert(all.end(), results.begin(), results.end());
            reported.push_back(reportedRun(session, runs, run, results, pictures));
        }
        const auto heading = headingOf(since, reported.size(), all);
        if (!m_page.empty())
            writePage(session, heading, reported);
        if (session.json())
            printJson({{"since", jsonTime(since)}, {"runs", json}});
        else if (m_page.empty())
            print(heading, reported);
        return commandDone;
    }

private:
    ReportedRun reportedRun(Session& session, RunStore& runs, const RunInfo& run,
        const std::vector<RunFileResult>& results, OutputPictures& pictures) const
    {
        const auto now = session.platform().clock().now();
        ReportedRun reported;
        reported.title = "Run " + std::to_string(run.id) + " of '" + zn::toUtf8(run.taskName) + "'";
        reported.state = zn::toUtf8(stateText(run, now));
        reported.wentWell = run.wentWell();
        reported.details = zn::toUtf8(run.userName) + ", " + shownTime(run.startedAt) + " to " + shownTime(run.endedAt)
            + (run.resultText.empty() ? "" : ". " + zn::toUtf8(run.resultText));
        for (const RunFileResult& result : results) {
            if (m_failed && !isLacking(result))
                continue;
            reported.files.push_back(reportedFile(session, result));
            if (!m_page.empty())
                reported.files.back().picture = pictures.of(run, result);
        }
        if (!run.launchNote.empty())
            reported.messages.push_back(zn::toUtf8(run.launchNote));
        // A file that has a sentence needs no other one: the last is the reason, and the log has all.
        for (const RunMessage& message : runs.messages(run.id)) {
            const bool isSaid = std::any_of(results.begin(), results.end(), [&](const RunFileResult& result) {
                return !result.sentence.empty() && (result.source == message.path || result.output == message.path);
            });
            if (!isSaid)
                reported.messages.push_back(messageLine(session, message));
        }
        return reported;
    }

    static ReportedFile reportedFile(Session& session, const RunFileResult& result)
    {
        ReportedFile file;
        file.outcome = zn::toUtf8(outcomeText(result.outcome));
        file.source = session.shown(result.source) + (result.part.empty() ? "" : " (" + zn::toUtf8(result.part) + ")");
        if (!result.output.empty())
            file.output = shownProgress(session, result.output)
                + (result.outputVersion == 0 ? "" : " version " + std::to_string(result.outputVersion));
        file.sentence = zn::toUtf8(result.sentence);
        file.seconds = result.seconds;
        return file;
    }

    static std::string headingOf(std::int64_t since, std::size_t runs, const std::vector<RunFileResult>& results)
    {
        const auto counts = countsText(results);
        return "Since " + shownTime(since) + ": " + shownCount(static_cast<std::int64_t>(runs))
            + (runs == 1 ? " run" : " runs") + (counts.empty() ? "" : ", " + counts);
    }

    static void print(const std::string& heading, const std::vector<ReportedRun>& runs)
    {
        std::cout << heading << ".\n";
        for (const ReportedRun& run : runs) {
            std::cout << "\n" << run.title << ": " << run.state << ".\n  " << run.details << "\n";
            for (const std::string& message : run.messages)
                std::cout << "  " << message << "\n";
            for (const ReportedFile& file : run.files) {
                const std::string& what = file.sentence.empty() ? file.output : file.sentence;
                std::cout << "  " << file.outcome << "  " << file.source << (what.empty() ? "" : ": ") << what << "\n";
            }
        }
    }

    void writePage(Session& session, const std::string& heading, const std::vector<ReportedRun>& runs) const
    {
        std::ofstream file(m_page, std::ios::binary);
        file << reportPage(heading, runs);
        file.close();
        if (!file)
            throw zn::StatusError(zn::E_FAIL, "The page " + m_page + " can't be written. Choose another file.");
        if (!session.json())
            std::cout << m_page << "\n";
    }

    std::string m_since = "yesterday";
    std::string m_task;
    std::string m_page;
    bool m_failed = false;
};

} // namespace

MadeCommand reportCommand() { return std::make_unique<Report>(); }

} // namespace zn::arkin
