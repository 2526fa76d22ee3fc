#include "base/Status.h"
#include "platform/linux/SqliteRegistry.h"
#include "tests/support/Children.h"
#include "tests/support/Failures.h"
#include "tests/support/TemporaryFolder.h"

#include <fstream>
#include <gmock/gmock.h>

namespace zn {
namespace {

using ::testing::ElementsAre;
constexpr auto user = RegistryRoot::User;
constexpr auto machine = RegistryRoot::Machine;

TEST(RegistryValueTest, ReadsNumbersAndTextsByTheirBytes)
{
    EXPECT_EQ((RegistryValue{RegistryType::Binary, {1, 0, 0, 0}}.asNumber()), 1);
    // A big-endian value has its halves swapped, not its bytes.
    EXPECT_EQ((RegistryValue{RegistryType::NumberBigEndian, {1, 0, 2, 0}}.asNumber()), 0x00010002);
    EXPECT_EQ((RegistryValue{RegistryType::Number, {1, 0}}.asNumber()), std::nullopt);
    EXPECT_EQ(RegistryValue::number(-2).bytes, (std::vector<std::uint8_t>{0xFE, 0xFF, 0xFF, 0xFF}));

    EXPECT_EQ(RegistryValue::text(u"\u017Dx").bytes, (std::vector<std::uint8_t>{0x7D, 0x01, 'x', 0, 0, 0}));
    EXPECT_EQ((RegistryValue{RegistryType::ExpandString, {'a', 0, 0, 0}}.asText()), u"a");
    EXPECT_EQ(RegistryValue::text(u"a", RegistryType::String, false).asText(), std::nullopt);
    EXPECT_EQ((RegistryValue{RegistryType::Binary, {'a', 0, 0, 0}}.asText()), std::nullopt);
}

TEST(SqliteRegistryTest, KeepsKeysAndValuesForTheNextProcess)
{
    const test::TemporaryFolder folder;
    {
        SqliteRegistry registry(folder / "registry.sqlite");
        EXPECT_TRUE(registry.write(user, u"Software\\Zentrel\\B", u"", RegistryValue::text(u"\u00C4 one"), {}));
        registry.createKey(user, u"\\software\\ZENTREL\\\\a\\", {});
        registry.write(user, u"SOFTWARE\\zentrel\\b", u"Count", RegistryValue::number(1), {});
        registry.write(user, u"SOFTWARE\\zentrel\\b", u"COUNT", RegistryValue::number(2), {});
        registry.write(user, u"SOFTWARE\\zentrel\\b", u"Nothing", {RegistryType::Binary, {}}, {});
    }
    SqliteRegistry registry(folder / "registry.sqlite");
    EXPECT_THAT(registry.subKeys(user, u"software\\zentrel", {}), ElementsAre(u"a", u"B"));
    EXPECT_THAT(registry.subKeys(user, u"", {}), ElementsAre(u"Software"));
    EXPECT_THAT(registry.valueNames(user, u"Software\\Zentrel\\B", {}), ElementsAre(u"", u"Count", u"Nothing"));
    EXPECT_EQ(registry.read(user, u"software\\zentrel\\B", u"", {})->asText(), u"\u00C4 one");
    EXPECT_EQ(registry.read(user, u"software\\zentrel\\B", u"count", {})->asNumber(), 2);
    EXPECT_EQ(registry.read(user, u"Software\\Zentrel\\b", u"nothing", {}), (RegistryValue{RegistryType::Binary, {}}));
    EXPECT_EQ(registry.read(user, u"Software\\Zentrel\\a", u"", {}), std::nullopt);
}

TEST(SqliteRegistryTest, PartsTheMachineViewsAndNotTheUsers)
{
    const test::TemporaryFolder folder;
    SqliteRegistry registry(folder / "registry.sqlite");
    registry.write(machine, u"K", u"n", RegistryValue::number(64), RegistryView::Bits64);
    registry.write(machine, u"K", u"n", RegistryValue::number(32), RegistryView::Bits32);
    registry.write(user, u"K", u"n", RegistryValue::number(1), RegistryView::Bits32);
    EXPECT_EQ(registry.read(machine, u"K", u"n", RegistryView::Bits64)->asNumber(), 64);
    EXPECT_EQ(registry.read(machine, u"K", u"n", RegistryView::Bits32)->asNumber(), 32);
    EXPECT_EQ(registry.read(user, u"K", u"n", RegistryView::Bits64)->asNumber(), 1);
}

TEST(SqliteRegistryTest, RemovesAKeyWithAllBelowAndNothingBeside)
{
    const test::TemporaryFolder folder;
    SqliteRegistry registry(folder / "registry.sqlite");
    for (const char16_t* key : {u"A", u"A\\B\\C", u"A B", u"AB"})
        registry.write(user, key, u"v", RegistryValue::number(1), {});
    registry.removeKey(user, u"a", {});
    registry.removeKey(user, u"never there", {});
    EXPECT_THAT(registry.subKeys(user, u"", {}), ElementsAre(u"A B", u"AB"));
    EXPECT_FALSE(registry.keyExists(user, u"A\\B", {}));
    EXPECT_EQ(registry.read(user, u"A\\B\\C", u"v", {}), std::nullopt);
    registry.removeValue(user, u"AB", u"V", {});
    EXPECT_TRUE(registry.keyExists(user, u"AB", {}));
    EXPECT_TRUE(registry.valueNames(user, u"AB", {}).empty());
}

TEST(SqliteRegistryTest, LosesNothingWhenProcessesWriteAtOnce)
{
    const test::TemporaryFolder folder;
    constexpr int processes = 4;
    constexpr int writes = 25;
    test::sumOfProcesses(processes, [&](int i) {
        SqliteRegistry own(folder / "registry.sqlite");
        for (int n = 0; n < writes; ++n)
            own.write(user, u"Shared", numberText(i * 1000 + n), RegistryValue::number(n), {});
        return 0;
    });
    SqliteRegistry registry(folder / "registry.sqlite");
    EXPECT_EQ(registry.valueNames(user, u"Shared", {}).size(), std::size_t{processes} * writes);
}

TEST(SqliteRegistryTest, NamesTheFileThatIsNoRegistry)
{
    const test::TemporaryFolder folder;
    std::ofstream(folder / "broken") << std::string(5000, 'x');
    for (const char* name : {"broken", "missing/registry.sqlite"}) {
        EXPECT_THAT(test::sentenceOf([&] { SqliteRegistry registry(folder / name); }),
            ::testing::HasSubstr((folder / name).string()));
    }
}

} // namespace
} // namespace zn
