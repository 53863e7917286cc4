#include "foundation/List.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>
#include <vector>

namespace {

struct Letter : ListNode {
    explicit Letter(char letter) : name(letter) {}
    char name;
};

char NameOf(ListNode const* node) {
    return node ? static_cast<Letter const*>(node)->name : '-';
}

// The names forwards, after a check that the way back is the same one.
std::string Names(List const& list) {
    std::string forwards;
    for (ListNode const* node = list.First(); node; node = node->Next()) forwards += NameOf(node);
    std::string backwards;
    for (ListNode const* node = list.Last(); node; node = node->Previous()) backwards += NameOf(node);
    EXPECT_EQ(std::string(backwards.rbegin(), backwards.rend()), forwards);
    EXPECT_EQ(list.Count(), forwards.size());
    return forwards;
}

using Walk = SequenceLoop<List, ListNode>;

// The names that a walk still visits, its current one included.
std::string Rest(Walk& walk) {
    std::string names;
    for (; !walk.AtEnd(); ++walk) names += NameOf(walk.Current());
    return names;
}

} // namespace

// A list of a, b, c and d, and three nodes that are in no list.
class ListOfLetters : public testing::Test {
protected:
    ListOfLetters() {
        for (Letter* letter : {&a, &b, &c, &d}) list.Add(*letter, AfterEnd());
    }

    Letter a{'a'}, b{'b'}, c{'c'}, d{'d'}, x{'x'}, y{'y'}, z{'z'};
    List list;
};

TEST(ListNode, IsInNoListAtFirst) {
    Letter const letter('a');
    EXPECT_FALSE(letter.IsInList());
    EXPECT_EQ(letter.Next(), nullptr);
    EXPECT_EQ(letter.Previous(), nullptr);
}

TEST(ListNode, LeavesItsListWhenItIsDestroyed) {
    List list;
    Letter a('a'), c('c');
    list.Add(a, AfterEnd());
    {
        Letter b('b');
        list.Add(b, AfterEnd());
        list.Add(c, AfterEnd());
        EXPECT_EQ(Names(list), "abc");
    }
    EXPECT_EQ(Names(list), "ac");
}

TEST(ListNode, IsInNoListOnceItsListIsDestroyed) {
    Letter a('a'), b('b');
    {
        List list;
        list.Add(a, AfterEnd());
        list.Add(b, AfterEnd());
    }
    EXPECT_FALSE(a.IsInList());
    EXPECT_EQ(a.Next(), nullptr);
    EXPECT_EQ(b.Previous(), nullptr);
}

TEST(ListNode, CannotBeCopied) {
    EXPECT_FALSE(std::is_copy_constructible_v<ListNode>);
    EXPECT_FALSE(std::is_copy_assignable_v<ListNode>);
    EXPECT_FALSE(std::is_copy_constructible_v<List>);
}

TEST(ListLink, RefersToItsObject) {
    int const object = 7;
    ListLink<int const> const link(object);
    EXPECT_EQ(&link.Object(), &object);
    EXPECT_FALSE(link.IsInList());
}

TEST(List, IsEmptyAtFirst) {
    List const list;
    EXPECT_EQ(list.First(), nullptr);
    EXPECT_EQ(list.Last(), nullptr);
    EXPECT_EQ(list.Count(), 0u);
}

TEST(List, AddsInFrontOfTheFirstNode) {
    List list;
    Letter a('a'), b('b'), c('c');
    for (Letter* letter : {&a, &b, &c}) list.Add(*letter, BeforeStart());
    EXPECT_EQ(Names(list), "cba");
}

TEST(List, AddsBehindTheLastNode) {
    List list;
    Letter a('a'), b('b'), c('c');
    for (Letter* letter : {&a, &b, &c}) list.Add(*letter, AfterEnd());
    EXPECT_EQ(Names(list), "abc");
}

TEST_F(ListOfLetters, AddsBesideANode) {
    list.Add(x, Before(), a);
    list.Add(y, After(), d);
    list.Add(z, Before(), c);
    EXPECT_EQ(Names(list), "xabzcdy");
    list.Remove(z);
    list.Add(z, After(), a);
    EXPECT_EQ(Names(list), "xazbcdy");
}

