#include "zel/data/Date.h"

#include <climits>
#include <cstdlib>
#include <ctime>

#include <gtest/gtest.h>

TEST(Date, Forms) {
    ::setenv("TZ", "UTC0", 1);
    ::tzset();
    const std::pair<long, const char*> rows[] = {
        {1324266296, "12/19/11  3:44:56 AM"},  {1324295999, "12/19/11 11:59:59 AM"},
        {1324296300, "12/19/11  0:05:00 PM"}, // noon
        {946684800, " 1/01/00  0:00:00 AM"},  // midnight
        {946684799, "12/31/99 11:59:59 PM"},   {-2, "12/31/69 11:59:58 PM"},
        {-2147483647, "12/13/01  8:45:53 PM"},
    };
    for (const auto& [time, text] : rows)
        EXPECT_TRUE(ZEL::Date::getShortString(time) == text && ZEL::Date::getLongString(time) == text) << text;
    if (sizeof(long) == 8) {
        EXPECT_EQ(ZEL::Date::getShortString(LONG_MAX), " 1/00/00  0:00:00 AM") << "a year beyond the system's";
        EXPECT_EQ(ZEL::Date::getShortString(static_cast<long>(-2208988801)), "12/31/99 11:59:59 PM") << "1899";
    }
}

TEST(Date, NowIsTheDefault) {
    ZEL::Date date;
    EXPECT_NEAR(static_cast<double>(date.getValue()), static_cast<double>(std::time(nullptr)), 5);
    const std::string before = ZEL::Date::getShortString(std::time(nullptr)), now = ZEL::Date::getShortString(-1);
    EXPECT_TRUE(now == before || now == ZEL::Date::getShortString(std::time(nullptr)));
    date.setValue(5);
    EXPECT_EQ(date.getValue(), 5);
}
