#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/commands/frame/DefaultMacro.h"
#include "arkin/commands/frame/Interrupt.h"
#include "arkin/commands/frame/LaunchItem.h"
#include "arkin/commands/frame/LogText.h"
#include "arkin/commands/frame/MacroWarning.h"
#include "arkin/commands/frame/ProgressLine.h"
#include "arkin/commands/frame/TaskText.h"
#include "arkin/commands/frame/TrialFolder.h"
#include "arkin/commands/frame/TrialSession.h"
#include "arkin/tasks/LaunchFlow.h"
#include "arkin/tasks/RunAudit.h"
#include "arkin/tasks/TaskRunner.h"
#include "arkin/tasks/TaskTrial.h"

#include <iostream>

namespace zn::arkin {

namespace {

class TaskTry : public Command {
public:
    void declare(Arguments& take) override
    {
        take.option("NAME", m_name, "Name of the task").required();
        take.option("FILE", m_path, "File of the vault").required();
        take.option("--version", m_version, "Version of the file; else the latest").range(1, INT32_MAX);
        take.option("--configuration", m_configuration, "Configuration or sheet of the file");
        take.option("--macro", m_macro, "Try this macro text (single-byte code page) in place of the task's own");
        take.option("--output", m_output, "Folder for what comes out, new or empty; else one in the temporary folder")
            .shownAs("DIR");
    }

    int run(Session& session) override
    {
        auto task = session.tasks().get(zn::toText(m_name));
        if (!m_macro.empty())
            task.variables[zn::Text(zn::scriptVariable)] = readMacro(m_macro);
        auto item = launchItem(session, m_path, m_version, zn::toText(m_configuration));
        if (item.itemType == zn::ArkItemType::Folder)
            throw zn::StatusError(
                zn::E_INVALIDARG, session.shown(item.path) + " is a folder; a task is tried on one file.");
        const auto vaultFolder = session.shown(session.vault().info().root);
        TrialFolder outputs(m_output);
        const Interrupt interrupt;
        TrialSession trial(session, outputs.printed());
        Session& copy = trial.session();
        item.path = copy.vault().pathOf({item.fileId, item.folderId});
        const auto warnings = macroWarnings(copy.taskHost(), task);
        const auto script = scriptOf(task);
        if (!session.json())
            printWarnings(warnings, script);
        const auto run = carryOut(copy, task, item, outputs, interrupt);
        const auto local = copy.shown(copy.vault().info().root);
        outputs.take(filesMadeBy(copy.vault(), run.id), local);
        if (session.json()) {
            auto json = toJson(copy, run, outputs);
            auto list = Json::array();
            for (const auto& warning : warnings)
                list.push_back(arkin::toJson(warning, script));
            json["warnings"] = list;
            printJson(json);
        } else {
            print(copy, run, outputs, local + " stands for the vault's folder " + vaultFolder);
        }
        return run.wentWell() ? commandDone : run.wentWellInPart() ? commandDoneInPart : commandFailed;
    }

private:
    static zn::Text scriptOf(const TaskDefinition& task)
    {
        const auto script = task.variables.find(zn::Text(zn::scriptVariable));
        const auto* text = script == task.variables.end() ? nullptr : script->second.get<zn::Text>();
        return text ? *text : zn::Text();
    }

    static void printWarnings(const std::vector<zn::ArkMacroWarning>& warnings, const zn::Text& script)
    {
        if (!warnings.empty())
            std::cout << "Warnings about the macro's template:\n";
        for (const auto& warning : warnings)
            std::cout << shownWarning(warning, script) << "\n";
        std::cout << std::flush; // before the progress on the other stream
    }

    static RunInfo carryOut(Session& copy, const TaskDefinition& task, const zn::ArkSelItem& item,
        const TrialFolder& outputs, const Interrupt& interrupt)
    {
        const auto host = copy.taskHost();
        const auto outside = copy.platform().files().fromMachine(outputs.outside());
        LaunchFlow flow(host, preparedForTrial(host, task, item.path, outside), {item});
        std::string taken;
        const auto launched = copy.desktop(false).launchWithDefaults(flow, taken);
        printNote(taken);
        flow.close();
        RunStore runs(host.database, host.vaultId);
        ProgressLine line(!copy.json());
        const auto watcher = [&](const RunProgress& progress) {
            line.show(progress.position, progress.total, shownProgress(copy, progress.text));
        };
        const auto claim = RunClaim::take(runs, launched.id, thisProcess(), copy.platform().clock().now());
        return TaskRunner(host, watcher, &interrupt.flag()).run(claim);
    }

    static Json toJson(Session& copy, const RunInfo& run, const TrialFolder& outputs)
    {
        RunStore runs(copy.store().database(), copy.vault().info().id);
        RunAudits audits(copy.store().database());
        const auto audit = audits.get(run.id);
        auto macros = Json::array(), messages = Json::array(), results = Json::array();
        for (const AuditedMacro& macro : audits.macros(run.id))
            macros.push_back({{"path", copy.shown(macro.path)}, {"version", macro.version},
                {"configuration", zn::toUtf8(macro.configuration)}, {"text", audits.macroText(audit, macro)}});
        for (const RunMessage& message : runs.messages(run.id))
            messages.push_back({{"path", copy.shown(message.path)}, {"text", zn::toUtf8(message.sentence)}});
        for (const RunFileResult& result : runs.results(run.id))
            results.push_back(arkin::toJson(copy, result));
        const auto log = logText(copy, run);
        return {{"task", zn::toUtf8(run.taskName)},
            {"state", zn::toUtf8(stateText(run, copy.platform().clock().now()))}, {"text", zn::toUtf8(run.resultText)},
            {"root", copy.shown(copy.vault().info().root)}, {"macros", macros},
            {"log", log ? Json(*log) : Json(nullptr)}, {"messages", messages}, {"results", results},
            {"folder", outputs.folder().string()}, {"outputs", outputs.files()}};
    }

    static void print(Session& copy, const RunInfo& run, const TrialFolder& outputs, const std::string& places)
    {
        RunAudits audits(copy.store().database());
        const auto audit = audits.get(run.id);
        for (const AuditedMacro& macro : audits.macros(run.id)) {
            const auto text = audits.macroText(audit, macro);
            std::cout << "Macro for " << copy.shown(macro.path) << ", version " << macro.version << ":\n"
                      << withTerminalLineEnds(text) << (text.ends_with('\n') ? "" : "\n");
        }
        std::cout << "Log:\n";
        if (!printLog(copy, run))
            std::cout << "Nothing was logged.\n";
        std::cout << "Outputs:\n";
        for (const std::string& file : outputs.files())
            std::cout << file << "\n";
        if (outputs.files().empty())
            std::cout << "Nothing came out.\n";
        std::cout << "Trial of '" << zn::toUtf8(run.taskName)
                  << "': " << zn::toUtf8(stateText(run, copy.platform().clock().now())) << "."
                  << (run.resultText.empty() ? "" : " " + zn::toUtf8(run.resultText)) << "\n";
        if (!outputs.files().empty())
            std::cout << "The outputs are in " << outputs.folder().string() << "; the vault is as it was.\n";
        printNote("In the macro and the log " + places
            + ". A trial's macro reaches the vault's copy and the folders of its outputs, and nothing else.");
    }

    std::string m_name;
    std::string m_path;
    std::int32_t m_version = 0;
    std::string m_configuration;
    std::filesystem::path m_macro;
    std::filesystem::path m_output;
};

} // namespace

MadeCommand taskTryCommand() { return std::make_unique<TaskTry>(); }

} // namespace zn::arkin
