#pragma once

#include "dialogs/ActionRequest.h"

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <map>
#include <set>
#include <utility>

// Pending actions in order of arrival. IDs need not be unique. Finding the first action of an ID and removing
// any action take logarithmic time, so that a client may send and withdraw any number of them, in any order.
// What the dialog needs to know after each change is at hand without a walk.
//
// A request is never edited after it has arrived. Iterators and references stay valid until their own action
// is removed.
class ActionRequestList {
    // Requests by their number of arrival.
    using Requests = std::map<std::uint64_t, ActionRequest>;

public:
    class const_iterator {
    public:
        using iterator_category = std::bidirectional_iterator_tag;
        using value_type = ActionRequest;
        using difference_type = std::ptrdiff_t;
        using pointer = ActionRequest const*;
        using reference = ActionRequest const&;

        const_iterator() = default;
        reference operator*() const { return m_position->second; }
        pointer operator->() const { return &m_position->second; }
        const_iterator& operator++() {
            ++m_position;
            return *this;
        }
        const_iterator operator++(int) { return const_iterator(m_position++); }
        const_iterator& operator--() {
            --m_position;
            return *this;
        }
        const_iterator operator--(int) { return const_iterator(m_position--); }
        friend bool operator==(const_iterator const&, const_iterator const&) = default;

    private:
        friend class ActionRequestList;
        explicit const_iterator(Requests::const_iterator position) : m_position(position) {}

        Requests::const_iterator m_position;
    };

    const_iterator begin() const { return const_iterator(m_requests.begin()); }
    const_iterator end() const { return const_iterator(m_requests.end()); }
    bool empty() const { return m_requests.empty(); }
    std::size_t size() const { return m_requests.size(); }
    // How many of the actions have a row in the dialog: all but those whose title shows nothing.
    std::size_t CountRows() const { return m_rows; }
    // Of all actions that have one; null for none.
    NullOr<Instant> EarliestDeadline() const;
    // Must not be empty.
    ActionRequest const& front() const { return *begin(); }
    ActionRequest const& back() const { return *std::prev(end()); }

    // Appends behind the last one. The list is unchanged when this throws.
    void push_back(ActionRequest request);
    // The first action of that ID; end() when there is none.
    const_iterator FindFirst(unsigned long id) const;
    // Removes one action and returns the position behind it.
    const_iterator erase(const_iterator position);
    void clear();

private:
    Requests m_requests;
    // ID and number of arrival of every request.
    std::set<std::pair<unsigned long, std::uint64_t>> m_byID;
    // The deadlines of all requests that have one.
    std::multiset<Instant> m_deadlines;
    std::size_t m_rows = 0;
    std::uint64_t m_nextArrival = 0;
};

// A title that is empty, or that ends before it begins, has nothing to show.
bool HasRow(ActionRequest const& request);
