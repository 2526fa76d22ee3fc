#include "addin/flows/RunFlow.h"

#include "addin/flows/RunClose.h"
#include "addin/flows/RunState.h"
#include "addin/flows/ThemeCheck.h"
#include "addin/macro/DelimiterScan.h"

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

/// Raised by a step that ends the body at once with its code, without stopping the session or closing the run.
struct BodyEnd {
    Status code;
};

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

void startSession(ZNManager& session)
{
    Status status = session.Start();
    if (failed(status))
        status = session.Restart(status);
    if (!failed(status))
        return;
    // The process may be up although the session isn't; the text of the failed start is what the report shows.
    session.StopKeepingError(status);
    throw BodyEnd{status};
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

void runFile(Run& run, std::int32_t index, const Text& revision)
{
    TaskContext& context = run.context;
    OutputRecord& record = *run.items[static_cast<std::size_t>(index)];
    pollRunState(*run.instance, context.platform.clock);
    if (context.kind == TaskKind::Conversion) {
        const ThemeVerdict verdict = checkTheme(run.instance, context.fileLogic, record);
        if (verdict.variableMissing)
            throw BodyEnd{E_UNEXPECTED};
        if (verdict.deniedPath) {
            reportDeniedTheme(context, *run.instance, *verdict.deniedPath, run.logPath);
            throw BodyEnd{E_ARK_PERMISSION_DENIED};
        }
    }
    showProgress(*run.instance, index, run.total, record.path);
    context.macroBuilder.SetFile(
        record.path, record.selConfiguration, record.docId, record.projId, effectiveVersion(record));
    context.fileLogic.SetCurrentSource(&record);
    runMacro(context, record, revision);
    context.session.AfterMacro();
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

void runAllFiles(Run& run, const Text& script)
{
    TaskContext& context = run.context;
    prepareMacros(run, script);
    pollRunState(*run.instance, context.platform.clock);
    context.fileLogic.ExpandSelection(*run.vault, run.instance, run.hostSelection, run.items, true);
    if (run.items.empty())
        throw BodyEnd{S_FALSE};
    run.logPath = context.macroBuilder.GetErrorLogPath();
    context.fileLogic.PrepareLogFile(run.logPath);
    startSession(context.session);
    run.total = static_cast<std::int32_t>(run.items.size()) + (context.kind == TaskKind::Printing ? 0 : 1);
    const Text revision = context.session.GetRevisionText();
    for (std::int32_t index = 0; index < static_cast<std::int32_t>(run.items.size()); ++index)
        runFile(run, index, revision);
}

/// What may fail before there is anything to take down.
Text configure(Run& run)
{
    TaskContext& context = run.context;
    const bool replaceOutput = readReplaceOutput(*run.instance);
    checkStatus(context.fileLogic.Initialize(run.vault, context.kind, replaceOutput));
    Text script = readScript(run.instance);
    const std::int32_t year = readInteger(run.instance, u"__zn_version").value_or(0);
    context.session.Configure(context.fileLogic, context.kind, run.instance, year);
    return script;
}

Status runBody(Run& run)
{
    TaskContext& context = run.context;
    Status result = S_OK;
    Text script;
    try {
        script = configure(run);
    } catch (...) {
        return currentExceptionStatus();
    }
    try {
        runAllFiles(run, script);
    } catch (const BodyEnd& end) {
        return end.code;
    } catch (...) {
        result = currentExceptionStatus();
        if (result == S_FALSE)
            run.cmd.cancel = -1;
    }
    const Status stopped = context.session.StopKeepingError(S_OK);
    if (!failed(result))
        result = stopped;
    return closeRun(context, run.vault, run.instance, result, run.total, run.items, run.logPath);
}

} // namespace

Status runTask(TaskContext& context, const std::shared_ptr<IArkVault>& vault, ArkCmd& cmd, ArkSelection& selection)
{
    const auto instance = query<IArkTaskInstance>(cmd.taskObject);
    if (!instance)
        return E_POINTER;
    const Status kindStatus = readKind(cmd.taskObject, true, context.kind);
    if (failed(kindStatus))
        return kindStatus;

    Run run{context, vault, instance, cmd, selection, {}, {}, 0};
    context.session.ManageStartup(false);
    const Status body = runBody(run);
    context.session.ManageStartup(true);
    if (body == S_FALSE)
        cmd.cancel = -1;
    const Status reported = reportRun(context, *instance, body, run.items);
    return failed(body) ? body : reported;
}

} // namespace zn
