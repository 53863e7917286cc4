#include "tools/client-simulator/TimeText.h"

#include <gtest/gtest.h>

using namespace ClientSimulator;
using std::chrono::seconds;
using std::chrono::sys_seconds;

TEST(TimeText, HasTheFormOfTheDocuments) {
    EXPECT_EQ(TimeText(sys_seconds(seconds(0))), "Thu, 01 Jan 1970 00:00:00 +0000");
    EXPECT_EQ(TimeText(sys_seconds(seconds(1293955509))), "Sun, 02 Jan 2011 08:05:09 +0000");
    EXPECT_EQ(TimeText(sys_seconds(seconds(951782399))), "Mon, 28 Feb 2000 23:59:59 +0000");
    EXPECT_EQ(TimeText(sys_seconds(seconds(951782400))), "Tue, 29 Feb 2000 00:00:00 +0000");
    EXPECT_EQ(TimeText(sys_seconds(seconds(-1))), "Wed, 31 Dec 1969 23:59:59 +0000");
}

TEST(ParseTimeText, ReadsEveryZone) {
    sys_seconds const time(seconds(1293955509));
    for (std::string_view const text : {"Sun, 02 Jan 2011 08:05:09 +0000", "Sun, 02 Jan 2011 10:05:09 +0200",
                                        "Sun, 02 Jan 2011 08:05:09 -0000", "Sun, 02 Jan 2011 04:35:09 -0330"})
        EXPECT_EQ(ParseTimeText(text), time) << text;
}

TEST(ParseTimeText, RefusesEverythingElse) {
    for (std::string_view const text :
         {"", "Sun, 02 Jan 2011 08:05:09", "Sun, 2 Jan 2011 08:05:09 +0000",
          "Mon, 02 Jan 2011 08:05:09 +0000", "Sun, 02 Jab 2011 08:05:09 +0000",
          "Sun, 32 Jan 2011 08:05:09 +0000", "Sun, 02 Jan 2011 24:05:09 +0000",
          "Sun, 02 Jan 2011 08:60:09 +0000", "Sun, 02 Jan 2011 08:05:60 +0000",
          "Sun, 02 Jan 2011 08:05:09 *0000", "Sun, 02 Jan 2011 08:05:09 +0000 ", "2011-01-02T08:05:09+00:00"})
        EXPECT_FALSE(ParseTimeText(text).has_value()) << '"' << text << '"';
}

TEST(ClockText, ShowsMilliseconds) {
    EXPECT_EQ(ClockText(std::chrono::system_clock::time_point(std::chrono::milliseconds(1293955509042))),
              "08:05:09.042");
}
