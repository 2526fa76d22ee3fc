#include "addin/flows/RunState.h"
#include "addin/flows/ZNTaskAddIn.h"
#include "addin/installation/SettingsLight.h"
#include "addin/macro/MacroResources.h"
#include "addin/session/FindExecutable.h"
#include "tests/addin/session/SessionFixture.h"
#include "tests/support/FakeHost.h"
#include "tests/support/Files.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

namespace {

class CmdHooks : public IArkCmdMgr {
public:
    Status AddHook(std::int32_t command, std::int32_t) override
    {
        commands.push_back(command);
        return S_OK;
    }
    std::vector<std::int32_t> commands;
};

/// A run of the add-in against a host and a CAD application that do as the test says; files and registry are real.
class Run : public test::SessionTest {
protected:
    /// Gets the macro's text and says whether it went well.
    using Macro = std::function<bool(const std::string&)>;

    Run()
    {
        machine.machine.registry().removeKey(RegistryRoot::Machine, u"SOFTWARE\\Classes\\Zentrel.Application", {});
        host.root = machine.path("vault");
        std::filesystem::create_directories(machine.folder / "vault");
        host.taskVariables[u"__script"] = u"run <Filepath>";
        application->members["GetBuildNumbers2"] = [](MemberCall& call) {
            call.arguments.front() = u"zn2018";
            return Value();
        };
    }
    void installCad(const Macro& macro = [](const std::string&) { return true; })
    {
        install("exec sleep 600");
        running.application = application;
        application->members["RunMacro2"] = [this, macro](MemberCall& call) {
            macros.push_back(machine.machine.files().readBytes(call.arguments.front().toText()).value());
            return Value(macro(macros.back()));
        };
    }
    void select(std::int32_t id, const std::string& name, std::int32_t version = 0)
    {
        const Text path = machine.path("vault/" + name);
        test::writeFile(machine.folder / ("vault/" + name), "content");
        host.addFile(id, 7, path, 3);
        ArkSelItem item;
        item.fileId = id;
        item.folderId = 7;
        item.path = path;
        item.version = version;
        selection.push_back(item);
    }
    Status run(std::int32_t kind)
    {
        host.taskVariables[u"__type"] = kind;
        const Platform all = ports();
        CZNTaskAddIn addIn(all);
        cmd = {};
        cmd.command = TaskCmdRun;
        cmd.vault = host.vault();
        cmd.taskObject = host.task();
        return addIn.OnCmd(&cmd, &selection);
    }
    std::string pathText(const std::string& name) { return toUtf8(machine.path("vault/" + name)); }
    /// What the run wrote into its log in this folder of the vault.
    std::string logIn(const std::string& folder)
    {
        return test::readFile(machine.folder / "vault" / folder / "{6D1A7B52-0C8E-4E0B-9F6C-0123456789AB}.log");
    }

    test::FakeHost host;
    std::vector<std::string> macros; ///< those that were run
    ArkSelection selection;
    ArkCmd cmd;
};

} // namespace

TEST_F(Run, AWornOutApplicationIsReplacedBetweenFiles)
{
    installCad();
    for (std::int32_t file = 1; file <= 101; ++file)
        select(file, std::to_string(file) + ".zenprt");
    EXPECT_EQ(run(3), S_OK);
    EXPECT_EQ(macros.size(), 101u);
    const auto& calls = *application->log;
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "ExitApp"), 2); // after a hundred macros, and at the end
}

