#include "tests/addin/session/SessionFixture.h"

namespace zn::test {
namespace {

constexpr TextView addInKey = u"Software\\Zentrel\\Applications\\Arkin Enterprise\\ZNTaskAddIn";

/// What one macro call of the application does.
struct Attempt {
    Status status = S_OK;
    bool success = true;
    std::int32_t reason = 0;
    bool schedulerDialog = false;
    bool lastStart = false; ///< from then on the application can't be started
};

class MacroRunTest : public SessionTest {
protected:
    MacroRunTest()
    {
        application->members["RunMacro2"] = [this](MemberCall& call) { return run(call); };
        application->members["RunMacro"] = application->members["RunMacro2"];
    }

    Value run(MemberCall& call)
    {
        file = call.arguments.at(0).toText();
        macro = machine.machine.files().readBytes(file).value_or("(no file)");
        const Attempt attempt = attempts.at(static_cast<std::size_t>(calls++));
        if (attempt.schedulerDialog) {
            windows.open(5, {running.processId, u"A Zentrel Task Scheduler", 0});
            while (windows.isOpen(5))
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        if (attempt.lastStart)
            install("exit 1");
        if (dies)
            endApplication();
        if (failed(attempt.status))
            throw StatusError(attempt.status);
        if (call.arguments.size() > 4)
            call.arguments[4] = attempt.reason;
        return attempt.success;
    }

    /// How often the application is called for a macro that ends with this status.
    int callsOf(std::vector<Attempt> planned, Status expected)
    {
        attempts = std::move(planned);
        calls = 0;
        EXPECT_EQ(statusOf([&] { session.RunMacro(u"main"); }), expected);
        return calls;
    }

    std::vector<Attempt> attempts;
    int calls = 0;
    bool dies = false;
    bool isStopped = false;
    Text file;
    std::string macro;
};

TEST_F(MacroRunTest, RetriesFailedCallsAndPutsTheLastIntoWords)
{
    const std::string general = "Failed to run Zentrel macro.";
    struct Case {
        std::vector<Attempt> attempts;
        int calls;
        Status status;
        std::string text;
    };
    const Case cases[] = {
        {{{S_OK, true, 5}}, 1, S_OK, ""},
        {{{S_OK, false, 3}}, 1, E_FAIL, general},
        {{{S_OK, false, 27}}, 1, E_FAIL, general + " Reason: File save failed."},
        {{{E_ACCESSDENIED}, {S_OK, true}}, 2, S_OK, ""},
        {{{RPC_E_DISCONNECTED}, {RPC_E_DISCONNECTED}, {S_OK, false, 12}}, 3, E_FAIL,
            general + " Reason: Unhandled exception."},
        {{{RPC_E_DISCONNECTED}, {E_FAIL}, {E_ACCESSDENIED}}, 3, E_ACCESSDENIED, general},
    };
    for (const Case& one : cases) {
        ASSERT_EQ(session.Start(), S_OK);
        running.starts = 0;
        EXPECT_EQ(callsOf(one.attempts, one.status), one.calls);
        EXPECT_EQ(toUtf8(session.GetLastError()), one.text);
        EXPECT_EQ(running.starts, one.calls - 1);
        session.Stop(true, S_OK);
    }
}

TEST_F(MacroRunTest, OutlivesAnApplicationThatDiesInAMacro)
{
    ASSERT_EQ(session.Start(), S_OK);
    dies = true;
    EXPECT_EQ(callsOf(std::vector<Attempt>(3, {RPC_E_DISCONNECTED}), RPC_E_DISCONNECTED), 3);
    EXPECT_EQ(running.starts, 3);
    EXPECT_EQ(session.StopKeepingError(S_OK), S_OK);
    EXPECT_EQ(session.GetLastError(), u"Failed to run Zentrel macro.");

    ASSERT_EQ(session.Start(), S_OK);
    EXPECT_EQ(callsOf({{RPC_E_DISCONNECTED}, {}}, S_OK), 2);
}

TEST_F(MacroRunTest, AHungMacroIsAskedToEndThenItsProcessEndsAndNothingIsTriedAgain)
{
    application->members["RunMacro2"] = [this](MemberCall&) -> Value {
        ++calls;
        if (isStopped)
            session.RequestStop();
        waitForEnd();
        throw StatusError(RPC_E_DISCONNECTED);
    };
    for (isStopped = false; calls < 2; isStopped = true) {
        ASSERT_EQ(session.Start(), S_OK);
        running.starts = 0;
        EXPECT_THROW(session.RunMacro(u"main", std::chrono::seconds(isStopped ? 0 : 60)), StatusError);
        EXPECT_GE(running.stopped.size(), 10U);
        EXPECT_THAT(running.stopped, ::testing::Each("Zentrel_PID_" + std::to_string(running.processId)));
        EXPECT_EQ(processes.exitCode(running.processId), 255U);
        EXPECT_TRUE(session.EndedProcess());
        EXPECT_EQ(session.LimitHit(), !isStopped);
        EXPECT_EQ(running.starts, 0);
        session.Stop(true, E_FAIL);
        running.stopped.clear();
    }
    EXPECT_TRUE(failed(session.Start())) << "nothing is started for a run that was stopped";
    session.ForgetStop();
    EXPECT_EQ(session.Start(), S_OK);
}

TEST_F(MacroRunTest, RestartsInRegressionModeWhenTheSchedulersDialogWasSeen)
{
    machine.machine.registry().write(RegistryRoot::Machine, u"SOFTWARE\\Zentrel\\Zentrel 2018\\Setup",
        u"Zentrel Office Installed", RegistryValue::number(1), {});
    ASSERT_EQ(session.Start(), S_OK);
    // The dialog comes back more often than a plain failure would be retried.
    const Attempt dialog{S_OK, true, 0, true};
    EXPECT_EQ(callsOf({dialog, dialog, dialog, dialog, {}}, S_OK), 5);
    EXPECT_EQ(content("starts"), "/B\n/R\n/R\n/R\n/R\n");
    EXPECT_EQ(windows.answers, std::vector<std::string>(4, "key 13 A Zentrel Task Scheduler"));

    EXPECT_EQ(callsOf(std::vector<Attempt>(1000, dialog), E_FAIL), 100);
    EXPECT_EQ(session.GetLastError(), u"Failed to run Zentrel macro.");

    // Restarts that the dialog asked for take no attempts from the next macro.
    callsOf({dialog, dialog, {S_OK, true, 0, true, true}}, E_FAIL);
    install("exec sleep 600");
    for (int i = 0; i < 2; ++i)
        ASSERT_EQ(session.Restart(S_OK), S_OK);
    EXPECT_EQ(callsOf(std::vector<Attempt>(5, {E_FAIL}), E_FAIL), 3);
}

TEST_F(MacroRunTest, RestartsWithoutAMacroInBetweenLeaveFewerAttempts)
{
    ASSERT_EQ(session.Start(), S_OK);
    const std::pair<int, int> cases[] = {{2, 3}, {3, 2}, {6, 1}, {9, 1}, {0, 3}};
    for (const auto& [restarts, expected] : cases) {
        for (int i = 0; i < restarts; ++i)
            ASSERT_EQ(session.Restart(S_OK), S_OK);
        EXPECT_EQ(callsOf(std::vector<Attempt>(5, {E_FAIL}), E_FAIL), expected) << restarts;
    }
}

TEST_F(MacroRunTest, HandsTheMacroOverAsAFileInTheCodePage)
{
    ASSERT_EQ(session.Start(), S_OK);
    attempts.assign(2, {});
    const auto copy = machine.folder / "last.znb";
    machine.machine.registry().write(
        RegistryRoot::User, addInKey, u"ScriptCopyPath", RegistryValue::text(machine.path("last.znb")), {});
    log->clear();
    session.RunMacro(u"é – \u0416 \U0001F600\r\n");
    EXPECT_EQ(macro, "\xE9 \x96 ? ??\r\n");
    EXPECT_EQ(content("last.znb"), macro);
    EXPECT_THAT(*log, ElementsAre("RunMacro2(" + toUtf8(file) + ", ZNMacro1, main, 0, 0)"));
    const auto path = machine.machine.files().toMachine(file);
    EXPECT_TRUE(path.filename().string().starts_with("TFR"));
    EXPECT_EQ(path.extension(), ".znb");
    EXPECT_FALSE(std::filesystem::exists(path));

    machine.machine.registry().write(
        RegistryRoot::User, addInKey, u"ScriptCopyPath", RegistryValue::text(machine.path("none/last.znb")), {});
    session.RunMacro(u"");
    EXPECT_EQ(macro, "");
}

TEST_F(MacroRunTest, CallsOldReleasesTheirOwnWay)
{
    for (const auto& [revision, call] : {std::pair("16.5.1", "RunMacro("), std::pair("17.0.0", "RunMacro2(")}) {
        application->set("RevisionNumber", toText(revision));
        ASSERT_EQ(session.Start(), S_OK);
        attempts.assign(1, {});
        calls = 0;
        log->clear();
        session.RunMacro(u"main");
        EXPECT_TRUE(log->front().starts_with(call)) << log->front();
        session.Stop(true, S_OK);
    }
}

TEST_F(MacroRunTest, SaysWhyTheMacroFileCouldNotBeWritten)
{
    ASSERT_EQ(session.Start(), S_OK);
    const char* before = std::getenv("TMPDIR");
    const std::string kept = before ? before : "";
    ::setenv("TMPDIR", "/proc", 1);
    const Status status = statusOf([&] { session.RunMacro(u"main"); });
    kept.empty() ? ::unsetenv("TMPDIR") : ::setenv("TMPDIR", kept.c_str(), 1);
    EXPECT_TRUE(failed(status));
    EXPECT_EQ(calls, 0);
    EXPECT_TRUE(session.GetLastError().starts_with(
        u"Failed to run Zentrel macro. The folder 'Z:\\proc' takes no temporary file: "))
        << toUtf8(session.GetLastError());
}

} // namespace
} // namespace zn::test
