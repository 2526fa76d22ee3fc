#include "arkin/commands/frame/TaskText.h"

#include "arkin/tasks/RunLog.h"

#include "base/Format.h"
#include "base/Paths.h"

#include <iostream>
#include <map>

namespace zn::arkin {

namespace {

struct KindWord {
    zn::TaskKind kind;
    const char* word;
};

constexpr KindWord kindWords[] = {
    {zn::TaskKind::Conversion, "convert"},
    {zn::TaskKind::Printing, "print"},
    {zn::TaskKind::General, "script"},
};

/// The path of a document that a run reported; its number alone if the vault doesn't have it any more.
std::string documentPath(Session& session, const zn::ArkTaskResultDoc& document)
{
    auto& vault = session.vault();
    const auto row = vault.files().row(document.fileId);
    if (!row || row->deleted || document.folderId == 0)
        return "file " + std::to_string(document.fileId) + " (deleted)";
    return session.shown(vault.pathOf({document.fileId, document.folderId}));
}

std::string ownerText(const RunInfo& run)
{
    return run.owner.process == 0
        ? "-"
        : "process " + std::to_string(run.owner.process) + " on " + zn::toUtf8(run.owner.host);
}

} // namespace

zn::TaskKind kindOf(const std::string& word)
{
    for (const auto& row : kindWords)
        if (word == row.word)
            return row.kind;
    return zn::TaskKind::Unknown;
}

std::string kindWord(zn::TaskKind kind)
{
    for (const auto& row : kindWords)
        if (kind == row.kind)
            return row.word;
    return "script"; // what any other number means to the add-in
}

Json toJson(Session& session, const RunInfo& run)
{
    const auto now = session.platform().clock().now();
    auto documents = Json::array();
    RunStore runs(session.store().database(), session.vault().info().id);
    for (const auto& document : runs.documents(run.id))
        documents.push_back({{"path", documentPath(session, document)}, {"fileId", document.fileId},
            {"folderId", document.folderId}, {"version", document.version}});
    auto messages = Json::array();
    for (const auto& message : runs.messages(run.id))
        messages.push_back({{"path", shownProgress(session, message.path)}, {"text", zn::toUtf8(message.sentence)}});
    auto results = Json::array();
    for (const auto& result : runs.results(run.id))
        results.push_back(toJson(session, result));
    const auto log = logPath(session, run);
    return {{"run", run.id}, {"identifier", zn::toUtf8(run.guid)}, {"task", zn::toUtf8(run.taskName)},
        {"user", zn::toUtf8(run.userName)}, {"state", zn::toUtf8(stateText(run, now))},
        {"stateNumber", static_cast<int>(run.state)}, {"workerDied", workerDied(run, now)},
        {"worker", run.owner.process == 0 ? Json(nullptr) : Json(ownerText(run))},
        {"progress",
            {{"position", run.progressPosition}, {"total", run.progressTotal},
                {"text", shownProgress(session, run.progressText)}}},
        {"code", run.resultCode}, {"text", zn::toUtf8(run.resultText)}, {"launched", jsonTime(run.launchedAt)},
        {"launchNote", zn::toUtf8(run.launchNote)}, {"started", jsonTime(run.startedAt)},
        {"ended", jsonTime(run.endedAt)}, {"documents", documents},
        {"outputs", {{"expected", run.outputsExpected}, {"missing", run.outputsMissing}}}, {"messages", messages},
        {"results", results}, {"log", log.empty() ? Json(nullptr) : Json(session.shown(log))}};
}

void printRun(Session& session, const RunInfo& run)
{
    const auto now = session.platform().clock().now();
    const auto line = [](const char* name, const std::string& value) {
        std::cout << name << std::string(12 - std::string_view(name).size(), ' ') << value << "\n";
    };
    line("run", std::to_string(run.id) + " " + zn::toUtf8(run.guid));
    line("task", zn::toUtf8(run.taskName));
    line("user", zn::toUtf8(run.userName));
    line("state", zn::toUtf8(stateText(run, now)));
    line("worker", ownerText(run));
    line("progress",
        std::to_string(run.progressPosition) + "/" + std::to_string(run.progressTotal) + " "
            + shownProgress(session, run.progressText));
    line("launched", shownTime(run.launchedAt));
    if (!run.launchNote.empty())
        line("left out", zn::toUtf8(run.launchNote));
    line("started", shownTime(run.startedAt));
    line("ended", shownTime(run.endedAt));
    if (run.ended()) {
        const auto code = zn::toUtf8(zn::formatText("0x%08X", static_cast<std::uint32_t>(run.resultCode)));
        line("result", code + (run.resultText.empty() ? "" : " " + zn::toUtf8(run.resultText)));
    }
    RunStore runs(session.store().database(), session.vault().info().id);
    for (const auto& document : runs.documents(run.id))
        line("document", documentPath(session, document) + " version " + std::to_string(document.version));
    if (const auto counts = countsText(runs.results(run.id)); !counts.empty())
        line("outputs", counts);
    for (const auto& message : runs.messages(run.id))
        line("message", messageLine(session, message));
    if (const auto log = logPath(session, run); !log.empty())
        line("log", session.shown(log));
}

Json toJson(Session& session, const RunFileResult& result)
{
    return {{"source", shownProgress(session, result.source)}, {"sourceVersion", result.sourceVersion},
        {"part", zn::toUtf8(result.part)},
        {"output", result.output.empty() ? Json(nullptr) : Json(shownProgress(session, result.output))},
        {"outputVersion", result.outputVersion == 0 ? Json(nullptr) : Json(result.outputVersion)},
        {"outcome", zn::toUtf8(outcomeText(result.outcome))}, {"sentence", zn::toUtf8(result.sentence)},
        {"seconds", result.seconds}};
}

std::string countsText(const std::vector<RunFileResult>& results)
{
    std::map<zn::FileOutcome, std::size_t> counts;
    for (const auto& result : results)
        ++counts[result.outcome];
    std::string text;
    for (const auto& [outcome, count] : counts)
        text += (text.empty() ? "" : ", ") + shownCount(static_cast<std::int64_t>(count)) + " "
            + zn::toUtf8(outcomeText(outcome));
    return text;
}

std::string resultLine(Session& session, const RunFileResult& result)
{
    const auto part = result.part.empty() ? "" : " (" + zn::toUtf8(result.part) + ")";
    auto source = session.shown(result.source) + part;
    if (!result.sentence.empty())
        return source + ": " + zn::toUtf8(result.sentence);
    if (result.output.empty())
        return source;
    const auto version = result.outputVersion == 0 ? "" : " version " + std::to_string(result.outputVersion);
    return source + " -> " + shownProgress(session, result.output) + version;
}

std::string messageLine(Session& session, const RunMessage& message)
{
    auto sentence = zn::toUtf8(message.sentence);
    std::erase(sentence, '\r');
    return message.path.empty() ? sentence : session.shown(message.path) + ": " + sentence;
}

std::string endLine(Session& session, const RunInfo& run)
{
    const auto number = std::to_string(run.id);
    auto text = "Run " + number + " of '" + zn::toUtf8(run.taskName)
        + "': " + zn::toUtf8(stateText(run, session.platform().clock().now())) + ".";
    if (!run.resultText.empty())
        text += " " + zn::toUtf8(run.resultText);
    RunStore runs(session.store().database(), session.vault().info().id);
    if (const auto log = logPath(session, run); !log.empty() && session.platform().files().fileExists(log))
        text += " It wrote a log: 'arkin task log " + number + "' prints it.";
    else if (!runs.messages(run.id).empty())
        text += " It has something to say: 'arkin task log " + number + "' prints it.";
    return text;
}

std::string shownProgress(Session& session, const zn::Text& text)
{
    return zn::isAbsolutePath(text) ? session.shown(text) : zn::toUtf8(text);
}

zn::Text logPath(Session& session, const RunInfo& run)
{
    RunStore runs(session.store().database(), session.vault().info().id);
    return runLogPath(runs, run, session.vault().info().root);
}

} // namespace zn::arkin
