#include "addin/flows/RunFlow.h"

#include "addin/flows/MacroReach.h"
#include "addin/flows/RunClose.h"
#include "addin/flows/RunMessages.h"
#include "addin/flows/RunState.h"
#include "addin/flows/ThemeCheck.h"
#include "addin/macro/DelimiterScan.h"
#include "base/Durations.h"
#include "base/Format.h"

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
    RunMessages messages;
    Text logPath{};
    std::int32_t total = 0;
    std::chrono::seconds longestForFile{}; ///< 0 for none
    const OutputRecord* current = nullptr; ///< the file that is being worked on
    bool failureTold = false;              ///< people know already what ended the run
    bool confined = false;                 ///< its macros reach the task's folders only
    bool allUnchanged = false;             ///< the host wants changed files only, and none has changed
    bool freedomTold = false;              ///< people know that this CAD application can't confine them
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

/// How the host reaches a run that waits for its CAD application.
class HostLine {
public:
    HostLine(const std::shared_ptr<IArkTaskInstance>& instance, ZNManager& session)
        : m_control(query<IArkRunControl>(instance))
    {
        session.ForgetStop();
        if (m_control)
            checkStatus(m_control->SetStopHandler([&session] { session.RequestStop(); }));
    }
    HostLine(const HostLine&) = delete;
    HostLine& operator=(const HostLine&) = delete;
    ~HostLine()
    {
        if (m_control)
            m_control->SetStopHandler({});
    }

    std::chrono::seconds longestForFile() const
    {
        std::int32_t seconds = 0;
        if (m_control)
            checkStatus(m_control->GetFileLimit(seconds));
        return std::chrono::seconds(seconds);
    }

private:
    std::shared_ptr<IArkRunControl> m_control; ///< null where the host has none
};

BodyEnd startSession(ZNManager& session)
{
    Status status = session.Start();
    if (failed(status) && !session.StopRequested())
        status = session.Restart(status);
    if (failed(status) && session.StopRequested())
        throw RunStopped{};
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

/// What the application itself says and the macro hasn't passed on: a number alone helps nobody. A macro that has told
/// nothing may have had its reasons, and what it saved may lack something all the same: that stands with the run, not
/// in its log of errors.
void tellApplicationsWords(Run& run, const OutputRecord& record, const Text& passedOn, bool isError)
{
    for (const Text& message : run.context.session.TakeMessages()) {
        if (passedOn.find(message) != Text::npos)
            continue;
        if (isError)
            run.messages.tell(record.path, message);
        else
            run.messages.tellWithRun(record.path, message);
    }
}

/// What the file's macro was kept from, also if it went on as if nothing were. True if there was anything.
bool tellRefusals(Run& run, const OutputRecord& record, const Text& passedOn)
{
    const std::vector<Text> refusals = run.context.session.GetRefusals();
    for (const Text& refusal : refusals) {
        if (passedOn.find(refusal) == Text::npos)
            run.messages.tell(record.path, refusal);
    }
    if (!refusals.empty())
        run.messages.tell(record.path,
            u"Look at the file's name and at its card: a value may have become a part of the macro. An administrator "
            u"who wants the macro to go there finds in the documentation of macros how.");
    if (run.context.session.CannotConfine() && !run.freedomTold) {
        run.freedomTold = true;
        run.messages.tell({},
            u"This CAD application can't confine macros to the task's folders: what a file's name or its card puts "
            u"into a macro may reach every file that the worker may.");
    }
    return !refusals.empty();
}

/// What the file's macro left undone although it may have ended normally. True if there was anything to tell.
bool tellOfFile(Run& run, OutputRecord& record)
{
    TaskContext& context = run.context;
    const Text logged = context.macroBuilder.TakeMacroLog();
    const bool refused = tellRefusals(run, record, logged);
    record.complained = !logged.empty() || refused;
    if (!logged.empty()) {
        run.messages.tellWithRun(record.path, logged);
        tellApplicationsWords(run, record, logged, true);
    }
    const std::vector<FileFailure> failures = context.fileLogic.TakeFailures();
    for (const FileFailure& failure : failures)
        run.messages.tell(failure.path, failure.sentence);
    return record.complained || !failures.empty();
}

/// A file that took too long costs itself alone. What its macro has left in the application mustn't reach the next one.
void giveUpFile(Run& run, OutputRecord& record)
{
    ZNManager& session = run.context.session;
    tellOfFile(run, record);
    record.leftOut = u"The work on this file was ended after "
        + durationText(static_cast<std::int32_t>(run.longestForFile.count()))
        + u", the task's longest time for one file. Look for what holds it up, or give the task more time.";
    run.messages.tell(record.path, record.leftOut);
    checkStatus(session.Restart(E_ABORT));
}

/// How long something takes, also when it fails.
class TimeTaken {
public:
    explicit TimeTaken(double& seconds)
        : m_seconds(seconds)
    {
    }
    TimeTaken(const TimeTaken&) = delete;
    TimeTaken& operator=(const TimeTaken&) = delete;
    ~TimeTaken() { m_seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - m_begin).count(); }

private:
    double& m_seconds;
    std::chrono::steady_clock::time_point m_begin = std::chrono::steady_clock::now();
};

