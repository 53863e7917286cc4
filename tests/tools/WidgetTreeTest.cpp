#include "tools/screen-user/UserError.h"
#include "tools/screen-user/Widget.h"

#include <gtest/gtest.h>

using namespace ScreenUser;

namespace {

Widget Make(char const* name, char const* className, std::optional<std::size_t> parent, Identity identity) {
    Widget widget;
    widget.name = name;
    widget.className = className;
    widget.parent = parent;
    widget.identity = std::move(identity);
    return widget;
}

// Two viewports with a list without a name each, and a twin of the second command.
WidgetTree Sample() {
    return {Make("sample", "Shell", std::nullopt, {1}), Make("form", "Form", 0, {1, 2}),
            Make("ok", "Command", 1, {1, 2, 3}),        Make("viewport", "Viewport", 1, {1, 2, 4}),
            Make("", "List", 3, {1, 2, 4, 5}),          Make("other", "Viewport", 1, {1, 2, 6}),
            Make("", "List", 5, {1, 2, 6, 7}),          Make("ok", "Command", 1, {1, 2, 8})};
}

struct PathCase {
    char const* path;
    std::optional<std::uint32_t> last; // of the identity
};

} // namespace

TEST(FindByPath, FollowsTheNamesFromTheShell) {
    WidgetTree const tree = Sample();
    PathCase const cases[] = {{"", 1},
                              {"form", 2},
                              {"form.ok", 3},
                              {"form.viewport", 4},
                              {"form.viewport.", 5},
                              {"form.other.", 7},
                              {"sample", std::nullopt},
                              {"ok", std::nullopt},
                              {"form.", std::nullopt},
                              {"form.ok.", std::nullopt},
                              {".form", std::nullopt},
                              {"form.viewport..", std::nullopt}};
    for (PathCase const& one : cases) {
        Widget const* const widget = FindByPath(tree, one.path);
        EXPECT_EQ(widget ? std::optional(widget->identity.back()) : std::nullopt, one.last) << one.path;
    }
    EXPECT_EQ(FindByPath({}, ""), nullptr);
}

TEST(FindByClass, GivesAllInTheOrderOfTheTree) {
    WidgetTree const tree = Sample();
    ASSERT_EQ(FindByClass(tree, "List").size(), 2u);
    EXPECT_EQ(FindByClass(tree, "List")[1].identity, (Identity{1, 2, 6, 7}));
    EXPECT_TRUE(FindByClass(tree, "Text").empty());
}

TEST(PathOf, IsWhatFindByPathReads) {
    WidgetTree const tree = Sample();
    char const* const paths[] = {"",           "form",        "form.ok", "form.viewport", "form.viewport.",
                                 "form.other", "form.other.", "form.ok"};
    for (std::size_t index = 0; index < tree.size(); ++index) EXPECT_EQ(PathOf(tree, index), paths[index]);
}

TEST(IsBelow, HoldsAtAnyDepthButNotForTheWidgetItself) {
    WidgetTree const tree = Sample();
    EXPECT_TRUE(LiesIn(tree, tree[4], tree[0]));
    EXPECT_TRUE(LiesIn(tree, tree[4], tree[3]));
    EXPECT_FALSE(LiesIn(tree, tree[4], tree[4]));
    EXPECT_FALSE(LiesIn(tree, tree[4], tree[5]));
    EXPECT_FALSE(LiesIn(tree, tree[3], tree[4]));
}

TEST(Current, IsTheWidgetOfTheSameIdentity) {
    WidgetTree const tree = Sample();
    EXPECT_EQ(&Current(tree, tree[7]), &tree[7]);
    EXPECT_THROW(Current({tree[0]}, tree[7]), UserError);
}

TEST(Describe, HasALineForEachWidget) {
    WidgetTree tree = Sample();
    tree.resize(2);
    tree[0].window = 0x2a;
    tree[0].area = {1, 2, 30, 40};
    EXPECT_EQ(Describe(tree), "Shell \"\" 0x2a 30x40 at 1,2 not mapped\n"
                              "  Form \"form\"\n");
}

TEST(Area, ContainsItsUpperLeftEdgesOnly) {
    Area const area{10, 20, 5, 6};
    EXPECT_TRUE(area.Contains({10, 20}));
    EXPECT_TRUE(area.Contains({14, 25}));
    EXPECT_FALSE(area.Contains({15, 25}));
    EXPECT_FALSE(area.Contains({14, 26}));
    EXPECT_FALSE(area.Contains({9, 20}));
}

TEST(Area, IntersectionIsWhatBothHave) {
    EXPECT_EQ((Area{0, 0, 10, 10}.Intersection({5, 6, 10, 10})), (Area{5, 6, 5, 4}));
    EXPECT_TRUE((Area{0, 0, 10, 10}.Intersection({10, 0, 5, 5})).IsEmpty());
}
