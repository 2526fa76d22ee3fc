#include "addin/macro/DateFormat.h"

#include "base/Dates.h"
#include "platform/Registry.h"
#include "tests/support/TestPlatform.h"

#include <gtest/gtest.h>

namespace zn {

TEST(FormatDate, FollowsStyleAndMode)
{
    using enum DateMode;
    const double afternoon = dayCount({2018, 3, 5, 14, 7, 9});
    const double noon = dayCount({2018, 1, 5, 12, 30, 0});
    const double midnight = dayCount({2007, 12, 31, 0, 5, 1});
    struct Case {
        double date;
        int style;
        DateMode mode;
        const char16_t* text;
    };
    const Case cases[] = {
        {noon, 0, DateOnly, u"Jan 05 2018"},
        {noon, 0, DateAndSeconds, u"Jan 05 2018 12:30 AM"},
        {afternoon, 100, DateAndMinutes, u"Mar 05 2018 02:07 PM"},
        {midnight, 0, DateAndSeconds, u"Dec 31 2007 00:05 AM"},
        {afternoon, 1, DateOnly, u"03/05/18"},
        {midnight, 2, DateOnly, u"07.12.31"},
        {afternoon, 3, DateOnly, u"05/03/18"},
        {afternoon, 4, DateOnly, u"05.03.18"},
        {afternoon, 5, DateOnly, u"05-03-18"},
        {midnight, 6, DateAndSeconds, u"31 Dec 07 00:05:01"},
        {afternoon, 7, DateOnly, u"Mar 05, 18"},
        {afternoon, 10, DateOnly, u"03-05-18"},
        {afternoon, 11, DateOnly, u"18/03/05"},
        {afternoon, 12, DateAndMinutes, u"180305 14:07"},
        {afternoon, 101, DateOnly, u"03/05/2018"},
        {afternoon, 102, DateOnly, u"2018.03.05"},
        {afternoon, 103, DateOnly, u"05/03/2018"},
        {afternoon, 104, DateOnly, u"05.03.2018"},
        {afternoon, 105, DateOnly, u"05-03-2018"},
        {afternoon, 106, DateOnly, u"05 Mar 2018"},
        {afternoon, 107, DateOnly, u"Mar 05, 2018"},
        {afternoon, 109, DateAndSeconds, u"Mar 05 2018 02:07:09:000 PM"},
        {afternoon, 109, DateOnly, u"Mar 05 2018"},
        {afternoon, 110, DateOnly, u"03-05-2018"},
        {afternoon, 111, DateOnly, u"2018/03/05"},
        {afternoon, 112, DateOnly, u"20180305"},
        {afternoon, 113, DateAndSeconds, u"05 Mars 2018 14:07:09:000"},
        {afternoon, 113, DateOnly, u"05 Mars 2018"},
        {afternoon, 120, DateAndMinutes, u"2018-03-05 14:07"},
        {afternoon, 121, DateAndMinutes, u"2018-03-05 14:07:09.000"},
        {afternoon, 121, DateOnly, u"2018-03-05"},
        {afternoon, 8, DateOnly, u"05 Mars 2018 14:07:09:000"},
        {afternoon, 122, DateOnly, u"05 Mars 2018 14:07:09:000"},
        {1e9, 101, DateAndMinutes, u"-1/-1/-001 -1:-1"},
        {1e9, 0, DateAndMinutes, u" -1 -001 -1:-1 AM"},
    };
    for (const Case& c : cases) {
        Text text;
        EXPECT_TRUE(FormatDate(text, c.date, c.style, c.mode));
        EXPECT_EQ(text, c.text) << c.style << " in mode " << int(c.mode);
    }
    Text untouched = u"before";
    EXPECT_FALSE(FormatDate(untouched, 0.0, 0, DateOnly));
    EXPECT_EQ(untouched, u"before");
}

TEST(ReadDateStyle, ReadsTheUsersNumberOfTheVault)
{
    test::TestPlatform platform;
    Registry& registry = platform.machine.registry();
    EXPECT_EQ(ReadDateStyle(registry, u"Demo"), 0);
    const Text key = u"Software\\Zentrel\\Applications\\Arkin Enterprise\\Vaults\\Demo";
    registry.write(RegistryRoot::User, key, u"DateFmt", RegistryValue::number(103));
    EXPECT_EQ(ReadDateStyle(registry, u"Demo"), 103);
    registry.write(RegistryRoot::User, key, u"DateFmt", {RegistryType::NumberBigEndian, {0, 0, 120, 0}});
    EXPECT_EQ(ReadDateStyle(registry, u"Demo"), 120);
    registry.write(RegistryRoot::User, key, u"DateFmt", {RegistryType::Binary, {1, 2}});
    EXPECT_EQ(ReadDateStyle(registry, u"Demo"), 0);
}

} // namespace zn
