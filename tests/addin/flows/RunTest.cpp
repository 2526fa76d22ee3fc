#include "addin/flows/RunState.h"
#include "addin/flows/ZNTaskAddIn.h"
#include "addin/installation/SettingsLight.h"
#include "tests/addin/flows/FakeCad.h"
#include "tests/support/FakeHost.h"
#include "tests/support/TestPlatform.h"

#include <algorithm>
#include <fstream>
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
class Run : public ::testing::Test {
protected:
    Run()
    {
        host.root = platform.path("vault");
        std::filesystem::create_directories(platform.folder / "vault");
        host.taskVariables[u"__script"] = u"run <Filepath>";
    }

    /// Registers an executable that lives until it is killed, and the application that it "publishes".
    void installCad(test::FakeCad::Macro macro)
    {
        const auto executable = platform.folder / "ZENTREL.EXE";
        std::ofstream(executable) << "#!/bin/sh\nexec sleep 600\n";
        std::filesystem::permissions(executable, std::filesystem::perms::owner_all);
        const auto write = [&](const Text& key, const Text& text) {
            static_cast<Registry&>(platform.machine.registry())
                .write(RegistryRoot::Machine, u"SOFTWARE\\Classes\\" + key, u"", RegistryValue::text(text));
        };
        write(u"Zentrel.Application\\CLSID", u"{CAD}");
        write(u"CLSID\\{CAD}\\LocalServer32", platform.path("ZENTREL.EXE"));
        write(u"CLSID\\{CAD}\\ProgID", u"Zentrel.Application.26");
        running.application
            = std::make_shared<test::FakeCad>(platform.machine.files(), platform.machine.processes(), std::move(macro));
    }

    void select(std::int32_t id, const std::string& name, std::int32_t version = 0)
    {
        const Text path = platform.path("vault/" + name);
        std::ofstream(platform.folder / ("vault/" + name)) << "content";
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
        Platform ports = platform.ports();
        CZNTaskAddIn addIn({ports.registry, ports.files, ports.processes, running, ports.windows, ports.pipe,
            ports.clock, ports.printers, ports.products});
        cmd = {};
        cmd.command = TaskCmdRun;
        cmd.vault = host.vault();
        cmd.taskObject = host.task();
        return addIn.OnCmd(&cmd, &selection);
    }

    std::string pathText(const std::string& name) { return toUtf8(platform.path("vault/" + name)); }

    test::TestPlatform platform;
    test::FakeHost host;
    test::OneRunningObject running;
    ArkSelection selection;
    ArkCmd cmd;
};

} // namespace

TEST_F(Run, AWornOutApplicationIsReplacedBetweenFiles)
{
    installCad([](const std::string&) { return true; });
    for (std::int32_t file = 1; file <= 101; ++file)
        select(file, std::to_string(file) + ".zenprt");
    EXPECT_EQ(run(3), S_OK);
    const auto& calls = running.application->calls;
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "RunMacro2"), 101);
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "ExitApp"), 2); // after a hundred macros, and at the end
}

TEST_F(Run, ScriptTaskGoesThroughItsFilesInOrderAndReports)
{
    std::vector<std::string> macros;
    installCad([&](const std::string& text) {
        macros.push_back(text);
        return true;
    });
    select(11, "a.zenprt", 2);
    select(12, "b.zenasm");

    EXPECT_EQ(run(3), S_OK);

    EXPECT_THAT(
        macros, ElementsAre(HasSubstr("run " + pathText("a.zenprt")), HasSubstr("run " + pathText("b.zenasm"))));
    EXPECT_THAT(host.runCalls,
        ElementsAre("range 3 at 0: " + pathText("a.zenprt"), "position 1: " + pathText("b.zenasm"),
            "position 2: Adding files to vault...", "position 3: ", "state 7, code 00000000, '', 11/7 v2, 12/7 v0"));
    EXPECT_EQ(cmd.cancel, 0);
    EXPECT_EQ(running.application->calls.back(), "ExitApp");
}

TEST_F(Run, PrintTaskHasNoStepForAdding)
{
    installCad([](const std::string&) { return true; });
    select(11, "a.zendrw");
    EXPECT_EQ(run(2), S_OK);
    EXPECT_THAT(host.runCalls,
        ElementsAre("range 1 at 0: " + pathText("a.zendrw"), "position 1: ", "state 7, code 00000000, '', 11/7 v0"));
    EXPECT_TRUE(host.taskVariables.contains(u"__selection_list"));
    EXPECT_FALSE(host.taskVariables.contains(u"__output_list"));
}

