#include "dialogs/ActionRequestList.h"

// Invariant: m_byID holds exactly one entry for each request. Numbers of arrival are never used again; 64
// bits of them do not run out.

void ActionRequestList::push_back(ActionRequest request) {
    std::uint64_t const arrival = m_nextArrival++;
    auto const indexed = m_byID.emplace(request.id, arrival).first;
    try {
        m_requests.emplace_hint(m_requests.end(), arrival, std::move(request));
    } catch (...) {
        m_byID.erase(indexed);
        throw;
    }
}

ActionRequestList::const_iterator ActionRequestList::FindFirst(unsigned long id) const {
    auto const found = m_byID.lower_bound({id, 0});
    if (found == m_byID.end() || found->first != id) return end();
    return const_iterator(m_requests.find(found->second));
}

ActionRequestList::const_iterator ActionRequestList::erase(const_iterator position) {
    m_byID.erase({position->id, position.m_position->first});
    return const_iterator(m_requests.erase(position.m_position));
}

void ActionRequestList::clear() {
    m_requests.clear();
    m_byID.clear();
}
