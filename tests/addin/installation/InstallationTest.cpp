#include "addin/installation/ClosedLibrary.h"
#include "addin/installation/SettingsLight.h"
#include "base/Status.h"
#include "tests/support/Failures.h"
#include "tests/support/TestPlatform.h"

#include <fstream>
#include <gmock/gmock.h>
#include <map>

namespace zn {
namespace {

using ::testing::HasSubstr;
constexpr auto machine = RegistryRoot::Machine;
constexpr auto user = RegistryRoot::User;
const Text settingsKey = Text(productKey) + u"\\Vaults\\_-Global\\Settings";

class InstallationTest : public ::testing::Test {
protected:
    SettingsLight settings()
    {
        return SettingsLight(registry, files, [this](TextView name) -> std::optional<Text> {
            const auto found = environment.find(Text(name));
            return found == environment.end() ? std::nullopt : std::optional(found->second);
        });
    }
    void write(RegistryRoot root, const Text& key, const Text& name, const Text& value)
    {
        registry.write(root, key, name, RegistryValue::text(value));
    }
    Text read(RegistryRoot root, const Text& key, const Text& name)
    {
        const auto value = registry.read(root, key, name);
        return value ? value->asText().value_or(u"?") : Text(u"none");
    }
    void makeFile(const std::string& name)
    {
        std::filesystem::create_directories((platform.folder / name).parent_path());
        std::ofstream(platform.folder / name) << "no library";
    }
    std::string loadFailure(TextView name)
    {
        SettingsLight paths = settings();
        return test::sentenceOf([&] { loadLibrary(paths, files, name); });
    }