TEST_F(Run, FailedMacroEndsTheLoopAndStillClosesTheRun)
{
    int macros = 0;
    installCad([&](const std::string&) {
        ++macros;
        return false;
    });
    host.taskVariables[u"FileFormat"] = u"STL (*.stl)";
    host.taskVariables[u"ErrorLogPath"] = u"Logs";
    host.failures["SetValue __output_list"] = E_ACCESSDENIED;
    select(11, "a\".zenprt");
    select(12, "b.zenprt");
    EXPECT_EQ(run(1), E_FAIL) << "the first failure is the run's";
    EXPECT_EQ(macros, 1);
    Text guid;
    host.task()->GetInstanceGuid(guid);
    EXPECT_EQ(platform.machine.files().readBytes(platform.path("vault/Logs/" + toUtf8(guid) + ".log")),
        "Error while processing file '" + pathText("a\".zenprt")
            + "': Failed to run Zentrel macro. A double quote in a file's name breaks the macro: rename the file.\r\n");
    EXPECT_EQ(host.runCalls.back(), "state 9, code 80004005, 'Failed to run Zentrel macro.', 11/7 v0, 12/7 v0");
    EXPECT_TRUE(host.taskVariables.contains(u"__selection_list"));
    EXPECT_THAT(host.messages,
        ElementsAre(pathText("a\".zenprt")
                + ": Failed to run Zentrel macro. A double quote in a file's name breaks the macro: rename the file.",
            HasSubstr(": The run ended here, and 1 file was not worked on."), ": What it means."));
    EXPECT_EQ(host.outputs, "2 of 2");

    // Without another failure a step of the close-out gives its own.
    host.taskVariables[u"__script"] = u"";
    host.failures["SetValue __selection_list"] = E_ARK_PERMISSION_DENIED;
    installCad([](const std::string&) { return true; });
    EXPECT_EQ(run(1), E_ACCESSDENIED);
}

TEST_F(Run, KeepsItsFirstFailureAndTakesEveryStepAllTheSame)
{
    bool macroWorks = true;
    installCad([&](const std::string&) { return macroWorks; });
    host.taskVariables[u"FileFormat"] = u"STL (*.stl)";
    select(11, "a.zenprt");
    const std::string reported = ", 11/7 v0";
    struct Case {
        bool macroWorks;
        std::map<std::string, Status> failures;
        Status expected;
        std::string report;
    };
    const Case cases[] = {
        {true, {{"SetValue __output_list", E_ACCESSDENIED}, {"SetValue __selection_list", E_INVALIDARG}},
            E_ACCESSDENIED, "state 9, code 80070005, ''"},
        {true, {{"SetValue __selection_list", E_INVALIDARG}}, E_INVALIDARG, "state 9, code 80070057, ''"},
        {false, {{"SetValue __output_list", E_ACCESSDENIED}}, E_FAIL,
            "state 9, code 80004005, 'Failed to run Zentrel macro.'"},
    };
    for (const Case& c : cases) {
        macroWorks = c.macroWorks;
        host.failures.clear();
        host.failures.insert(c.failures.begin(), c.failures.end());
        host.runCalls.clear();
        EXPECT_EQ(run(1), c.expected);
        ASSERT_GE(host.runCalls.size(), 2U);
        EXPECT_EQ(host.runCalls.back(), c.report + reported);
        EXPECT_EQ(host.runCalls[host.runCalls.size() - 2], "position 2: ");
    }
}

TEST_F(Run, OpenBracketInTheTemplateEndsTheRunWithItsLogInTheVault)
{
    installCad([](const std::string&) { return true; });
    host.taskVariables[u"__script"] = u"a = 1\r\nb = [Unknown\r\n";
    host.taskVariables[u"ErrorLogPath"] = u"logs";
    select(11, "a.zenprt");
    EXPECT_EQ(run(3), E_INVALIDARG);
    const std::string log = pathText("logs/{6D1A7B52-0C8E-4E0B-9F6C-0123456789AB}.log");
    EXPECT_THAT(
        *platform.machine.files().readBytes(toText(log)), HasSubstr("The \"[\" in line 2 of the macro template"));
    EXPECT_THAT(host.calls, ::testing::Contains("AddFile " + log + " | " + pathText("logs") + " | - | 0"));
}

