#include "tools/client-simulator/Matcher.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace ClientSimulator;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr std::string_view cTaken = "<UIToClient><ActionTaken><IsCancel>false</IsCancel><ID>7</ID>"
                                    "<When>Sun, 02 Jan 2011 08:05:09 +0000</When>"
                                    "<Deep><Field> x </Field></Deep><Twice>1</Twice><Twice>2</Twice>"
                                    "</ActionTaken></UIToClient>";

RenderContext Context() {
    RenderContext context;
    context.now = std::chrono::sys_seconds(std::chrono::seconds(1293955509));
    return context;
}

// The differences of the document above from an expectation with these field lines.
std::vector<std::string> Against(std::string const& lines, std::string const& head = "expect ActionTaken") {
    Scenario const scenario = ParseScenario(head + "\n" + lines + "\n", "test.scenario");
    return Differences(std::get<ExpectMessage>(scenario.steps.at(0).action).pattern, cTaken, Context());
}

} // namespace

TEST(Matcher, TakesAMessageByItsName) {
    EXPECT_THAT(Against(""), IsEmpty());
    EXPECT_THAT(Against("", "expect any"), IsEmpty());
    EXPECT_THAT(Against("", "expect RemindTime"), ElementsAre("it is ActionTaken; expected RemindTime"));
}

TEST(Matcher, LooksAtTheRootWhenAsked) {
    EXPECT_THAT(Against("", "expect ActionTaken in UIToClient"), IsEmpty());
    EXPECT_THAT(Against("", "expect ActionTaken in ClientToUI"),
                ElementsAre("its root is UIToClient; expected ClientToUI"));
}

TEST(Matcher, TakesFieldsThatFit) {
    for (std::string const line :
         {" ID = 7", " ID != 8", " IsCancel contains als", " Deep/Field = \" x \"", " ID present",
          " Deep present", " Originator absent", " Deep/Other absent", " When near {now} within 0s",
          " When near {now+5s} within 5s", " When near {now-5s} within 5s"}) {
        EXPECT_THAT(Against(line), IsEmpty()) << line;
    }
}

TEST(Matcher, TellsEveryFieldThatDoesNotFit) {
    EXPECT_THAT(Against(" ID = 8\n IsCancel = true"),
                ElementsAre("ID is \"7\"; expected \"8\"", "IsCancel is \"false\"; expected \"true\""));
    EXPECT_THAT(Against(" ID != 7"), ElementsAre("ID is \"7\"; expected anything else"));
    EXPECT_THAT(Against(" IsCancel contains x"), ElementsAre("IsCancel is \"false\"; expected \"x\" in it"));
    EXPECT_THAT(Against(" Deep/Field = x"), ElementsAre("Deep/Field is \" x \"; expected \"x\""));
    EXPECT_THAT(Against(" Originator present"), ElementsAre("Originator is missing"));
    EXPECT_THAT(Against(" Originator = x"), ElementsAre("Originator is missing"));
    EXPECT_THAT(Against(" ID absent"), ElementsAre("ID is \"7\"; expected no such field"));
    EXPECT_THAT(Against(" Twice = 2"), ElementsAre("Twice stands 2 times; expected it once"));
    EXPECT_THAT(
        Against(" When near {now+6s} within 5s"),
        ElementsAre("When is Sun, 02 Jan 2011 08:05:09 +0000; expected Sun, 02 Jan 2011 08:05:15 +0000, 5s "
                    "more or less"));
    EXPECT_THAT(Against(" ID near {now} within 5s"),
                ElementsAre("ID is \"7\", which is no time; expected about Sun, 02 Jan 2011 08:05:09 +0000"));
    EXPECT_THAT(Against(" When near noon within 5s"),
                ElementsAre("When is compared with \"noon\", which is no time"));
}

TEST(Matcher, WantsExactlyOneMessage) {
    MessagePattern const any;
    EXPECT_THAT(Differences(any, "<R></R>", Context()), ElementsAre("it holds 0 messages; expected one"));
    EXPECT_THAT(Differences(any, "<R><A></A><B></B></R>", Context()),
                ElementsAre("it holds 2 messages; expected one"));
    EXPECT_THAT(Differences(any, "", Context()), testing::SizeIs(1));
}