/// Far enough ahead for as many readers as a machine has, and not so far that a long run fills every cache.
constexpr std::size_t mostExpected = 16;

std::vector<Text> filesBehind(const Run& run, std::size_t index)
{
    std::vector<Text> files;
    for (std::size_t next = index + 1; next < run.items.size() && files.size() < mostExpected; ++next)
        if (run.items[next]->leftOut.empty())
            files.push_back(run.items[next]->path);
    return files;
}

/// A macro that fails ends the run, whose report doesn't name the file; the log does.
void runMacro(Run& run, OutputRecord& record, const Text& revision)
{
    TaskContext& context = run.context;
    const Text macro = context.macroBuilder.Build(revision);
    run.messages.tellMacro(record, macro);
    if (run.confined)
        context.session.ConfineMacros(reachableFolders(*run.vault, run.instance, record.path, run.logPath));
    try {
        context.session.RunMacro(macro, run.longestForFile);
    } catch (const StatusError&) {
        if (context.session.StopRequested())
            throw RunStopped{};
        if (context.session.LimitHit())
            return giveUpFile(run, record);
        Text sentence = context.session.GetLastError();
        if (record.path.find(u'"') != Text::npos)
            sentence += u" A double quote in a file's name breaks the macro: rename the file.";
        tellOfFile(run, record);
        run.messages.tell(record.path, sentence);
        tellApplicationsWords(run, record, {}, true);
        run.failureTold = true;
        throw;
    }
    record.worked = true;
    const bool told = tellOfFile(run, record);
    tellApplicationsWords(run, record, {}, false);
    if (told || context.fileLogic.HasResults(record))
        return;
    if (context.kind == TaskKind::Conversion)
        run.messages.tellWithRun(record.path, u"Nothing was saved for this file, and its macro does not say why.");
    else if (context.kind == TaskKind::Printing)
        run.messages.tellWithRun(record.path, u"Nothing was printed for this file, and its macro does not say why.");
}

/// Ends a run that has nothing to close, with its sentence in the log.
BodyEnd endEarly(Run& run, Status code, const Text& sentence)
{
    run.messages.tell(run.current ? run.current->path : Text(), sentence);
    RunResult ignored; // the run's code says what matters
    ignored.step([&] {
        run.logPath = run.context.macroBuilder.GetErrorLogPath();
        run.context.fileLogic.CommitLogFile(run.logPath);
    });
    run.messages.tellOutputs(run.context.fileLogic.CountOutputs(run.items));
    run.messages.tellResults(run.context.fileLogic.ListResults(run.items));
    return code;
}

