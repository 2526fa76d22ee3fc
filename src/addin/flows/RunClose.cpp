#include "addin/flows/RunClose.h"

#include <functional>

namespace zn {

namespace {

// Texts of the report; the numbers are theirs in the string file.
constexpr const char16_t* noFileSelected = u"No file selected.";   // 143
constexpr const char16_t* noFileConverted = u"No file converted."; // 144
constexpr const char16_t* finishedWithErrors
    = u"Task finished with errors. Please see the log-file for more details."; // 165
constexpr const char16_t* addingFiles = u"Adding files to vault...";

/// Runs one step of the close-out. All of them run whatever happened before, and the first failure is kept.
void keepFirstFailure(Status& result, const std::function<Status()>& step)
{
    Status status = S_OK;
    try {
        status = step();
    } catch (...) {
        status = currentExceptionStatus();
    }
    if (failed(status) && !failed(result))
        result = status;
}

/// A failure that no step has written to the log is written here, so that none is silent.
Status addResults(TaskContext& context, IArkVault& vault, const ObjectRef& instance, const HostErrorLog& log)
{
    try {
        return context.fileLogic.AddResultsToVault(vault, instance, log);
    } catch (...) {
        const Status status = currentExceptionStatus();
        log(status, u"Adding files to the vault.");
        return status;
    }
}

struct Verdict {
    TaskRunState state;
    Text text;
};

Verdict judge(TaskContext& context, Status code, bool nothingSelected)
{
    if (code != S_OK) {
        Text text = nothingSelected ? noFileSelected : context.session.GetLastError();
        replaceAll(text, u" 0", u""); // readers of the report rely on this clean-up
        return {TaskRunState::FinishedWithErrors, std::move(text)};
    }
    // In kinds 1 and 2 the records are copies of the input files by now, so this comes up for kind 3 only.
    if (context.fileLogic.HasHiddenFile())
        return {TaskRunState::FinishedWithErrors, finishedWithErrors};
    return {TaskRunState::Finished, {}};
}

} // namespace

Status closeRun(TaskContext& context, const std::shared_ptr<IArkVault>& vault,
    const std::shared_ptr<IArkTaskInstance>& instance, Status result, std::int32_t total, const SelectionRecords& items,
    const Text& logPath)
{
    FileLogic& fileLogic = context.fileLogic;
    if (total > 1 && context.kind != TaskKind::Printing)
        instance->SetProgressPos(total - 1, addingFiles);

    Status ignored = S_OK; // its failures stand in the task's log
    const HostErrorLog log = [&](Status code, const Text& text) { context.macroBuilder.LogHostError(code, text); };
    keepFirstFailure(ignored, [&] { return addResults(context, *vault, instance, log); });
    if (context.kind == TaskKind::Conversion)
        keepFirstFailure(result, [&] { return fileLogic.WriteList(instance, context.kind, nullptr); });
    keepFirstFailure(result, [&] { return fileLogic.CommitLogFile(logPath); });
    if (context.kind == TaskKind::Conversion || context.kind == TaskKind::Printing)
        keepFirstFailure(result, [&] { return fileLogic.WriteList(instance, context.kind, &items); });
    keepFirstFailure(result, [&] { return instance->SetProgressPos(total, {}); });
    return result;
}

Status reportRun(TaskContext& context, IArkTaskInstance& instance, Status code, const SelectionRecords& items)
{
    TaskRunState state{};
    if (const Status status = instance.GetStatus(state); failed(status))
        return status;
    if (state == TaskRunState::CancelRequested)
        return S_FALSE;

    Verdict verdict = judge(context, code, items.empty());
    std::vector<ArkTaskResultDoc> documents;
    const bool withErrors = verdict.state == TaskRunState::FinishedWithErrors;
    if (const Status status = context.fileLogic.CollectResultFiles(documents, withErrors); failed(status))
        return status;
    if (!withErrors && context.kind == TaskKind::Conversion && context.fileLogic.CountResultFiles(false, true) == 0)
        verdict = {TaskRunState::FinishedWithErrors, noFileConverted};
    for (const auto& item : items) {
        // Only -1 stands for the latest here; a version of 0 is reported as 0.
        const std::int32_t version = item->version == -1 ? item->latestVersion : item->version;
        documents.push_back({item->docId, 1, item->projId, version});
    }
    const Status status = instance.SetStatus(verdict.state, code, verdict.text, documents);
    return failed(status) ? status : code;
}

} // namespace zn