TEST_F(Run, CancelBetweenTwoFilesRunsNoFurtherMacro)
{
    int macros = 0;
    installCad([&](const std::string&) {
        ++macros;
        host.states = {TaskRunState::CancelRequested, TaskRunState::CancelRequested};
        return true;
    });
    select(11, "a.zenprt");
    select(12, "b.zenprt");
    EXPECT_EQ(run(3), S_FALSE);
    EXPECT_EQ(macros, 1);
    EXPECT_EQ(cmd.cancel, -1);
    EXPECT_THAT(host.runCalls.back(), HasSubstr("position 3"));
}

TEST_F(Run, ReportsInTheLanguageOfTheInstallation)
{
    Registry& registry = platform.machine.registry();
    registry.write(RegistryRoot::Machine, productKey, u"LanFileDir",
        RegistryValue::text(platform.machine.files().fromMachine(ZN_SOURCE_DIR "/resources/LanFiles")));
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
                installCad([](const std::string&) { return true; });
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
                installCad([](const std::string&) { return true; });
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
    const auto log = platform.folder / "vault/{6D1A7B52-0C8E-4E0B-9F6C-0123456789AB}.log";
    installCad([&](const std::string& macro) {
        // A task without a log folder has its macros write to the vault's root.
        if (macro.find("b.zenprt") != std::string::npos)
            std::ofstream(log, std::ios::app) << "The name is <U+65E5>.\r\n";
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
    int macros = 0;
    installCad([&](const std::string&) {
        ++macros;
        return true;
    });
    host.taskVariables[u"FileFormat"] = u"3d pdf - mbd (*.pdf)";
    host.taskVariables[u"Part3DPDFThemePath"] = u"<VaultPath>\\theme.xml";
    host.taskVariables[u"ErrorLogPath"] = u"Logs";
    host.failures["GetFileFromPath " + pathText("theme.xml")] = E_ARK_PERMISSION_DENIED;
    select(11, "a.zenprt");
    EXPECT_EQ(run(1), E_ARK_PERMISSION_DENIED);
    EXPECT_EQ(macros, 0);
    EXPECT_THAT(
        host.runCalls, ::testing::Contains("state 9, code 80040203, 'No Permission to access 3dPDF Theme Path'"));
    Text guid;
    host.task()->GetInstanceGuid(guid);
    std::ifstream log(platform.folder / ("vault/Logs/" + toUtf8(guid) + ".log"));
    std::string line;
    std::getline(log, line, '\0');
    EXPECT_EQ(line, "No Permission to access 3dPDF Theme Path '<VaultPath>\\theme.xml' ");
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
        platform.clock.slept = std::chrono::milliseconds(0);
        bool stopped = false;
        try {
            pollRunState(*host.task(), platform.clock);
        } catch (const RunStopped&) {
            stopped = true;
        }
        EXPECT_EQ(stopped, c.cancelled);
        EXPECT_EQ(host.runCalls, c.calls);
        EXPECT_EQ(platform.clock.slept, c.slept);
    }
}

TEST_F(Run, LaunchWritesTheSelectionOrSaysWhatIsMissing)
{
    Platform ports = platform.ports();
    CZNTaskAddIn addIn(ports);
    host.taskVariables[u"__type"] = 1;
    cmd.command = TaskCmdLaunch;
    cmd.vault = host.vault();
    cmd.taskObject = host.task();

    EXPECT_EQ(addIn.OnCmd(&cmd, &selection), S_OK);
    EXPECT_EQ(cmd.cancel, -1);
    EXPECT_FALSE(host.taskVariables.contains(u"__selection_list"));

    cmd.cancel = 0;
    select(11, "a&b.zenprt", 2);
    host.taskVariables[u"FileFormat"] = u"STEP (*.step)";
    host.taskVariables[u"PromptOutput"] = false;
    host.taskVariables[u"SourceRefs"] = 2;
    host.taskVariables[u"OutputConfs"] = 2;
    host.taskVariables[u"OutputSheets"] = 2;
    EXPECT_EQ(addIn.OnCmd(&cmd, &selection), S_OK);
    EXPECT_EQ(cmd.cancel, 0);
    EXPECT_EQ(toUtf8(host.taskVariables[u"__selection_list"].toText()),
        "<sels><sel><doc_id>11</doc_id><proj_id>7</proj_id><path>" + toUtf8(platform.path("vault")) + "\\a&amp;b.zenprt"
            + "</path><ver>2</ver></sel></sels>");

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
    Platform ports = platform.ports();
    CZNTaskAddIn addIn(ports);
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
    cmd.vault = std::make_shared<test::FakeCad>(ports.files, ports.processes, nullptr);
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