BodyEnd runFile(Run& run, std::int32_t index, const Text& revision)
{
    TaskContext& context = run.context;
    OutputRecord& record = *run.items[static_cast<std::size_t>(index)];
    pollRunState(*run.instance, context.platform.clock);
    run.current = &record;
    if (!record.leftOut.empty()) {
        // What stands on the disk isn't what the vault has, and a macro would not notice.
        showProgress(*run.instance, index, run.total, record.path);
        run.messages.tell(record.path, record.leftOut);
        return std::nullopt;
    }
    if (context.kind == TaskKind::Conversion) {
        const ThemeVerdict verdict = checkTheme(run.instance, context.fileLogic, record);
        if (verdict.variableMissing)
            return endEarly(run, E_UNEXPECTED,
                u"The task lacks a setting: FileFormat, Asm3DPDFThemePath or Part3DPDFThemePath. Open its properties "
                u"and "
                u"press OK.");
        if (verdict.deniedPath) {
            run.messages.tellWithRun(
                record.path, u"No Permission to access 3dPDF Theme Path '" + *verdict.deniedPath + u"'");
            reportDeniedTheme(context, *run.instance, *verdict.deniedPath, run.logPath);
            return E_ARK_PERMISSION_DENIED;
        }
    }
    showProgress(*run.instance, index, run.total, record.path);
    context.macroBuilder.SetFile(
        record.path, record.selConfiguration, record.docId, record.projId, effectiveVersion(record));
    context.fileLogic.SetCurrentSource(&record);
    context.session.ExpectFiles(filesBehind(run, static_cast<std::size_t>(index)));
    const TimeTaken taken(record.seconds);
    runMacro(run, record, revision);
    context.session.AfterMacro();
    return std::nullopt;
}

/// Takes the files out that the host knows to have good outputs already.
void leaveOutUnchanged(Run& run)
{
    const auto host = query<IArkUnchangedFiles>(run.instance);
    if (!host)
        return;
    std::vector<ArkSourceFile> files;
    files.reserve(run.items.size());
    for (const auto& item : run.items)
        files.push_back({item->path, item->docId, item->projId, effectiveVersion(*item), item->selConfiguration});
    std::vector<Text> sentences;
    checkStatus(host->GetUnchanged(files, sentences));
    SelectionRecords changed;
    const std::size_t all = run.items.size();
    for (std::size_t i = 0; i < all; ++i) {
        const bool isUnchanged = i < sentences.size() && !sentences[i].empty() && run.items[i]->leftOut.empty();
        if (!isUnchanged) {
            changed.push_back(std::move(run.items[i]));
            continue;
        }
        ArkFileResult result;
        result.source = files[i].path;
        result.sourceId = files[i].fileId;
        result.sourceVersion = files[i].version;
        result.part = files[i].configuration;
        result.outcome = FileOutcome::Unchanged;
        result.sentence = sentences[i];
        run.messages.keepResult(std::move(result));
    }
    run.items = std::move(changed);
    run.allUnchanged = run.items.empty();
    if (run.items.size() < all && !run.allUnchanged)
        run.messages.tellWithRun({},
            formatText("Unchanged since their last outputs, and left out: %d of %d files.",
                static_cast<std::int32_t>(all - run.items.size()), static_cast<std::int32_t>(all)));
}

