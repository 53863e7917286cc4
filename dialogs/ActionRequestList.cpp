#include "dialogs/ActionRequestList.h"

// Invariants: m_byID holds exactly one entry for each request, m_deadlines one for each request with a
// deadline, and m_rows counts those with a row. Numbers of arrival are never used again; 64 bits of them do
// not run out.

bool HasRow(ActionRequest const& request) {
    return !request.title.empty() && request.title.Ref().begin()[0] != 0;
}

// Whatever can fail goes into containers of its own first; joining nodes to a container cannot fail.
void ActionRequestList::push_back(ActionRequest request) {
    NullOr<Instant> const deadline = request.Deadline();
    decltype(m_byID) indexed{{request.id, m_nextArrival}};
    decltype(m_deadlines) dated;
    if (deadline) dated.insert(*deadline);
    bool const hasRow = HasRow(request);
    m_requests.emplace_hint(m_requests.end(), m_nextArrival, std::move(request));
    m_byID.merge(indexed);
    m_deadlines.merge(dated);
    if (hasRow) ++m_rows;
    ++m_nextArrival;
}

NullOr<Instant> ActionRequestList::EarliestDeadline() const {
    return m_deadlines.empty() ? NullOr<Instant>() : NullOr<Instant>(*m_deadlines.begin());
}

ActionRequestList::const_iterator ActionRequestList::FindFirst(unsigned long id) const {
    auto const found = m_byID.lower_bound({id, 0});
    if (found == m_byID.end() || found->first != id) return end();
    return const_iterator(m_requests.find(found->second));
}

ActionRequestList::const_iterator ActionRequestList::erase(const_iterator position) {
    m_byID.erase({position->id, position.m_position->first});
    if (NullOr<Instant> const deadline = position->Deadline(); deadline)
        m_deadlines.erase(m_deadlines.find(*deadline));
    if (HasRow(*position)) --m_rows;
    return const_iterator(m_requests.erase(position.m_position));
}

void ActionRequestList::clear() {
    m_requests.clear();
    m_byID.clear();
    m_deadlines.clear();
    m_rows = 0;
}
