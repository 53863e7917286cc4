#include "tools/screen-user/EditresMessage.h"

#include "tools/screen-user/UserError.h"

#include <gtest/gtest.h>

using namespace ScreenUser;
using namespace ScreenUser::Editres;

namespace {

template <std::size_t size>
std::string Bytes(char const (&literal)[size]) {
    return {literal, size - 1};
}

// A shell "a" of class "A" in window 0x10, an object "b" of class "B" in it, and the name of the toolkit.
std::string const cTree = Bytes("\0\2"
                                "\0\1\0\0\1\1"
                                "\0\1a\0\1A\0\0\0\x10"
                                "\0\2\0\0\1\1\x90\0\0\2"
                                "\0\1b\0\1B\0\0\0\2"
                                "\0\2Xt");
std::string const cResources = Bytes("\0\1\0\1\0\0\1\1\0\0\1\0\0\5label\0\5Label\0\6String");

} // namespace

TEST(EditresRequest, HasItsNumbersWithTheHighestByteFirst) {
    EXPECT_EQ(MakeTreeRequest(7), Bytes("\7\0\0\0\0\0"));
    EXPECT_EQ(MakeResourcesRequest(8, {0x102, 0xfffefdfc}),
              Bytes("\x08\2\0\0\0\x0c\0\1\0\2\0\0\1\2\xff\xfe\xfd\xfc"));
    EXPECT_EQ(MakeValueRequest(9, {1}, "ab"), Bytes("\x09\5\0\0\0\x0c\0\2ab\0\1\0\1\0\0\0\1"));
}

TEST(EditresRequest, RefusesATextThatItsCountCannotTell) {
    EXPECT_THROW(MakeValueRequest(1, {1}, std::string(65536, 'x')), UserError);
}

TEST(EditresAnswer, IsOpenedByTheSerialOfItsRequestOnly) {
    std::string const answer = Bytes("\5\0\0\0\0\2xy");
    EXPECT_EQ(OpenAnswer(answer, 5), "xy");
    EXPECT_EQ(OpenAnswer(answer, 6), std::nullopt);
}

TEST(EditresAnswer, ThatRefusesGivesItsReason) {
    try {
        OpenAnswer(Bytes("\5\1\0\0\0\6\0\4why."), 5);
        FAIL() << "it was taken for a good one";
    } catch (UserError const& error) {
        EXPECT_STREQ(error.what(), "The program does not tell about its widgets: why.");
    }
    EXPECT_THROW(OpenAnswer(Bytes("\5\2\0\0\0\1\4"), 5), UserError) << "another version of the protocol";
}

TEST(EditresAnswer, ThatEndsTooEarlyIsRefused) {
    std::string const answer = Bytes("\5\0\0\0\0\2xy");
    for (std::size_t size = 0; size < answer.size(); ++size)
        EXPECT_THROW(OpenAnswer(answer.substr(0, size), 5), UserError) << size;
}

TEST(EditresTree, HasWidgetsWithTheirParents) {
    WidgetTree const tree = ReadTree(cTree);
    ASSERT_EQ(tree.size(), 2u);
    EXPECT_EQ(tree[0].name, "a");
    EXPECT_EQ(tree[0].className, "A");
    EXPECT_EQ(tree[0].window, 0x10u);
    EXPECT_EQ(tree[0].parent, std::nullopt);
    EXPECT_EQ(tree[1].name, "b");
    EXPECT_EQ(tree[1].window, cNoWindow);
    EXPECT_EQ(tree[1].parent, 0u);
    EXPECT_EQ(tree[1].identity, (Identity{0x101, 0x90000002}));
}

TEST(EditresTree, HasEachWidgetBehindItsParentAlsoWhereSiblingsHaveTheSameNumber) {
    WidgetTree const tree = ReadTree(Bytes("\0\5"
                                           "\0\1\0\0\0\1\0\1a\0\1A\0\0\0\2"
                                           "\0\2\0\0\0\1\0\0\0\7\0\1b\0\1B\0\0\0\2"
                                           "\0\3\0\0\0\1\0\0\0\7\0\0\0\3\0\1c\0\1C\0\0\0\2"
                                           "\0\2\0\0\0\1\0\0\0\7\0\1d\0\1D\0\0\0\2"
                                           "\0\3\0\0\0\1\0\0\0\7\0\0\0\3\0\1e\0\1E\0\0\0\2"));
    ASSERT_EQ(tree.size(), 5u);
    EXPECT_EQ(tree[2].parent, 1u);
    EXPECT_EQ(tree[4].parent, 3u);
}

TEST(EditresTree, ThatEndsTooEarlyIsRefused) {
    std::size_t const end = cTree.size() - 4; // without the toolkit's name, which nobody needs
    for (std::size_t size = 0; size < end; ++size)
        EXPECT_THROW(ReadTree(cTree.substr(0, size)), UserError) << size;
    EXPECT_EQ(ReadTree(cTree.substr(0, end)).size(), 2u);
}

TEST(EditresTree, WithAWidgetBeforeItsParentIsRefused) {
    EXPECT_THROW(ReadTree(Bytes("\0\1\0\2\0\0\1\1\0\0\0\2\0\1b\0\1B\0\0\0\2")), UserError);
    EXPECT_THROW(ReadTree(Bytes("\0\1\0\0\0\1b\0\1B\0\0\0\2")), UserError) << "it has no identity";
}

TEST(EditresResources, HaveNameClassAndType) {
    std::vector<ResourceName> const resources = ReadResources(cResources);
    ASSERT_EQ(resources.size(), 1u);
    EXPECT_EQ(resources[0].name, "label");
    EXPECT_EQ(resources[0].className, "Label");
    EXPECT_EQ(resources[0].type, "String");
}

TEST(EditresResources, ThatEndTooEarlyAreRefused) {
    for (std::size_t size = 0; size < cResources.size(); ++size)
        EXPECT_THROW(ReadResources(cResources.substr(0, size)), UserError) << size;
}

TEST(EditresResources, OfAWidgetThatHasGoneAreRefused) {
    EXPECT_THROW(ReadResources(Bytes("\0\1\0\1\0\0\1\1\1\0\4gone")), UserError);
    EXPECT_THROW(ReadResources(Bytes("\0\0")), UserError);
}

TEST(EditresValue, IsAllThatFollowsItsCount) {
    EXPECT_EQ(ReadValue(Bytes("\0\1\0\2ok")), "ok");
    EXPECT_EQ(ReadValue(Bytes("\0\1\0\0")), "");
    // A count of 16 bits says 1 for 65537.
    EXPECT_EQ(ReadValue(Bytes("\0\1\0\1") + std::string(65537, 'x')), std::string(65537, 'x'));
}

TEST(EditresValue, IsNullForWhatTheProgramCannotTell) {
    EXPECT_EQ(ReadValue(Bytes("\0\1\0\7NoValue")), std::nullopt);
    EXPECT_EQ(ReadValue(Bytes("\0\1\0\6(null)")), std::nullopt);
    EXPECT_THROW(ReadValue(Bytes("\0\2\0\1a\0\1b")), UserError);
    EXPECT_THROW(ReadValue(Bytes("\0\1\0")), UserError);
}