TEST_F(Run, MacrosThatNobodyWroteAreConfinedToTheTasksFolders)
{
    installCad();
    select(1, "a.zenprt");
    select(2, "b.zenprt");
    host.taskVariables[u"ErrorLogPath"] = u"Y:\\Logs";
    host.taskVariables[u"OutputPath"] = u"<VaultPath>\\..\\Out\\%Project%\\a.stl";
    host.taskVariables[u"OutputPath2"] = u"Y:\\Shared\\<Filename>.stl";
    const std::string folders = "ConfineMacros(" + toUtf8(machine.path("vault")) + ", Y:\\Logs, "
        + toUtf8(machine.path("Out")) + ", Y:\\Shared)";
    Text edited = defaultMacro(TaskKind::Conversion), unchanged = defaultMacro(TaskKind::Printing) + u"\n";
    edited.insert(edited.find(u"Sub main"), u"' ours\r\n");
    std::erase(unchanged, u'\r');
    const struct {
        Text script;
        std::optional<std::int32_t> chosen;
        std::ptrdiff_t confined;
    } cases[] = {{defaultMacro(TaskKind::Conversion), {}, 2}, {unchanged, {}, 2}, {unchanged, 0, 0}, {edited, {}, 0},
        {edited, 1, 0}, {edited, 2, 2}, {u"run <Filepath>", {}, 0}};
    for (const auto& one : cases) {
        Registry& registry = machine.machine.registry();
        registry.removeValue(RegistryRoot::User, addInKey, u"ConfineMacros");
        if (one.chosen)
            registry.write(RegistryRoot::User, addInKey, u"ConfineMacros", RegistryValue::number(*one.chosen));
        host.taskVariables[u"__script"] = one.script;
        application->log->clear();
        run(3);
        EXPECT_EQ(std::ranges::count(*application->log, folders), one.confined)
            << ::testing::PrintToString(*application->log);
    }
    machine.machine.registry().removeKey(RegistryRoot::User, addInKey, {});
    // An application that knows nothing of it runs them, and the run says so once; one that fails to do it doesn't.
    host.taskVariables[u"__script"] = unchanged;
    for (const auto& [failure, run_] : {std::pair(DISP_E_MEMBERNOTFOUND, 2u), {E_FAIL, 0u}}) {
        application->failures["ConfineMacros"] = failure;
        macros.clear();
        host.messages.clear();
        run(3);
        EXPECT_EQ(macros.size(), run_);
        EXPECT_EQ(std::ranges::count_if(host.messages,
                      [](const auto& message) {
                          return message.find("This CAD application can't confine macros") != std::string::npos;
                      }),
            run_ / 2);
    }
}

TEST_F(Run, OnlyAnApplicationThatReadsAheadHearsOfTheFilesToCome)
{
    installCad();
    for (std::int32_t file = 1; file <= 3; ++file)
        select(file, std::to_string(file) + ".step");
    const auto heard = [&] {
        std::string calls;
        for (const std::string& call : *application->log)
            if (call.starts_with("ReadAhead") || call.starts_with("RunMacro2"))
                calls += call.substr(0, call.starts_with("RunMacro2") ? 9 : call.size()) + "\n";
        application->log->clear();
        return calls;
    };
    EXPECT_EQ(run(3), S_OK);
    EXPECT_EQ(heard(), "RunMacro2\nRunMacro2\nRunMacro2\n");
    application->offered = {u"ReadAhead"};
    EXPECT_EQ(run(3), S_OK);
    EXPECT_EQ(heard(),
        "ReadAhead(" + pathText("2.step") + ", " + pathText("3.step") + ")\nRunMacro2\nReadAhead(" + pathText("3.step")
            + ")\nRunMacro2\nRunMacro2\n");
}

TEST_F(Run, ScriptTaskGoesThroughItsFilesInOrderAndReports)
{
    installCad();
    select(11, "a.zenprt", 2);
    select(12, "b.zenasm");

    EXPECT_EQ(run(3), S_OK);

    EXPECT_THAT(
        macros, ElementsAre(HasSubstr("run " + pathText("a.zenprt")), HasSubstr("run " + pathText("b.zenasm"))));
    EXPECT_THAT(host.runCalls,
        ElementsAre("range 3 at 0: " + pathText("a.zenprt"), "position 1: " + pathText("b.zenasm"),
            "position 2: Adding files to vault...", "position 3: ", "state 7, code 00000000, '', 11/7 v2, 12/7 v0"));
    EXPECT_EQ(cmd.cancel, 0);
    EXPECT_EQ(log->back(), "ExitApp");
}

TEST_F(Run, PrintTaskHasNoStepForAdding)
{
    installCad();
    select(11, "a.zendrw");
    EXPECT_EQ(run(2), S_OK);
    EXPECT_THAT(host.runCalls,
        ElementsAre("range 1 at 0: " + pathText("a.zendrw"), "position 1: ", "state 7, code 00000000, '', 11/7 v0"));
    EXPECT_TRUE(host.taskVariables.contains(u"__selection_list"));
    EXPECT_FALSE(host.taskVariables.contains(u"__output_list"));
}