TEST_F(ListOfLetters, AddsBesideTheCurrentNodeOfAWalk) {
    Walk walk(list);
    ++walk;
    list.Add(x, Before(), walk);
    list.Add(y, After(), walk);
    EXPECT_EQ(Names(list), "axbycd");
    EXPECT_EQ(NameOf(walk.Current()), 'b');
}

TEST_F(ListOfLetters, AWalkKnowsTheNodesThatHaveComeBesideItsCurrentOneWhenThatGoes) {
    Walk walk(list);
    ++walk;
    list.Add(x, Before(), b);
    list.Add(y, After(), b);
    list.Remove(b);
    list.Add(z, Before(), walk);
    EXPECT_EQ(Names(list), "axzycd");
    ++walk;
    EXPECT_EQ(Rest(walk), "ycd");
}

TEST_F(ListOfLetters, AddingANodeThatIsInAListMovesIt) {
    list.Add(a, AfterEnd());
    EXPECT_EQ(Names(list), "bcda");
    list.Add(d, BeforeStart());
    EXPECT_EQ(Names(list), "dbca");
    list.Add(d, After(), b);
    EXPECT_EQ(Names(list), "bdca");
    list.Add(a, Before(), b);
    EXPECT_EQ(Names(list), "abdc");
    List other;
    other.Add(b, AfterEnd());
    EXPECT_EQ(Names(list), "adc");
    EXPECT_EQ(Names(other), "b");
}

TEST_F(ListOfLetters, ANodeBesideItselfStaysWhereItIs) {
    list.Add(b, Before(), b);
    list.Add(c, After(), c);
    EXPECT_EQ(Names(list), "abcd");
}

TEST_F(ListOfLetters, RemovesAtTheStartInTheMiddleAndAtTheEnd) {
    list.Remove(b);
    EXPECT_EQ(Names(list), "acd");
    list.Remove(a);
    EXPECT_EQ(Names(list), "cd");
    list.Remove(d);
    EXPECT_EQ(Names(list), "c");
    list.Remove(c);
    EXPECT_EQ(Names(list), "");
    EXPECT_EQ(list.First(), nullptr);
    EXPECT_EQ(list.Last(), nullptr);
}

TEST_F(ListOfLetters, ARemovedNodePointsNowhere) {
    list.Remove(b);
    EXPECT_FALSE(b.IsInList());
    EXPECT_EQ(b.Next(), nullptr);
    EXPECT_EQ(b.Previous(), nullptr);
    list.Add(b, AfterEnd());
    EXPECT_EQ(Names(list), "acdb");
}

TEST_F(ListOfLetters, RemovingANodeOfNoListOrOfAnotherDoesNothing) {
    List other;
    other.Add(x, AfterEnd());
    list.Remove(x);
    list.Remove(y);
    EXPECT_EQ(Names(list), "abcd");
    EXPECT_EQ(Names(other), "x");
}

TEST_F(ListOfLetters, RemovesAll) {
    list.RemoveAll();
    EXPECT_EQ(Names(list), "");
    for (Letter* letter : {&a, &b, &c, &d}) EXPECT_FALSE(letter->IsInList());
    list.RemoveAll();
    list.Add(c, AfterEnd());
    EXPECT_EQ(Names(list), "c");
}

TEST(ListWalk, OverAnEmptyListIsAtItsEnd) {
    List list;
    Walk walk(list);
    EXPECT_TRUE(walk.AtEnd());
    EXPECT_EQ(walk.Current(), nullptr);
    ++walk;
    EXPECT_TRUE(walk.AtEnd());
}

TEST_F(ListOfLetters, AWalkVisitsEachNodeOnceInOrder) {
    Walk walk(list);
    EXPECT_EQ(Rest(walk), "abcd");
    EXPECT_TRUE(walk.AtEnd());
    EXPECT_EQ(walk.Current(), nullptr);
}