    test::TestPlatform platform;
    Registry& registry = platform.machine.registry();
    FileSystem& files = platform.machine.files();
    std::map<Text, Text> environment;
};

TEST_F(InstallationTest, FindsEachFolderBelowTheLocation)
{
    EXPECT_EQ(settings().getPath(0), u"") << "no location";
    EXPECT_EQ(settings().getPath(4), u"") << "no folder without a location";

    write(machine, Text(productKey), u"Location", u"Z:\\Arkin");
    write(machine, Text(productKey), u"SharedLocation", u"Z:\\Shared\\");
    write(user, Text(productKey), u"Location", u"Z:\\Mine");
    environment[u"ProgramFiles(x86)"] = u"Z:\\Programs";
    const std::pair<int, Text> expected[] = {
        {0, u"Z:\\Arkin\\"},
        {1, u"Z:\\Shared\\"},
        {2, u"Z:\\Arkin\\"},
        {4, u"Z:\\Arkin\\LanFiles\\"},
        {5, u"Z:\\Arkin\\"},
        {6, u"Z:\\Arkin\\FileFormats\\InsoBin\\"},
        {7, u"Z:\\Mine\\"},
        {8, u"Z:\\Arkin\\Lang\\GB\\"},
        {9, u"Z:\\Arkin\\Lang\\GB\\FileExplorer.chm"},
        {10, u"Z:\\Arkin\\Default Data\\"},
        {11, u"Z:\\Arkin\\Default Cards\\"},
        {12, u"Z:\\Arkin\\"},
        {13, u"Z:\\Arkin\\Default Configurations\\"},
        {14, u"Z:\\Arkin\\Default Configurations\\VaultConfigurations.ini"},
        {15, u"Z:\\Programs\\ZENTREL\\Help Viewer\\"},
        {16, u"Z:\\Arkin\\"},
        {17, u""},
        {-1, u""},
    };
    SettingsLight paths = settings();
    for (const auto& [kind, path] : expected)
        EXPECT_EQ(paths.getPath(kind), path) << kind;

    write(machine, Text(productKey), u"LanFileDir", u"Z:\\Texts");
    EXPECT_EQ(paths.getPath(4), u"Z:\\Arkin\\LanFiles\\") << "a folder found once is kept";
    EXPECT_EQ(settings().getPath(4), u"Z:\\Texts\\") << "a value wins over the default";
    EXPECT_EQ(settings().getPath(12), u"Z:\\");
}

TEST_F(InstallationTest, TakesTheEnglishHelpWhereTheLanguageHasNone)
{
    write(machine, Text(productKey), u"Location", platform.path("app"));
    write(machine, settingsKey, u"0", u"DE");
    EXPECT_EQ(settings().getPath(9), platform.path("app") + u"\\Lang\\GB\\FileExplorer.chm");
    makeFile("app/Lang/DE/FileExplorer.chm");
    EXPECT_EQ(settings().getPath(9), platform.path("app") + u"\\Lang\\DE\\FileExplorer.chm");
}

TEST_F(InstallationTest, MakesTheUsersFolderInTheFirstPlaceThatIsThere)
{
    const auto machinePath = [this](const std::string& name) { return toText((platform.folder / name).string()); };
    environment[u"XDG_DATA_HOME"] = machinePath("local");
    environment[u"XDG_CONFIG_HOME"] = machinePath("roaming");
    EXPECT_EQ(settings().getPath(3), u"");

    environment[u"APPDATA"] = platform.path("data");
    for (const std::string place : {"data", "roaming", "local"}) {
        std::filesystem::create_directory(platform.folder / place);
        EXPECT_EQ(settings().getPath(3), platform.path(place) + u"\\ZENTREL\\ZENTREL ARKIN\\");
        EXPECT_TRUE(std::filesystem::is_directory(platform.folder / (place + "/ZENTREL/ZENTREL ARKIN")));
    }
}

TEST_F(InstallationTest, ReadsTheLanguageFromTheSettingsThenFromTheDefault)
{
    struct Case {
        Text stored, fallback, language, storedAfter;
    };
    const Case cases[] = {
        {u"", u"", u"GB", u"none"},
        {u"DE", u"FR", u"DE", u"DE"},
        {u"s", u"FR", u"FR", u"FR"},
        {u"S", u"", u"GB", u"S"},
        {u"", u"S", u"GB", u"GB"},
    };
    for (const Case& each : cases) {
        registry.removeKey(machine, Text(productKey));
        registry.removeKey(user, Text(productKey));
        if (!each.stored.empty())
            write(machine, settingsKey, u"0", each.stored);
        if (!each.fallback.empty())
            write(machine, Text(productKey), u"DefaultLanguage", each.fallback);
        EXPECT_EQ(settings().getLanguage(), each.language) << toUtf8(each.stored + u"/" + each.fallback);
        EXPECT_EQ(read(machine, settingsKey, u"0"), each.storedAfter);
        const bool written = each.storedAfter != u"none" && each.storedAfter != each.stored;
        EXPECT_EQ(read(machine, Text(productKey), u"Language"), written ? each.language : u"none");
        EXPECT_EQ(read(user, Text(productKey), u"DefaultLanguage"), written ? each.language : u"none");
    }
}

TEST_F(InstallationTest, SaysWhyAClosedLibraryIsNotThere)
{
    EXPECT_THAT(loadFailure(u"LexMgr.dll"), HasSubstr("the folder of the product is not known"));
    write(machine, Text(productKey), u"Location", platform.path("app"));
    EXPECT_THAT(loadFailure(u"TOKENCTRL.DLL"),
        HasSubstr("\"" + toUtf8(platform.path("app")) + "\\TOKENCTRL.DLL\" was not found. Install the product again"));
    makeFile("app/FlowIcons.dll");
    EXPECT_THAT(loadFailure(u"flowicons.dll"), HasSubstr("could not be loaded: "));
    EXPECT_THAT(loadFailure(u"no-such-library.so"), HasSubstr("no-such-library.so"));

    SettingsLight paths = settings();
    const SharedLibrary other = loadLibrary(paths, files, u"libm.so.6");
    EXPECT_NE(libraryFunction(other, u"libm.so.6", "cos"), nullptr) << "other libraries load in the ordinary way";
    EXPECT_THROW(libraryFunction(other, u"libm.so.6", "lexmgrLibrary"), StatusError);
}

} // namespace
} // namespace zn
