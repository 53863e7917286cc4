#pragma once

#include <cstddef>

// An intrusive doubly linked list: its nodes are parts of the objects that are listed, so that adding and
// removing neither allocate nor fail. The list owns nothing. It knows the walks in progress over it, and
// keeps them valid when nodes come and go. Nothing here has a lock.

class List;

// Where a node goes.
struct BeforeStart {};
struct AfterEnd {};
struct Before {};
struct After {};

// The place of one object in one list: a base of what is listed. Leaves its list when it is destroyed.
class ListNode {
public:
    ListNode() = default;
    ListNode(ListNode const&) = delete;
    ListNode& operator=(ListNode const&) = delete;
    ~ListNode();

    // Null at the ends of the list, and in no list.
    ListNode* Next() const { return m_next; }
    ListNode* Previous() const { return m_previous; }
    bool IsInList() const { return m_list != nullptr; }

private:
    friend class List;

    ListNode* m_next = nullptr;
    ListNode* m_previous = nullptr;
    // The list that the node is in. All three are null in none.
    List* m_list = nullptr;
};

// A node that refers to an object which is not itself the node. The object must outlive the link.
template <class T>
class ListLink : public ListNode {
public:
    explicit ListLink(T& object) : m_object(&object) {}

    T& Object() const { return *m_object; }

private:
    T* m_object;
};

template <class Sequence, class Node>
class SequenceLoop;

// One walk over a list, from its first node to its last, as long as this object lives:
//
//   for (SequenceLoop<List, ListNode> walk(list); !walk.AtEnd(); ++walk) Use(*walk.Current());
//
// Nodes may come and go meanwhile. The walk visits every node that stands behind the current one when it gets
// there, and none twice that stays in its place. When the current node is removed the walk stands between
// that node's neighbours, and goes on with the one behind. Walks register with their list, so that threads
// which walk one list at the same time need a lock, unlike those that only follow Next().
template <>
class SequenceLoop<List, ListNode> {
public:
    // At the first node.
    explicit SequenceLoop(List& list);
    SequenceLoop(SequenceLoop const&) = delete;
    SequenceLoop& operator=(SequenceLoop const&) = delete;
    ~SequenceLoop();

    // Whether the walk has gone past the last node. It stays there: nodes added later are not visited. The
    // walk over a list that has been destroyed is at its end.
    bool AtEnd() const { return m_atEnd; }
    // Null when the node has been removed since the walk came to it, and at the end.
    ListNode* Current() const { return m_node; }
    SequenceLoop& operator++();

private:
    friend class List;

    // Brings the walk in line with a node that has been linked, or is about to be unlinked. A node in the
    // very gap where the walk stands goes before or behind it.
    void OnAdded(ListNode& node, bool beforeGap);
    void OnRemove(ListNode const& node);

    // Invariant: the neighbours are those of the current node or, when that is null, of the gap in which the
    // walk stands.
    ListNode* m_node = nullptr;
    ListNode* m_next = nullptr;
    ListNode* m_previous = nullptr;
    List* m_list;
    SequenceLoop* m_nextWalk = nullptr;
    bool m_atEnd;
};

class List {
public:
    using Walk = SequenceLoop<List, ListNode>;

    List() = default;
    List(List const&) = delete;
    List& operator=(List const&) = delete;
    // Lets all nodes go.
    ~List();

    // A node that is in a list already, this one or another, leaves it first.
    void Add(ListNode& node, BeforeStart);
    void Add(ListNode& node, AfterEnd);
    // Beside a node of this list. Beside itself a node stays where it is.
    void Add(ListNode& node, Before, ListNode const& position);
    void Add(ListNode& node, After, ListNode const& position);
    // Beside the current node of a walk over this list; where that has been removed, in the gap that it left:
    // with After the walk visits the node next. At the end of the walk both add behind the last node.
    void Add(ListNode& node, Before, Walk const& position);
    void Add(ListNode& node, After, Walk const& position);

    // A node that is not in this list stays as it is.
    void Remove(ListNode& node);
    void RemoveAll();

    ListNode* First() const { return m_first; }
    ListNode* Last() const { return m_last; }
    // Counts the nodes one by one.
    std::size_t Count() const;

private:
    friend class SequenceLoop<List, ListNode>;

    void Link(ListNode& node, ListNode* previous, ListNode* next, bool beforeGap);

    Walk* m_walks = nullptr;
    ListNode* m_first = nullptr;
    ListNode* m_last = nullptr;
};