TEST_F(ListOfLetters, RemovingTheCurrentNodeLeavesTheWalkAtTheOneBehind) {
    Walk walk(list);
    ++walk;
    list.Remove(b);
    EXPECT_EQ(walk.Current(), nullptr);
    EXPECT_FALSE(walk.AtEnd());
    ++walk;
    EXPECT_EQ(Rest(walk), "cd");
}

TEST_F(ListOfLetters, EveryNodeMayBeRemovedWhenTheWalkIsAtIt) {
    std::string visited;
    for (Walk walk(list); !walk.AtEnd(); ++walk) {
        visited += NameOf(walk.Current());
        list.Remove(*walk.Current());
    }
    EXPECT_EQ(visited, "abcd");
    EXPECT_EQ(Names(list), "");
}

TEST_F(ListOfLetters, RemovingTheNextNodesLeadsTheWalkPastThem) {
    Walk walk(list);
    list.Remove(b);
    list.Remove(c);
    EXPECT_EQ(Rest(walk), "ad");
}

TEST_F(ListOfLetters, RemovingTheCurrentNodeAndBothNeighboursKeepsTheWalkGoing) {
    Walk walk(list);
    ++walk;
    list.Remove(b);
    list.Remove(c);
    list.Remove(a);
    ++walk;
    EXPECT_EQ(Rest(walk), "d");
}

TEST_F(ListOfLetters, RemovingTheLastNodeWhileItIsCurrentEndsTheWalkAtTheNextStep) {
    Walk walk(list);
    for (int step = 0; step < 3; ++step) ++walk;
    list.Remove(d);
    EXPECT_FALSE(walk.AtEnd());
    ++walk;
    EXPECT_TRUE(walk.AtEnd());
}

TEST_F(ListOfLetters, RemovingAllEndsTheWalkAtTheNextStep) {
    Walk walk(list);
    ++walk;
    list.RemoveAll();
    EXPECT_EQ(walk.Current(), nullptr);
    ++walk;
    EXPECT_TRUE(walk.AtEnd());
}

TEST_F(ListOfLetters, AWalkVisitsNodesThatAreAddedBehindItAndNoneInFront) {
    Walk walk(list);
    ++walk;
    list.Add(x, BeforeStart());
    list.Add(y, AfterEnd());
    list.Add(z, After(), b);
    EXPECT_EQ(Rest(walk), "bzcdy");
}

TEST_F(ListOfLetters, AWalkVisitsANodeAddedWhileItIsAtTheLastOne) {
    Walk walk(list);
    for (int step = 0; step < 3; ++step) ++walk;
    list.Add(x, AfterEnd());
    EXPECT_EQ(Rest(walk), "dx");
}

TEST_F(ListOfLetters, AWalkAtItsEndStaysThere) {
    Walk walk(list);
    Rest(walk);
    list.Add(x, AfterEnd());
    EXPECT_TRUE(walk.AtEnd());
    ++walk;
    EXPECT_TRUE(walk.AtEnd());
    EXPECT_EQ(walk.Current(), nullptr);
}

TEST_F(ListOfLetters, AddingBesideAWalkAtItsEndAddsBehindTheLastNode) {
    Walk walk(list);
    Rest(walk);
    list.Add(x, Before(), walk);
    list.Add(y, After(), walk);
    EXPECT_EQ(Names(list), "abcdxy");
    list.Remove(y);
    list.Remove(x);
    list.Add(z, Before(), walk);
    EXPECT_EQ(Names(list), "abcdz");
}

// What a walk visits next when a node is added while it stands in the gap that "b" left.
struct GapCase {
    char const* where;
    void (*add)(List&, Letter& node, Letter& a, Letter& c, Walk& walk);
    char const* names;
    char const* rest;
};

class ListGap : public ListOfLetters, public testing::WithParamInterface<GapCase> {};

TEST_P(ListGap, AddsInTheGapOfAWalk) {
    Walk walk(list);
    ++walk;
    list.Remove(b);
    GetParam().add(list, x, a, c, walk);
    EXPECT_EQ(Names(list), GetParam().names);
    ++walk;
    EXPECT_EQ(Rest(walk), GetParam().rest);
}

