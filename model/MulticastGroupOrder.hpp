#pragma once

#include <set>
#include <vector>

#include "model/MulticastGroup.hpp"
#include "model/MulticastGroupPort.hpp"

/// Orders groups, and memberships by their groups, so that a set of them can be searched by key. Groups are
/// configured in the order of the lists beside the sets.
struct MulticastGroupOrder {
    using is_transparent = void;

    template <typename First, typename Second>
    bool operator()(First const& first, Second const& second) const {
        MulticastGroup::Key const one = keyOf(first);
        MulticastGroup::Key const other = keyOf(second);
        int const order = one.ip.compare(other.ip);
        return order < 0 || (order == 0 && one.vlanId < other.vlanId);
    }

private:
    static MulticastGroup::Key keyOf(MulticastGroup::Key const& key) { return key; }
    static MulticastGroup::Key keyOf(MulticastGroup const* group) { return group->getKey(); }
    static MulticastGroup::Key keyOf(MulticastGroupPort const* member) {
        return member->getMulticastGroup()->getKey();
    }
};

/// Adds a group or membership whose key is not there yet to a list and to the set that finds it by its key;
/// when there is no memory, to neither.
template <typename Element>
void addInOrder(Element* element, std::vector<Element*>& list, std::set<Element*, MulticastGroupOrder>& set) {
    list.push_back(element);
    try {
        set.insert(element);
    } catch (...) {
        list.pop_back();
        throw;
    }
}
