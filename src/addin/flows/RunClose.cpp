#include "addin/flows/RunClose.h"

#include "addin/installation/ProductTexts.h"

namespace zn {

namespace {

constexpr NumberedText noFileSelected{143, u"No file selected."};
constexpr NumberedText noFileConverted{144, u"No file converted."};
constexpr NumberedText finishedWithErrors{165, u"Task finished with errors. Please see the log-file for more details."};
constexpr const char16_t* addingFiles = u"Adding files to vault...";

struct Verdict {
    TaskRunState state;
    Text text;
};

Text textOf(TaskContext& context, const NumberedText& text)
{
    return productText(context.platform.registry, context.platform.files, text);
}

Verdict judge(TaskContext& context, Status code, bool nothingSelected)
{
    if (code != S_OK) {
        Text text = nothingSelected ? textOf(context, noFileSelected) : context.session.GetLastError();
        replaceAll(text, u" 0", u""); // readers of the report rely on this clean-up
        return {TaskRunState::FinishedWithErrors, std::move(text)};
    }
    // In kinds 1 and 2 the records are copies of the input files by now, so this comes up for kind 3 only.
    if (context.fileLogic.HasHiddenFile())
        return {TaskRunState::FinishedWithErrors, textOf(context, finishedWithErrors)};
    return {TaskRunState::Finished, {}};
}

/// To the log, and file by file with the run, where it is known which files a failed step concerns.
void tellHostError(TaskContext& context, RunMessages& messages, Status code, const Text& text, const Text& path)
{
    const Text why = context.macroBuilder.LogHostError(code, text);
    std::vector<FileFailure> failures = context.fileLogic.TakeFailures();
    if (failures.empty())
        failures.push_back({path, why.empty() ? text : why});
    for (const FileFailure& failure : failures)
        messages.tellWithRun(failure.path, failure.sentence);
}

} // namespace

void closeRun(TaskContext& context, const std::shared_ptr<IArkVault>& vault,
    const std::shared_ptr<IArkTaskInstance>& instance, RunResult& result, std::int32_t total,
    const SelectionRecords& items, const Text& logPath, RunMessages& messages)
{
    FileLogic& fileLogic = context.fileLogic;
    if (total > 1 && context.kind != TaskKind::Printing)
        instance->SetProgressPos(total - 1, addingFiles);

    RunResult ignored; // its failures stand in the task's log
    const HostErrorLog log
        = [&](Status code, const Text& text, const Text& path) { tellHostError(context, messages, code, text, path); };
    const auto step = [&](const auto& work) {
        result.step([&] {
            try {
                work();
            } catch (const StatusError&) {
                messages.tellWithRun({}, messages.currentSentence());
                throw;
            }
        });
    };
    fileLogic.NoteUnkeptSaves();
    for (const FileFailure& failure : fileLogic.TakeFailures())
        messages.tellWithRun(failure.path, failure.sentence);
    ignored.step([&] { fileLogic.AddResultsToVault(*vault, instance, log); });
    messages.tellOutputs(fileLogic.CountOutputs(items));
    messages.tellResults(fileLogic.ListResults(items));
    if (context.kind == TaskKind::Conversion)
        step([&] { fileLogic.WriteList(instance, context.kind, nullptr); });
    step([&] { fileLogic.CommitLogFile(logPath); });
    if (context.kind == TaskKind::Conversion || context.kind == TaskKind::Printing)
        step([&] { fileLogic.WriteList(instance, context.kind, &items); });
    step([&] { checkStatus(instance->SetProgressPos(total, {})); });
}

Status reportRun(TaskContext& context, IArkTaskInstance& instance, Status code, const SelectionRecords& items)
{
    TaskRunState state{};
    checkStatus(instance.GetStatus(state));
    if (state == TaskRunState::CancelRequested)
        return S_FALSE;

    Verdict verdict = judge(context, code, items.empty());
    const bool withErrors = verdict.state == TaskRunState::FinishedWithErrors;
    std::vector<ArkTaskResultDoc> documents = context.fileLogic.CollectResultFiles(withErrors);
    if (!withErrors && context.kind == TaskKind::Conversion && context.fileLogic.CountResultFiles(false, true) == 0)
        verdict = {TaskRunState::FinishedWithErrors, textOf(context, noFileConverted)};
    for (const auto& item : items) {
        // Only -1 stands for the latest here; a version of 0 is reported as 0.
        const std::int32_t version = item->version == -1 ? item->latestVersion : item->version;
        documents.push_back({item->docId, 1, item->projId, version});
    }
    checkStatus(instance.SetStatus(verdict.state, code, verdict.text, documents));
    return code;
}

} // namespace zn
