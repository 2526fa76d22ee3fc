#include "addin/session/StartupSettings.h"
#include "platform/Registry.h"
#include "tests/support/TestPlatform.h"

#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zn::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

constexpr TextView addIns = u"Software\\Zentrel\\AddInsStartup";
constexpr TextView applications = u"Software\\Zentrel\\Startup\\Applications";

class StartupSettingsTest : public ::testing::Test {
protected:
    void set(TextView key, TextView name, const RegistryValue& value)
    {
        machine.machine.registry().write(RegistryRoot::User, Text(key) + u"\\" + Text(name), u"", value, {});
    }
    RegistryValue get(TextView key, TextView name)
    {
        return machine.machine.registry().read(RegistryRoot::User, Text(key) + u"\\" + Text(name), u"", {}).value();
    }

    TestPlatform machine;
    Platform ports = machine.ports();
    StartupSettings settings{ports};
};

TEST_F(StartupSettingsTest, SwitchesOffWhatIsOnAndPutsItBack)
{
    const RegistryValue one = RegistryValue::number(1);
    const RegistryValue two = RegistryValue::number(2);
    const RegistryValue expand = RegistryValue::text(u"abc", RegistryType::ExpandString);
    set(addIns, u"a", one);
    set(addIns, u"b", two);
    set(addIns, u"c", RegistryValue::number(0));
    set(applications, u"d", expand);
    set(applications, u"e", RegistryValue::text(u"1"));
    settings.switchOff();
    EXPECT_THAT(settings.saved(),
        ElementsAre(Pair(Text(addIns) + u"\\a", u"1"), Pair(Text(applications) + u"\\d", u"abc"),
            Pair(Text(applications) + u"\\e", u"1")));
    EXPECT_EQ(get(addIns, u"a"), RegistryValue::number(0));
    EXPECT_EQ(get(addIns, u"b"), two);
    EXPECT_EQ(get(applications, u"d"), RegistryValue::text(u""));
    EXPECT_EQ(get(applications, u"e"), RegistryValue::text(u""));

    settings.restore();
    EXPECT_EQ(get(addIns, u"a"), one);
    EXPECT_EQ(get(applications, u"d"), RegistryValue::text(u"abc"));
    // A text that is "1" comes back as a number.
    EXPECT_EQ(get(applications, u"e"), one);
    EXPECT_EQ(get(addIns, u"c"), RegistryValue::number(0));
    EXPECT_FALSE(settings.restoreLeftOver());
}

TEST_F(StartupSettingsTest, ReadsNoTextBehindAFailedRead)
{
    const auto text = [](std::size_t length) { return RegistryValue::text(Text(length, u'x')); };
    set(addIns, u"a", text(5));
    set(addIns, u"b", text(5));
    set(addIns, u"c", text(6)); // longer than the one before it
    set(addIns, u"d", text(1));
    set(addIns, u"e", RegistryValue::number(1));
    set(applications, u"a", text(259));
    set(applications, u"b", text(0));
    set(applications, u"c", text(1));
    settings.switchOff();
    std::vector<std::string> seen;
    for (const auto& [path, old] : settings.saved())
        seen.push_back(toUtf8(TextView(path).substr(path.size() - 3)));
    EXPECT_THAT(seen, ElementsAre("p\\a", "p\\b", "p\\e", "s\\a"));
    EXPECT_EQ(get(addIns, u"c"), text(6));
    EXPECT_EQ(get(applications, u"c"), text(1));

    settings.restore();
    machine.machine.registry().removeKey(RegistryRoot::User, applications, {});
    set(applications, u"a", text(260));
    settings.switchOff();
    EXPECT_EQ(get(applications, u"a"), text(260));
}

TEST_F(StartupSettingsTest, RestoresWhatAKilledWorkerHasSwitchedOff)
{
    set(addIns, u"a", RegistryValue::number(1));
    set(addIns, u"gone", RegistryValue::text(u"x"));
    int ready[2];
    ASSERT_EQ(::pipe(ready), 0);
    const pid_t worker = ::fork();
    if (worker == 0) {
        // A connection to the registry doesn't survive a fork, so the worker opens its own.
        LinuxPlatform own(Home::open(machine.folder / "home"));
        NoRunningObjects none;
        const Platform ownPorts = own.with(none);
        StartupSettings(ownPorts).switchOff();
        [[maybe_unused]] const ssize_t written = ::write(ready[1], "x", 1);
        ::pause();
    }
    char signal = 0;
    ASSERT_EQ(::read(ready[0], &signal, 1), 1);
    ASSERT_EQ(get(addIns, u"a"), RegistryValue::number(0));
    // While that worker lives, its settings stay as they are.
    EXPECT_FALSE(settings.restoreLeftOver());
    EXPECT_EQ(get(addIns, u"a"), RegistryValue::number(0));
    ::kill(worker, SIGKILL);
    ::waitpid(worker, nullptr, 0);

    machine.machine.registry().removeKey(RegistryRoot::User, Text(addIns) + u"\\gone", {});
    settings.switchOff();
    EXPECT_THAT(settings.saved(), ElementsAre(Pair(Text(addIns) + u"\\a", u"1")));
    settings.restore();
    EXPECT_EQ(get(addIns, u"a"), RegistryValue::number(1));
    EXPECT_FALSE(machine.machine.registry().keyExists(RegistryRoot::User, Text(addIns) + u"\\gone", {}));
    EXPECT_FALSE(settings.restoreLeftOver());
}

} // namespace
} // namespace zn::test