INSTANTIATE_TEST_SUITE_P(
    EachWay, ListGap,
    testing::Values(
        GapCase{"BeforeTheWalk", [](List& l, Letter& n, Letter&, Letter&, Walk& w) { l.Add(n, Before(), w); },
                "axcd", "cd"},
        GapCase{"AfterTheWalk", [](List& l, Letter& n, Letter&, Letter&, Walk& w) { l.Add(n, After(), w); },
                "axcd", "xcd"},
        GapCase{"AfterTheNodeInFront",
                [](List& l, Letter& n, Letter& a, Letter&, Walk&) { l.Add(n, After(), a); }, "axcd", "cd"},
        GapCase{"BeforeTheNodeBehind",
                [](List& l, Letter& n, Letter&, Letter& c, Walk&) { l.Add(n, Before(), c); }, "axcd", "xcd"},
        GapCase{"AtTheStart", [](List& l, Letter& n, Letter&, Letter&, Walk&) { l.Add(n, BeforeStart()); },
                "xacd", "cd"},
        GapCase{"AtTheEnd", [](List& l, Letter& n, Letter&, Letter&, Walk&) { l.Add(n, AfterEnd()); }, "acdx",
                "cdx"}),
    [](auto const& gap) { return gap.param.where; });

TEST(ListWalk, InTheGapOfTheOnlyNodeVisitsWhatIsAddedAtTheEndAndNotAtTheStart) {
    List list;
    Letter a('a'), x('x'), y('y');
    list.Add(a, AfterEnd());
    Walk walk(list);
    list.Remove(a);
    list.Add(x, BeforeStart());
    list.Add(y, AfterEnd());
    EXPECT_EQ(Names(list), "xy");
    ++walk;
    EXPECT_EQ(Rest(walk), "y");
}

TEST_F(ListOfLetters, SeveralWalksKeepTheirOwnPlaces) {
    Walk first(list);
    Walk second(list);
    ++second;
    {
        Walk third(list);
        Rest(third);
        list.Remove(b);
    }
    list.Add(x, After(), a);
    EXPECT_EQ(Rest(first), "axcd");
    ++second;
    EXPECT_EQ(Rest(second), "cd");
}

TEST_F(ListOfLetters, WalksMayEndInAnyOrder) {
    auto first = std::make_unique<Walk>(list);
    auto second = std::make_unique<Walk>(list);
    auto third = std::make_unique<Walk>(list);
    second.reset();
    list.Remove(b);
    third.reset();
    list.Remove(c);
    EXPECT_EQ(Rest(*first), "ad");
}

TEST(ListWalk, IsAtItsEndOnceItsListIsDestroyed) {
    Letter a('a');
    auto list = std::make_unique<List>();
    list->Add(a, AfterEnd());
    Walk walk(*list);
    Walk another(*list);
    list.reset();
    EXPECT_TRUE(walk.AtEnd());
    EXPECT_TRUE(another.AtEnd());
    EXPECT_EQ(walk.Current(), nullptr);
}

// Each sequence of changes of a list of four nodes keeps a walk at the node where the plain way to say it
// would: the walk visits exactly the nodes that stay behind its place.
TEST(ListWalk, VisitsWhatStaysBehindItWhicheverNodesAreRemoved) {
    for (int position = 0; position < 4; ++position) {
        for (unsigned int removed = 0; removed < 16; ++removed) {
            Letter letters[] = {Letter('a'), Letter('b'), Letter('c'), Letter('d')};
            List list;
            for (Letter& letter : letters) list.Add(letter, AfterEnd());
            Walk walk(list);
            for (int step = 0; step < position; ++step) ++walk;
            std::string expected;
            for (int index = 0; index < 4; ++index) {
                bool const isRemoved = (removed >> index & 1u) != 0;
                if (isRemoved) list.Remove(letters[index]);
                if (!isRemoved && index > position) expected += letters[index].name;
            }
            ++walk;
            EXPECT_EQ(Rest(walk), expected) << "at " << position << ", removed " << removed;
        }
    }
}
