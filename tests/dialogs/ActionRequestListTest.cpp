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

namespace {

ActionRequest DueAt(unsigned long id, long long microseconds, std::int32_t zone = 0) {
    ActionRequest request = Request(id, "title"_utf8);
    request.deadline = TimeObject(Instant::FromMicroseconds(microseconds), TimeZone::FromSeconds(zone));
    return request;
}

} // namespace

TEST(ActionRequestList, KnowsItsEarliestDeadline) {
    ActionRequestList list;
    EXPECT_TRUE(list.EarliestDeadline().IsNull());
    list.push_back(Request(1));
    EXPECT_TRUE(list.EarliestDeadline().IsNull());
    list.push_back(DueAt(2, 5000000, 3600));
    list.push_back(DueAt(3, 4000000));
    list.push_back(DueAt(4, 4000000));
    EXPECT_EQ(*list.EarliestDeadline(), Instant::FromMicroseconds(4000000));
    list.erase(list.FindFirst(3));
    EXPECT_EQ(*list.EarliestDeadline(), Instant::FromMicroseconds(4000000)) << "another one has the same";
    list.erase(list.FindFirst(4));
    EXPECT_EQ(*list.EarliestDeadline(), Instant::FromMicroseconds(5000000));
    list.erase(list.FindFirst(2));
    EXPECT_TRUE(list.EarliestDeadline().IsNull());
    list.push_back(DueAt(5, 1));
    list.clear();
    EXPECT_TRUE(list.EarliestDeadline().IsNull());
}

TEST(ActionRequestList, CountsTheRowsThatItsTitlesMake) {
    ActionRequestList list;
    list.push_back(Request(1, "a"_utf8));
    list.push_back(Request(2));
    list.push_back(Request(3, MakeUTF8Ref(std::string("\0b", 2))));
    list.push_back(Request(4, " "_utf8));
    EXPECT_EQ(list.CountRows(), 2u);
    list.erase(list.FindFirst(2));
    EXPECT_EQ(list.CountRows(), 2u);
    list.erase(list.FindFirst(1));
    EXPECT_EQ(list.CountRows(), 1u);
    list.clear();
    EXPECT_EQ(list.CountRows(), 0u);
}
