#include "foundation/List.h"

ListNode::~ListNode() {
    if (m_list) m_list->Remove(*this);
}

SequenceLoop<List, ListNode>::SequenceLoop(List& list)
    : m_node(list.m_first),
      m_next(m_node ? m_node->Next() : nullptr),
      m_list(&list),
      m_nextWalk(list.m_walks),
      m_atEnd(!m_node) {
    list.m_walks = this;
}

SequenceLoop<List, ListNode>::~SequenceLoop() {
    if (!m_list) return;
    SequenceLoop** walk = &m_list->m_walks;
    while (*walk != this) walk = &(*walk)->m_nextWalk;
    *walk = m_nextWalk;
}

SequenceLoop<List, ListNode>& SequenceLoop<List, ListNode>::operator++() {
    if (m_node) m_previous = m_node;
    m_node = m_next;
    m_atEnd = !m_node;
    if (m_node) m_next = m_node->Next();
    return *this;
}

void SequenceLoop<List, ListNode>::OnAdded(ListNode& node, bool beforeGap) {
    if (m_node) {
        if (m_node == node.Previous()) m_next = &node;
        if (m_node == node.Next()) m_previous = &node;
    } else if (m_previous == node.Previous() && m_next == node.Next()) {
        (beforeGap || m_atEnd ? m_previous : m_next) = &node;
    }
}

void SequenceLoop<List, ListNode>::OnRemove(ListNode const& node) {
    if (m_node == &node) m_node = nullptr;
    if (m_next == &node) m_next = node.Next();
    if (m_previous == &node) m_previous = node.Previous();
}

List::~List() {
    RemoveAll();
    for (Walk* walk = m_walks; walk; walk = walk->m_nextWalk) {
        walk->m_list = nullptr;
        walk->m_atEnd = true;
    }
}

void List::Add(ListNode& node, BeforeStart) {
    if (node.m_list) node.m_list->Remove(node);
    Link(node, nullptr, m_first, true);
}

void List::Add(ListNode& node, AfterEnd) {
    if (node.m_list) node.m_list->Remove(node);
    Link(node, m_last, nullptr, false);
}

void List::Add(ListNode& node, Before, ListNode const& position) {
    if (&node == &position) return;
    if (node.m_list) node.m_list->Remove(node);
    ListNode* const previous = position.m_previous;
    Link(node, previous, previous ? previous->m_next : m_first, false);
}

void List::Add(ListNode& node, After, ListNode const& position) {
    if (&node == &position) return;
    if (node.m_list) node.m_list->Remove(node);
    ListNode* const next = position.m_next;
    Link(node, next ? next->m_previous : m_last, next, true);
}

void List::Add(ListNode& node, Before, Walk const& position) {
    if (position.m_node) return Add(node, Before(), *position.m_node);
    if (node.m_list) node.m_list->Remove(node);
    Link(node, position.m_previous, position.m_next, true);
}

void List::Add(ListNode& node, After, Walk const& position) {
    if (position.m_node) return Add(node, After(), *position.m_node);
    if (node.m_list) node.m_list->Remove(node);
    Link(node, position.m_previous, position.m_next, false);
}

void List::Link(ListNode& node, ListNode* previous, ListNode* next, bool beforeGap) {
    node.m_previous = previous;
    node.m_next = next;
    node.m_list = this;
    (previous ? previous->m_next : m_first) = &node;
    (next ? next->m_previous : m_last) = &node;
    for (Walk* walk = m_walks; walk; walk = walk->m_nextWalk) walk->OnAdded(node, beforeGap);
}

void List::Remove(ListNode& node) {
    if (node.m_list != this) return;
    for (Walk* walk = m_walks; walk; walk = walk->m_nextWalk) walk->OnRemove(node);
    (node.m_previous ? node.m_previous->m_next : m_first) = node.m_next;
    (node.m_next ? node.m_next->m_previous : m_last) = node.m_previous;
    node.m_next = nullptr;
    node.m_previous = nullptr;
    node.m_list = nullptr;
}

void List::RemoveAll() {
    while (m_first) Remove(*m_first);
}

std::size_t List::Count() const {
    std::size_t count = 0;
    for (ListNode const* node = m_first; node; node = node->m_next) ++count;
    return count;
}
