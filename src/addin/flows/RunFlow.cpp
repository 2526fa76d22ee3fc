#include "addin/flows/RunFlow.h"

#include "addin/flows/RunClose.h"
#include "addin/flows/RunState.h"
#include "addin/flows/ThemeCheck.h"
#include "addin/macro/DelimiterScan.h"

#include <optional>

namespace zn {

namespace {

/// A run's data on its way through the flow.
struct Run {
    TaskContext& context;
    std::shared_ptr<IArkVault> vault;
    std::shared_ptr<IArkTaskInstance> instance;
    ArkCmd& cmd;
    ArkSelection& hostSelection;
    SelectionRecords items;
    Text logPath;
    std::int32_t total = 0;
};

/// The code with which a step ends the run's body at once, without stopping the session or closing the run; none when
/// the body goes on.
using BodyEnd = std::optional<Status>;

bool readReplaceOutput(IArkTaskInstance& instance)
{
    Value value;
    checkStatus(instance.GetValue(u"ReplaceOutput", value));
    try {
        return value.toBool();
    } catch (const StatusError&) {
        return false; // what can't be read as a boolean isn't true
    }
}

Text readScript(const ObjectRef& instance)
{
    const auto script = readText(instance, u"__script");
    if (!script)
        throw StatusError(E_UNEXPECTED, "The task has no script.");
    return *script;
}

BodyEnd startSession(ZNManager& session)
{
    Status status = session.Start();
    if (failed(status))
        status = session.Restart(status);
    if (!failed(status))
        return std::nullopt;
    // The process may be up although the session isn't; the text of the failed start is what the report shows.
    session.StopKeepingError(status);
    return status;
}

void showProgress(IArkTaskInstance& instance, std::int32_t index, std::int32_t total, const Text& path)
{
    checkStatus(index == 0 ? instance.SetProgressRange(total, 0, path) : instance.SetProgressPos(index, path));
}

/// A macro that fails ends the run, whose report doesn't name the file; the log does.
void runMacro(TaskContext& context, const OutputRecord& record, const Text& revision)
{
    const Text macro = context.macroBuilder.Build(revision);
    try {
        context.session.RunMacro(macro);
    } catch (const StatusError&) {
        Text line = u"Error while processing file '" + record.path + u"': " + context.session.GetLastError();
        if (record.path.find(u'"') != Text::npos)
            line += u" A double quote in a file's name breaks the macro: rename the file.";
        context.macroBuilder.AppendToLog(line + u"\r\n");
        throw;
    }
}

BodyEnd runFile(Run& run, std::int32_t index, const Text& revision)
{
    TaskContext& context = run.context;
    OutputRecord& record = *run.items[static_cast<std::size_t>(index)];
    pollRunState(*run.instance, context.platform.clock);
    if (context.kind == TaskKind::Conversion) {
        const ThemeVerdict verdict = checkTheme(run.instance, context.fileLogic, record);
        if (verdict.variableMissing)
            return E_UNEXPECTED;
        if (verdict.deniedPath) {
            reportDeniedTheme(context, *run.instance, *verdict.deniedPath, run.logPath);
            return E_ARK_PERMISSION_DENIED;
        }
    }
    showProgress(*run.instance, index, run.total, record.path);
    context.macroBuilder.SetFile(
        record.path, record.selConfiguration, record.docId, record.projId, effectiveVersion(record));
    context.fileLogic.SetCurrentSource(&record);
    runMacro(context, record, revision);
    context.session.AfterMacro();
    return std::nullopt;
}

/// A bracket that the template never closes has a line in the log, which the close-out then takes into the vault.
void prepareMacros(Run& run, const Text& script)
{
    try {
        run.context.macroBuilder.Prepare(run.vault, run.instance, script);
    } catch (const OpenDelimiterError&) {
        run.logPath = run.context.macroBuilder.GetErrorLogPath();
        throw;
    }
}

BodyEnd runAllFiles(Run& run, const Text& script)
{
    TaskContext& context = run.context;
    prepareMacros(run, script);
    pollRunState(*run.instance, context.platform.clock);
    context.fileLogic.ExpandSelection(*run.vault, run.instance, run.hostSelection, run.items, true);
    if (run.items.empty())
        return S_FALSE;
    run.logPath = context.macroBuilder.GetErrorLogPath();
    context.fileLogic.PrepareLogFile(run.logPath);
    if (const BodyEnd end = startSession(context.session))
        return end;
    run.total = static_cast<std::int32_t>(run.items.size()) + (context.kind == TaskKind::Printing ? 0 : 1);
    const Text revision = context.session.GetRevisionText();
    for (std::int32_t index = 0; index < static_cast<std::int32_t>(run.items.size()); ++index) {
        if (const BodyEnd end = runFile(run, index, revision))
            return end;
    }
    return std::nullopt;
}

/// What may fail before there is anything to take down.
Text configure(Run& run)
{
    TaskContext& context = run.context;
    const bool replaceOutput = readReplaceOutput(*run.instance);
    context.fileLogic.Initialize(run.vault, context.kind, replaceOutput);
    Text script = readScript(run.instance);
    const std::int32_t year = readInteger(run.instance, u"__zn_version").value_or(0);
    context.session.Configure(context.fileLogic, context.kind, run.instance, year);
    return script;
}

/// The code of the run's body. Raises nothing.
Status runBody(Run& run)
{
    TaskContext& context = run.context;
    RunResult result;
    Text script;
    try {
        script = configure(run);
    } catch (...) {
        return currentExceptionStatus();
    }
    try {
        if (const BodyEnd end = runAllFiles(run, script))
            return *end;
    } catch (const RunStopped&) {
        run.cmd.cancel = -1;
    } catch (...) {
        result.keep(currentExceptionStatus());
    }
    result.step([&] { checkStatus(context.session.StopKeepingError(S_OK)); });
    closeRun(context, run.vault, run.instance, result, run.total, run.items, run.logPath);
    return result.code();
}

} // namespace

Status runTask(TaskContext& context, const std::shared_ptr<IArkVault>& vault, ArkCmd& cmd, ArkSelection& selection)
{
    const auto instance = query<IArkTaskInstance>(cmd.taskObject);
    if (!instance)
        throw StatusError(E_POINTER);
    context.kind = readKind(cmd.taskObject, true);

    Run run{context, vault, instance, cmd, selection, {}, {}, 0};
    context.session.ManageStartup(false);
    const Status body = runBody(run);
    context.session.ManageStartup(true);
    if (body == S_FALSE)
        cmd.cancel = -1;
    RunResult result(body);
    Status reported = S_OK;
    result.step([&] { reported = reportRun(context, *instance, body, run.items); });
    checkStatus(result.code());
    return reported;
}

} // namespace zn