TEST_F(Run, FailedMacroEndsTheLoopAndStillClosesTheRun)
{
    installCad([](const std::string&) { return false; });
    host.taskVariables[u"FileFormat"] = u"STL (*.stl)";
    host.taskVariables[u"ErrorLogPath"] = u"Logs";
    host.failures["SetValue __output_list"] = E_ACCESSDENIED;
    select(11, "a\".zenprt");
    select(12, "b.zenprt");
    EXPECT_EQ(run(1), E_FAIL) << "the first failure is the run's";
    EXPECT_EQ(macros.size(), 1U);
    EXPECT_EQ(logIn("Logs"),
        "Error while processing file '" + pathText("a\".zenprt")
            + "': Failed to run Zentrel macro. A double quote in a file's name breaks the macro: rename the file.\r\n");
    EXPECT_EQ(host.runCalls.back(), "state 9, code 80004005, 'Failed to run Zentrel macro.', 11/7 v0, 12/7 v0");
    EXPECT_TRUE(host.taskVariables.contains(u"__selection_list"));
    EXPECT_THAT(host.messages,
        ElementsAre(pathText("a\".zenprt")
                + ": Failed to run Zentrel macro. A double quote in a file's name breaks the macro: rename the file.",
            HasSubstr(": The run ended here, and 1 file was not worked on."), ": What it means."));
    EXPECT_EQ(host.outputs, "2 of 2");
}

TEST_F(Run, KeepsItsFirstFailureAndTakesEveryStepAllTheSame)
{
    installCad();
    host.taskVariables[u"FileFormat"] = u"STL (*.stl)";
    select(11, "a.zenprt");
    const std::tuple<std::map<std::string, Status>, Status, const char*> cases[] = {
        {{{"SetValue __output_list", E_ACCESSDENIED}, {"SetValue __selection_list", E_INVALIDARG}}, E_ACCESSDENIED,
            "state 9, code 80070005, '', 11/7 v0"},
        {{{"SetValue __selection_list", E_INVALIDARG}}, E_INVALIDARG, "state 9, code 80070057, '', 11/7 v0"},
    };
    for (const auto& [failures, expected, report] : cases) {
        host.failures = failures;
        host.runCalls.clear();
        EXPECT_EQ(run(1), expected);
        ASSERT_GE(host.runCalls.size(), 2U);
        EXPECT_EQ(host.runCalls.back(), report);
        EXPECT_EQ(host.runCalls[host.runCalls.size() - 2], "position 2: ");
    }
}

TEST_F(Run, OpenBracketInTheTemplateEndsTheRunWithItsLogInTheVault)
{
    installCad();
    host.taskVariables[u"__script"] = u"a = 1\r\nb = [Unknown\r\n";
    host.taskVariables[u"ErrorLogPath"] = u"logs";
    select(11, "a.zenprt");
    EXPECT_EQ(run(3), E_INVALIDARG);
    const std::string logFile = pathText("logs/{6D1A7B52-0C8E-4E0B-9F6C-0123456789AB}.log");
    EXPECT_THAT(logIn("logs"), HasSubstr("The \"[\" in line 2 of the macro template"));
    EXPECT_THAT(host.calls, ::testing::Contains("AddFile " + logFile + " | " + pathText("logs") + " | - | 0"));
}

TEST_F(Run, CancelBetweenTwoFilesRunsNoFurtherMacro)
{
    installCad([&](const std::string&) {
        host.states = {TaskRunState::CancelRequested, TaskRunState::CancelRequested};
        return true;
    });
    select(11, "a.zenprt");
    select(12, "b.zenprt");
    EXPECT_EQ(run(3), S_FALSE);
    EXPECT_EQ(macros.size(), 1U);
    EXPECT_EQ(cmd.cancel, -1);
    EXPECT_THAT(host.runCalls.back(), HasSubstr("position 3"));
}

TEST_F(Run, ReportsInTheLanguageOfTheInstallation)
{
    Registry& registry = machine.machine.registry();
    registry.write(RegistryRoot::Machine, productKey, u"LanFileDir",
        RegistryValue::text(machine.machine.files().fromMachine(ZN_SOURCE_DIR "/resources/LanFiles")));
    registry.write(RegistryRoot::Machine, productKey, u"DefaultLanguage", RegistryValue::text(u"DE"));
    EXPECT_EQ(run(3), S_FALSE);
    EXPECT_EQ(host.runCalls.back(), "state 9, code 00000001, 'Keine Datei ausgewählt.'");
}