/// A bracket that the template never closes has a line in the log already.
void prepareMacros(Run& run, const Text& script)
{
    run.messages.openLog();
    try {
        run.context.macroBuilder.Prepare(run.vault, run.instance, script);
    } catch (const OpenDelimiterError& error) {
        run.messages.tellWithRun({}, toText(error.what()));
        run.failureTold = true;
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
        return endEarly(run, S_FALSE,
            u"There was nothing to do: the selection holds no file that the task works on, or its files have gone "
            u"since the launch.");
    run.logPath = context.macroBuilder.GetErrorLogPath();
    context.fileLogic.PrepareLogFile(run.logPath);
    if (const BodyEnd end = startSession(context.session))
        return endEarly(run, *end, context.session.GetLastError());
    const Text revision = context.session.GetRevisionText();
    if (run.messages.keepsAudit())
        run.messages.tellApplication(context.session.DescribeApplication());
    leaveOutUnchanged(run);
    if (run.allUnchanged) {
        run.messages.tellResults({});
        return context.session.StopKeepingError(S_OK);
    }
    run.total = static_cast<std::int32_t>(run.items.size()) + (context.kind == TaskKind::Printing ? 0 : 1);
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
    run.confined = confinesMacro(context.platform.registry, script);
    return script;
}

/// Says what has ended the run, and what it didn't get to. Inside a `catch` block.
void tellFailure(Run& run)
{
    const Text sentence = run.messages.currentSentence();
    if (!run.failureTold)
        run.messages.tell(run.current ? run.current->path : Text(), sentence);
    std::int32_t open = run.current ? -1 : 0;
    for (const auto& item : run.items)
        open += item->worked || !item->leftOut.empty() ? 0 : 1;
    if (open > 0)
        run.messages.tellWithRun({},
            formatText("The run ended here, and %s. Mend or leave out the one that failed, and launch the task on the "
                       "others again.",
                open == 1 ? Text(u"1 file was not worked on") : numberText(open) + u" files were not worked on"));
    if (run.messages.logIsOpen() && run.logPath.empty()) {
        RunResult ignored; // without its log's path the run ends all the same
        ignored.step([&] { run.logPath = run.context.macroBuilder.GetErrorLogPath(); });
    }
}

void tellStopped(Run& run)
{
    run.cmd.cancel = -1;
    if (!run.current || run.current->worked || !run.current->leftOut.empty() || !run.context.session.StopRequested())
        return;
    Text sentence = u"The run was cancelled while this file was being worked on.";
    if (run.context.session.EndedProcess())
        sentence += u" Its macro did not end when it was asked to, so the CAD application was ended.";
    run.messages.tell(run.current->path, sentence);
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
        run.messages.tellWithRun({}, run.messages.currentSentence());
        return currentExceptionStatus();
    }
    try {
        if (const BodyEnd end = runAllFiles(run, script))
            return *end;
    } catch (const RunStopped&) {
        tellStopped(run);
    } catch (...) {
        // A call that was brought back by force fails with whatever it was at.
        if (context.session.StopRequested()) {
            tellStopped(run);
        } else {
            result.keep(currentExceptionStatus());
            tellFailure(run);
        }
    }
    result.step([&] { checkStatus(context.session.StopKeepingError(S_OK)); });
    closeRun(context, run.vault, run.instance, result, run.total, run.items, run.logPath, run.messages);
    return result.code();
}

} // namespace

Status runTask(TaskContext& context, const std::shared_ptr<IArkVault>& vault, ArkCmd& cmd, ArkSelection& selection)
{
    const auto instance = query<IArkTaskInstance>(cmd.taskObject);
    if (!instance)
        throw StatusError(E_POINTER);
    context.kind = readKind(cmd.taskObject, true);

    Run run{context, vault, instance, cmd, selection, {}, RunMessages(context.macroBuilder, vault, instance)};
    const HostLine host(instance, context.session);
    run.longestForFile = host.longestForFile();
    context.session.ManageStartup(false);
    const Status body = runBody(run);
    context.session.ManageStartup(true);
    if (run.allUnchanged && body == S_OK) {
        checkStatus(
            instance->SetStatus(TaskRunState::Finished, S_OK, u"No file has changed since its last outputs.", {}));
        return S_OK;
    }
    if (body == S_FALSE)
        cmd.cancel = -1;
    RunResult result(body);
    Status reported = S_OK;
    result.step([&] { reported = reportRun(context, *instance, body, run.items); });
    checkStatus(result.code());
    return reported;
}

} // namespace zn
