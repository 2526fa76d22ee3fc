#include "addin/session/FindExecutable.h"
#include "platform/FileVersionBlock.h"
#include "platform/Registry.h"
#include "tests/support/TestPlatform.h"

#include <gtest/gtest.h>

// The version of this program's own file, which stands for the CAD application's.
ZN_FILE_VERSION(21, 2, 0, 0)

namespace zn::test {
namespace {

constexpr auto machine64 = RegistryView::Bits64;
constexpr auto machine32 = RegistryView::Bits32;

class FindExecutableTest : public ::testing::Test {
protected:
    void write(RegistryView view, const Text& key, TextView name, const RegistryValue& value)
    {
        machine.machine.registry().write(RegistryRoot::Machine, key, name, value, view);
    }
    void folder(RegistryView view, TextView name, const RegistryValue& value)
    {
        write(view, u"SOFTWARE\\Zentrel\\Zentrel 2018\\Setup", name, value);
    }
    std::string find(std::int32_t year, bool force = false)
    {
        choice = findExecutable(machine.ports(), u"{CAD}", year, force);
        return toUtf8(choice.commandLine);
    }

    TestPlatform machine;
    ExecutableChoice choice;
};

TEST_F(FindExecutableTest, LooksForTheFolderInBothViewsUnderBothNames)
{
    using Value = RegistryValue;
    EXPECT_EQ(find(2018), "");
    folder(machine32, u"Zentrel Location", Value::text(u"Z:\\location32\\\\"));
    EXPECT_EQ(find(2018), "Z:\\location32\\ZENTREL.EXE /R");
    folder(machine32, u"Zentrel Folder", Value::text(u"Z:\\folder32\\"));
    EXPECT_EQ(find(2018), "Z:\\folder32\\ZENTREL.EXE /R");
    folder(machine64, u"Zentrel Location", Value::text(u"Z:\\location64"));
    EXPECT_EQ(find(2018), "Z:\\location64\\ZENTREL.EXE /R");
    folder(machine64, u"Zentrel Folder", Value::text(u"Z:\\folder64", RegistryType::String, false));
    EXPECT_EQ(find(2018), "Z:\\location64\\ZENTREL.EXE /R");
    folder(machine64, u"Zentrel Folder", Value::text(u""));
    EXPECT_EQ(find(2018), "Z:\\folder32\\ZENTREL.EXE /R");
    folder(machine64, u"Zentrel Folder", Value::text(u"Z:\\folder64"));
    EXPECT_EQ(find(2018), "Z:\\folder64\\ZENTREL.EXE /R");
    EXPECT_EQ(find(2017), "");
}

TEST_F(FindExecutableTest, TakesTheClassesCommandLineAndYear)
{
    const Text key = u"SOFTWARE\\Classes\\CLSID\\{CAD}\\";
    write(machine64, key + u"LocalServer32", u"", RegistryValue::text(u"Z:\\a b\\CAD.EXE /x"));
    const std::pair<const char16_t*, std::int32_t> years[]
        = {{u"Zentrel.Application.26", 2018}, {u"Zentrel.Application", 1992}, {u".26", 0}, {u"Zentrel", 0}};
    for (const auto& [progId, year] : years) {
        write(machine64, key + u"ProgID", u"", RegistryValue::text(progId));
        EXPECT_EQ(find(0), "Z:\\a b\\CAD.EXE /x /R");
        EXPECT_EQ(choice.year, year) << toUtf8(progId);
    }
}

TEST_F(FindExecutableTest, ChoosesTheStartSwitch)
{
    const Text own = machine.machine.files().fromMachine(std::filesystem::read_symlink("/proc/self/exe"));
    write(machine64, u"SOFTWARE\\Classes\\CLSID\\{CAD}\\LocalServer32", u"", RegistryValue::text(own));
    write(machine64, u"SOFTWARE\\Classes\\CLSID\\{CAD}\\ProgID", u"", RegistryValue::text(u"Zentrel.Application.26"));
    const auto switchOf = [this](bool force = false) {
        const std::string line = find(0, force);
        return line.substr(line.size() - 3);
    };
    EXPECT_EQ(switchOf(), " /R");
    ASSERT_TRUE(choice.version);
    EXPECT_EQ(choice.version->minor, 2);
    folder(machine32, u"Zentrel Office Installed", RegistryValue::number(1));
    EXPECT_EQ(switchOf(), " /B");
    EXPECT_FALSE(choice.regressionMode);
    folder(machine64, u"Zentrel Office Installed", RegistryValue::number(0));
    EXPECT_EQ(switchOf(), " /R");
    folder(machine64, u"Zentrel Office Installed", RegistryValue::number(1));
    EXPECT_EQ(switchOf(true), " /R");

    Registry& registry = machine.machine.registry();
    EXPECT_TRUE(registry.keyExists(RegistryRoot::User, addInKey));
    const auto force = [&](RegistryType type, std::vector<std::uint8_t> bytes) {
        registry.write(RegistryRoot::User, addInKey, u"ForceRegressionMode", {type, std::move(bytes)});
        return switchOf();
    };
    EXPECT_EQ(force(RegistryType::Number, {1, 0, 0, 0}), " /R");
    EXPECT_EQ(force(RegistryType::NumberBigEndian, {0, 0, 1, 0}), " /R");
    EXPECT_EQ(force(RegistryType::Number, {0, 0, 0, 0}), " /B");
    EXPECT_EQ(force(RegistryType::Binary, {1, 0}), " /B");
}

} // namespace
} // namespace zn::test