TEST_F(Run, WhatEndsARunEarlyIsReportedInWords)
{
    struct Case {
        const char* name;
        std::function<void()> arrange;
        std::int32_t kind;
        Status expected;
        std::string report;
        std::string message;
    };
    const Case cases[] = {
        {"nothing selected", [] {}, 3, S_FALSE, "state 9, code 00000001, 'No file selected.'",
            ": There was nothing to do"},
        {"no script", [&] { host.taskVariables.erase(u"__script"); }, 3, E_UNEXPECTED,
            "state 9, code 8000FFFF, 'No file selected.'", ": The task has no script."},
        {"an open bracket", [&] { host.taskVariables[u"__script"] = u"[Open"; }, 3, E_INVALIDARG,
            "state 9, code 80070057, 'No file selected.'", "in line 1 of the macro template has no closing bracket"},
        {"not installed",
            [&] {
                host.taskVariables[u"__script"] = u"x";
                host.taskVariables[u"__zn_version"] = 2018;
                select(11, "a.zenprt");
            },
            3, REGDB_E_CLASSNOTREG, "state 9, code 80040154, 'Zentrel 2018 is not installed.', 11/7 v0",
            ": Zentrel 2018 is not installed."},
        {"does not publish itself",
            [&] {
                installCad();
                running.application = nullptr;
                host.taskVariables.erase(u"__zn_version");
            },
            3, E_FAIL, "state 9, code 80004005, 'Failed to start Zentrel 2018.', 11/7 v0",
            ": Failed to start Zentrel 2018."},
        {"not fetched", [&] { host.failures["GetFiles"] = E_ACCESSDENIED; }, 3, E_ACCESSDENIED,
            "state 9, code 80070005, '', 11/7 v0", ": What it means."},
        {"format missing",
            [&] {
                host.failures.clear();
                installCad();
            },
            1, E_UNEXPECTED, "state 9, code 8000FFFF, '', 11/7 v0", "a.zenprt: The task lacks a setting"},
    };
    for (const Case& c : cases) {
        c.arrange();
        host.messages.clear();
        EXPECT_EQ(run(c.kind), c.expected) << c.name;
        ASSERT_FALSE(host.runCalls.empty()) << c.name;
        EXPECT_EQ(host.runCalls.back(), c.report) << c.name;
        EXPECT_THAT(host.messages, ::testing::Contains(HasSubstr(c.message))) << c.name;
    }
}

TEST_F(Run, TellsWhatTheMacroOfAFileLoggedAndWhichGaveNothing)
{
    const auto logFile = machine.folder / "vault/{6D1A7B52-0C8E-4E0B-9F6C-0123456789AB}.log";
    installCad([&](const std::string& macro) {
        // A task without a log folder has its macros write to the vault's root.
        if (macro.find("b.zenprt") != std::string::npos)
            std::ofstream(logFile, std::ios::app) << "The name is <U+65E5>.\r\n";
        return true;
    });
    host.taskVariables[u"FileFormat"] = u"STL (*.stl)";
    select(11, "a.zenprt");
    select(12, "b.zenprt");
    EXPECT_EQ(run(1), S_OK);
    EXPECT_THAT(host.messages,
        ElementsAre(pathText("a.zenprt") + ": Nothing was saved for this file, and its macro does not say why.",
            pathText("b.zenprt") + ": The name is 日."));
    EXPECT_EQ(host.outputs, "2 of 2");
}

TEST_F(Run, ThemeWithoutTheRightToReadStopsBeforeTheFirstMacro)
{
    installCad();
    host.taskVariables[u"FileFormat"] = u"3d pdf - mbd (*.pdf)";
    host.taskVariables[u"Part3DPDFThemePath"] = u"<VaultPath>\\theme.xml";
    host.taskVariables[u"ErrorLogPath"] = u"Logs";
    host.failures["GetFileFromPath " + pathText("theme.xml")] = E_ARK_PERMISSION_DENIED;
    select(11, "a.zenprt");
    EXPECT_EQ(run(1), E_ARK_PERMISSION_DENIED);
    EXPECT_THAT(macros, IsEmpty());
    EXPECT_THAT(
        host.runCalls, ::testing::Contains("state 9, code 80040203, 'No Permission to access 3dPDF Theme Path'"));
    EXPECT_EQ(logIn("Logs"), "No Permission to access 3dPDF Theme Path '<VaultPath>\\theme.xml' ");
}

