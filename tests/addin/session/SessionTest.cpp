#include "addin/installation/SettingsLight.h"
#include "tests/addin/session/SessionFixture.h"

namespace zn::test {
namespace {

using ::testing::Pair;

TEST_F(SessionTest, StartsAndLeavesInTheApplicationsOrder)
{
    ASSERT_EQ(session.Start(), S_OK);
    EXPECT_THAT(*log,
        ElementsAre("RevisionNumber", "SetUserPreferenceToggle(290, -1)", "SetUserPreferenceToggle(291, -1)",
            "SetUserPreferenceIntegerValue(253, 0)", "advise ApplicationEvents", "UserControl=0",
            "UserControlHidden=-1", "Frame", "SetSwitch(30, 0)", "Visible=0"));
    EXPECT_THAT(windows.shown, ElementsAre(Pair(77U, 3), Pair(77U, 0)));
    EXPECT_EQ(session.GetApplication(), application);
    // The file tells no version and no full installation is registered.
    EXPECT_EQ(content("starts"), "/R\n");

    log->clear();
    const std::int32_t process = running.processId;
    EXPECT_EQ(session.Stop(true, S_OK), S_OK);
    EXPECT_THAT(*log,
        ElementsAre(
            "unadvise", "UserControlHidden=0", "SetSwitch(30, -1)", "Visible=0", "CloseAllDocuments(-1)", "ExitApp"));
    EXPECT_FALSE(processes.open(process));
    EXPECT_EQ(processes.exitCode(process), 0U);
    EXPECT_EQ(session.GetApplication(), nullptr);
}

TEST_F(SessionTest, PutsAFailedStepOfTheStartIntoWords)
{
    const Text invisible = u"Failed to set Zentrel main window as invisible.";
    const std::tuple<const char*, Status, Text> cases[] = {
        {"RevisionNumber", E_ACCESSDENIED, u"Failed to get Zentrel revision number."},
        {"SetUserPreferenceToggle", E_ACCESSDENIED, u""},
        {"SetUserPreferenceIntegerValue", E_ACCESSDENIED, u""},
        {"advise", E_ACCESSDENIED, u"Failed to attach event handlers to Zentrel."},
        {"UserControl", S_OK, u""},
        {"UserControlHidden", E_ACCESSDENIED, invisible},
        {"Frame", E_ACCESSDENIED, invisible},
        {"SetSwitch", S_OK, u""},
        {"Visible", E_ACCESSDENIED, invisible},
    };
    for (const auto& [member, status, text] : cases) {
        application->failures = {{member, E_ACCESSDENIED}};
        EXPECT_EQ(session.Start(), status) << member;
        EXPECT_EQ(session.GetLastError(), text) << member;
        session.StopKeepingError(E_FAIL);
        EXPECT_EQ(session.GetLastError(), text) << member;
        EXPECT_FALSE(processes.open(running.processId)) << member;
    }
}

TEST_F(SessionTest, SaysInTheInstallationsLanguageThatNothingIsInstalled)
{
    Registry& registry = machine.machine.registry();
    registry.write(RegistryRoot::Machine, productKey, u"LanFileDir",
        RegistryValue::text(machine.machine.files().fromMachine(ZN_SOURCE_DIR "/resources/LanFiles")));
    registry.removeKey(RegistryRoot::Machine, u"SOFTWARE\\Classes\\Zentrel.Application", {});
    const std::tuple<const char16_t*, std::int32_t, const char16_t*> cases[]
        = {{u"", 2018, u"Zentrel 2018 is not installed."}, {u"", 0, u"Zentrel is not installed."},
            {u"DE", 2018, u"Zentrel 2018 ist nicht installiert."}, {u"DE", 0, u"Zentrel ist nicht installiert."}};
    for (const auto& [language, year, text] : cases) {
        if (*language)
            registry.write(RegistryRoot::Machine, productKey, u"DefaultLanguage", RegistryValue::text(language));
        ZNManager speaking(ports());
        speaking.Configure(notes, TaskKind::General, nullptr, year);
        EXPECT_EQ(speaking.Start(), REGDB_E_CLASSNOTREG);
        EXPECT_EQ(speaking.GetLastError(), text);
    }
    EXPECT_EQ(session.textOf(SessionTexts::allSheets), u"Alle Bl\u00E4tter");
}

TEST_F(SessionTest, GivesUpOnAProcessThatNeverPublishesItself)
{
    running.application = nullptr;
    EXPECT_EQ(session.Start(), E_FAIL);
    EXPECT_EQ(session.GetLastError(), u"Failed to start Zentrel 2018.");
    EXPECT_EQ(clock.slept, std::chrono::seconds(120));
    EXPECT_NE(running.processId, 0);
    waitForEnd();
    EXPECT_EQ(processes.exitCode(running.processId), 255U);
}

TEST_F(SessionTest, WaitsNeitherForADeadProcessNorForATableThatIsNotThere)
{
    running.application = nullptr;
    install("exit 3");
    EXPECT_EQ(session.Start(), E_FAIL);
    EXPECT_EQ(session.GetLastError(), u"Failed to start Zentrel 2018.");
    EXPECT_LT(clock.slept, std::chrono::seconds(120));
    clock.slept = {};
    install("exec sleep 600");
    running.reachable = false;
    EXPECT_EQ(session.Start(), E_FAIL);
    EXPECT_EQ(clock.slept, std::chrono::seconds(0));
    write(u"SOFTWARE\\Classes\\CLSID\\{CAD}\\LocalServer32", machine.path("none.exe"));
    EXPECT_EQ(session.Start(), E_FAIL);
    EXPECT_EQ(session.GetLastError(), u"Failed to start Zentrel 2018.");
}

TEST_F(SessionTest, EndsAnApplicationThatDoesNotLeave)
{
    application->members.erase("ExitApp");
    ASSERT_EQ(session.Start(), S_OK);
    EXPECT_EQ(session.Stop(true, S_OK), S_OK);
    EXPECT_EQ(processes.exitCode(running.processId), 255U);
    EXPECT_GE(clock.slept, std::chrono::seconds(11));

    // A failing status skips the polite way.
    ASSERT_EQ(session.Start(), S_OK);
    log->clear();
    EXPECT_EQ(session.Stop(true, E_FAIL), S_OK);
    EXPECT_THAT(*log, ElementsAre("unadvise"));

    ASSERT_EQ(session.Start(), S_OK);
    processes.immortal = true;
    EXPECT_EQ(session.Stop(true, S_OK), E_FAIL);
    EXPECT_EQ(session.GetLastError(), u"Failed to close Zentrel application.");
    processes.immortal = false;
    clock.slept = {};
    session.Stop(true, S_OK);
    EXPECT_FALSE(processes.open(running.processId));
    EXPECT_LT(clock.slept, std::chrono::seconds(11)) << "which is for an application that can be asked to leave";
}

TEST_F(SessionTest, StopsAfterTheApplicationHasDied)
{
    ASSERT_EQ(session.Start(), S_OK);
    endApplication();
    application->failures = {{"UserControlHidden", RPC_E_DISCONNECTED}};
    clock.slept = {};
    EXPECT_EQ(session.Stop(true, S_OK), S_OK);
    EXPECT_EQ(clock.slept, std::chrono::seconds(0));
    EXPECT_EQ(session.GetLastError(), u"");
}

TEST_F(SessionTest, ReplacesAnApplicationThatHasGrownOrServedLong)
{
    constexpr std::uint64_t mega = std::uint64_t{1024} * 1024;
    ASSERT_EQ(session.Start(), S_OK);
    const std::pair<std::uint64_t, bool> sizes[] = {
        {100 * mega, false}, // the first look is the baseline
        {250 * mega, false}, // past twice the baseline, but small
        {256 * mega, false},
        {256 * mega + 1, true},
        {200 * mega, false}, // the old baseline stays in force after this restart
        {256 * mega + 1, true},
    };
    for (const auto& [size, replaced] : sizes) {
        const std::int32_t before = running.processId;
        processes.size = size;
        session.AfterMacro();
        EXPECT_EQ(running.processId != before, replaced) << size;
    }
    processes.size = std::nullopt;
    const std::int32_t before = running.processId;
    for (int use = 1; use < 100; ++use)
        session.AfterMacro();
    EXPECT_EQ(running.processId, before);
    session.AfterMacro();
    EXPECT_NE(running.processId, before);
}

TEST_F(SessionTest, LeavesNoProcessBehindWhenItGoes)
{
    {
        ZNManager passing(ports());
        ASSERT_EQ(passing.Start(), S_OK);
    }
    waitForEnd();
    EXPECT_EQ(processes.exitCode(running.processId), 255U);
}

} // namespace
} // namespace zn::test
