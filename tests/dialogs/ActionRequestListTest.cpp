#include "dialogs/ActionRequestList.h"

#include <gtest/gtest.h>

namespace {

ActionRequest Request(unsigned long id, UStringRef<UTF8> title = UStringRef<UTF8>()) {
    ActionRequest request;
    request.id = id;
    request.SetTitle(title);
    return request;
}

std::vector<unsigned long> IDs(ActionRequestList const& list) {
    std::vector<unsigned long> ids;
    for (ActionRequest const& request : list) ids.push_back(request.id);
    return ids;
}

ActionRequestList ListOf(std::vector<unsigned long> const& ids) {
    ActionRequestList list;
    for (unsigned long const id : ids) list.push_back(Request(id));
    return list;
}

} // namespace

TEST(ActionRequestList, KeepsTheOrderOfArrival) {
    EXPECT_EQ(IDs(ListOf({5, 1, 9, 1})), (std::vector<unsigned long>{5, 1, 9, 1}));
}

TEST(ActionRequestList, FindsTheFirstOfSeveralWithOneID) {
    ActionRequestList list;
    list.push_back(Request(2, "other"_utf8));
    list.push_back(Request(1, "first"_utf8));
    list.push_back(Request(1, "second"_utf8));
    EXPECT_TRUE(list.FindFirst(1)->title == "first"_utf8);
    list.erase(list.FindFirst(1));
    EXPECT_TRUE(list.FindFirst(1)->title == "second"_utf8);
    list.erase(list.FindFirst(1));
    EXPECT_EQ(list.FindFirst(1), list.end());
}

TEST(ActionRequestList, FindsNothingForAnUnknownID) {
    ActionRequestList const nothing;
    EXPECT_EQ(nothing.FindFirst(0), nothing.end());
    ActionRequestList const list = ListOf({1, 3});
    for (unsigned long const id : {0ul, 2ul, 4ul, ~0ul}) EXPECT_EQ(list.FindFirst(id), list.end());
}

TEST(ActionRequestList, ErasingGivesThePositionBehind) {
    ActionRequestList list = ListOf({1, 2, 3});
    auto next = list.erase(std::next(list.begin()));
    EXPECT_EQ(next->id, 3u);
    next = list.erase(next);
    EXPECT_EQ(next, list.end());
    EXPECT_EQ(IDs(list), (std::vector<unsigned long>{1}));
}

TEST(ActionRequestList, ErasingALaterOneOfAnIDKeepsTheEarlier) {
    ActionRequestList list;
    list.push_back(Request(1, "first"_utf8));
    list.push_back(Request(1, "second"_utf8));
    list.erase(std::prev(list.end()));
    EXPECT_TRUE(list.FindFirst(1)->title == "first"_utf8);
    EXPECT_EQ(list.size(), 1u);
}

TEST(ActionRequestList, ClearForgetsIDsToo) {
    ActionRequestList list = ListOf({1, 2});
    list.clear();
    EXPECT_TRUE(list.empty());
    EXPECT_EQ(list.FindFirst(1), list.end());
    list.push_back(Request(1));
    EXPECT_EQ(list.front().id, 1u);
    EXPECT_EQ(list.back().id, 1u);
}