TEST_F(Run, PollWaitsWhileSuspended)
{
    using S = TaskRunState;
    struct Case {
        std::deque<S> states;
        bool cancelled;
        std::vector<std::string> calls;
        std::chrono::milliseconds slept;
    };
    const Case cases[] = {
        {{S::Running}, false, {}, std::chrono::milliseconds(0)},
        {{S::CancelRequested}, true, {}, std::chrono::milliseconds(0)},
        {{S::SuspendRequested, S::Suspended, S::ResumeRequested}, false,
            {"state 5, code 00000000, ''", "state 3, code 00000000, ''"}, std::chrono::milliseconds(10000)},
        {{S::SuspendRequested, S::CancelRequested}, true, {"state 5, code 00000000, ''"},
            std::chrono::milliseconds(5000)},
    };
    for (const Case& c : cases) {
        host.states = c.states;
        host.runCalls.clear();
        machine.clock.slept = std::chrono::milliseconds(0);
        bool stopped = false;
        try {
            pollRunState(*host.task(), machine.clock);
        } catch (const RunStopped&) {
            stopped = true;
        }
        EXPECT_EQ(stopped, c.cancelled);
        EXPECT_EQ(host.runCalls, c.calls);
        EXPECT_EQ(machine.clock.slept, c.slept);
    }
}

TEST_F(Run, LaunchWritesTheSelectionOrSaysWhatIsMissing)
{
    const Platform all = ports();
    CZNTaskAddIn addIn(all);
    host.taskVariables[u"__type"] = 1;
    cmd.command = TaskCmdLaunch;
    cmd.vault = host.vault();
    cmd.taskObject = host.task();

    EXPECT_EQ(addIn.OnCmd(&cmd, &selection), S_OK);
    EXPECT_EQ(cmd.cancel, -1) << "nothing is selected";
    EXPECT_FALSE(host.taskVariables.contains(u"__selection_list"));
    select(11, "a&b.zenprt", 2);
    host.taskVariables.insert({{u"FileFormat", u"STEP (*.step)"}, {u"PromptOutput", false}, {u"SourceRefs", 2},
        {u"OutputConfs", 2}, {u"OutputSheets", 2}});
    cmd.cancel = 0;
    EXPECT_EQ(addIn.OnCmd(&cmd, &selection), S_OK);
    EXPECT_EQ(cmd.cancel, 0);
    EXPECT_TRUE(host.taskVariables.contains(u"__selection_list"));
    host.taskVariables[u"FileFormat"] = u"<Prompt the user>";
    host.taskVariables.erase(u"OutputSheets");
    EXPECT_EQ(addIn.OnCmd(&cmd, &selection), S_OK);
    EXPECT_EQ(cmd.cancel, -1);
    EXPECT_EQ(cmd.text,
        u"The task leaves settings to the user, who cannot be asked here: the output format (FileFormat), the sheets "
        u"(OutputSheets). Settle them in the task.");
}

TEST_F(Run, HostCommandsAndArgumentsAreChecked)
{
    const Platform all = ports();
    CZNTaskAddIn addIn(all);
    CmdHooks hooks;
    ArkAddInInfo info;
    EXPECT_EQ(addIn.GetAddInInfo(nullptr, &hooks), E_POINTER);
    EXPECT_EQ(addIn.GetAddInInfo(&info, nullptr), E_POINTER);
    EXPECT_EQ(addIn.GetAddInInfo(&info, &hooks), S_OK);
    EXPECT_THAT(hooks.commands, ElementsAre(40, 41, 42, 44, 45, 43));
    EXPECT_EQ(info.name, u"ZENTREL Task Add-in");
    EXPECT_EQ(info.description, u"Add-in used to run custom ZENTREL macros\r\nVersion 2018, SP0, Build 943");
    EXPECT_EQ(info.addInVersion, 2018000943);
    EXPECT_EQ(info.lowestHostMajorVersion, 18);

    EXPECT_EQ(addIn.OnCmd(nullptr, &selection), E_POINTER);
    EXPECT_EQ(addIn.OnCmd(&cmd, nullptr), E_POINTER);
    cmd.vault = std::make_shared<test::FakeObject>();
    cmd.command = TaskCmdRun;
    EXPECT_EQ(addIn.OnCmd(&cmd, &selection), E_NOINTERFACE);
    cmd.vault = host.vault();
    EXPECT_EQ(addIn.OnCmd(&cmd, &selection), E_POINTER); // no task object
    for (const std::int32_t stranger : {39, 46}) {
        cmd.command = stranger;
        EXPECT_EQ(addIn.OnCmd(&cmd, &selection), S_OK);
    }
    EXPECT_THAT(host.runCalls, IsEmpty());
}

} // namespace zn
