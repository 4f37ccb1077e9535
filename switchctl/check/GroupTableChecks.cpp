#include "switchctl/check/CheckTable.hpp"

#include <map>
#include <set>

#include "board/BoardReading.hpp"
#include "board/Wording.hpp"
#include "simulation/vsc7390/Vsc7390TestSide.hpp"
#include "switchctl/check/GroupAddress.hpp"

namespace switchctl::check {

namespace {

using Group = board::BoardReading::Group;
using Member = board::BoardReading::Member;
using Switch = board::BoardReading::Switch;

/// A group in the MAC table of a chip.
struct Entry {
    Group const* group = nullptr;
    GroupAddress address;
    unsigned int row = 0;
    /// Its ports on the chip, ascending: in the order in which the library adds them.
    std::map<unsigned int, xmlNodePtr> ports;

    bool sharesPlaceWith(Entry const& other) const {
        return row == other.row && address.getHardwareBits() == other.address.getHardwareBits();
    }
};

std::vector<Entry> entriesOf(board::BoardReading const& board, Switch const& owner) {
    std::vector<Entry> entries;
    for (Group const& group : board.getGroups()) {
        std::optional<GroupAddress> const address = GroupAddress::fromText(group.address);
        std::vector<Member const*> const members = board::BoardReading::addedMembers(group.members, owner.id);
        if (!address || members.empty()) {
            continue;
        }
        Entry entry{&group, *address, address->getRow(group.vlanId), {}};
        for (Member const* const member : members) {
            entry.ports.emplace(static_cast<unsigned int>(member->portId), member->element);
        }
        entries.push_back(entry);
    }
    return entries;
}

template <typename Use> void forEachVitesse(board::BoardReading const& board, Use use) {
    for (auto const& [switchId, owner] : board.getSwitches()) {
        if (owner.isVitesse()) {
            use(owner, entriesOf(board, owner));
        }
    }
}

std::string nameOf(Entry const& entry) {
    return entry.group->address + " of " + entry.group->getVlanName();
}

/// The first entry that has the place of entries[index].
Entry const& holderOf(std::vector<Entry> const& entries, std::size_t index) {
    std::size_t holder = 0;
    while (!entries[holder].sharesPlaceWith(entries[index])) {
        ++holder;
    }
    return entries[holder];
}

void sameEntry(board::BoardReading const& board, Report const& report) {
    forEachVitesse(board, [&](Switch const&, std::vector<Entry> const& entries) {
        for (std::size_t index = 0; index < entries.size(); ++index) {
            Entry const& holder = holderOf(entries, index);
            if (&holder != &entries[index]) {
                report(entries[index].ports.begin()->second,
                       "The chip keeps groups by 23 bits of the address and finds them by these and six bits "
                       "of the "
                       "VLAN id: " +
                           nameOf(entries[index]) + " falls on the entry of " + nameOf(holder) +
                           ". Their ports become one set, of the VLAN that is written last.",
                       "Choose addresses that differ in the low 23 bits.");
            }
        }
    });
}

void rowFull(board::BoardReading const& board, Report const& report) {
    forEachVitesse(board, [&](Switch const&, std::vector<Entry> const& entries) {
        std::map<unsigned int, unsigned int> used;
        for (std::size_t index = 0; index < entries.size(); ++index) {
            if (&holderOf(entries, index) != &entries[index]) {
                continue;
            }
            unsigned int const row = entries[index].row;
            if (++used[row] > simulation::Vsc7390TestSide::numberOfBuckets) {
                report(
                    entries[index].ports.begin()->second,
                    "Row " + std::to_string(row) +
                        " of the MAC table has room for four entries and is to hold more: the last place is "
                        "overwritten by each group that finds none, such as " +
                        nameOf(entries[index]) + ", and only the last one written there stays.",
                    "Choose another address or VLAN for one of the groups.");
            }
        }
    });
}

void portsForgotten(board::BoardReading const& board, Report const& report) {
    forEachVitesse(board, [&](Switch const& owner, std::vector<Entry> const& entries) {
        for (Entry const& entry : entries) {
            for (auto const& [port, element] : entry.ports) {
                if (port < owner.entryCount || port == entry.ports.rbegin()->first) {
                    continue;
                }
                report(element,
                       "Before the library adds the next port to group " + nameOf(entry) +
                           " it reads the ones that are in it, of the numbers 0 to " +
                           std::to_string(owner.entryCount) +
                           " exclusive, as it counts that many ports and trunks: "
                           "port " +
                           std::to_string(port) + " is lost.",
                       "List all 24 ports of the chip, unused ones with portStatus=\"disabled\".");
            }
        }
    });
}

} // namespace

std::vector<Check> groupTableChecks() {
    return {
        {"group-same-entry", Severity::error, "groups that fall on the same hardware entry", sameEntry},
        {"group-row-full", Severity::error, "more than four groups in a row of the hash table", rowFull},
        {"group-port-forgotten", Severity::error, "a group's port that is lost when the next one is added",
         portsForgotten},
    };
}

} // namespace switchctl::check
