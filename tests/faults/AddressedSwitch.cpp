#include "tests/faults/AddressedSwitch.hpp"

#include <optional>

namespace fault_test {

namespace {

constexpr unsigned parallelBus = 0xF3000000;
constexpr unsigned miiCommand = 0x80010010;
constexpr unsigned phyAddressPosition = 5;
constexpr unsigned phyAddressMask = 0x1F;

} // namespace

// An access to the MDIO master is for the switch of the frame that comes next; after the last one, for
// that of the last.
std::vector<unsigned> addressedSwitches(std::vector<simulation::BusFaults::Access> const& record,
                                        unsigned parallelSwitch) {
    std::vector<unsigned> switches(record.size(), parallelSwitch);
    std::optional<unsigned> next;
    std::vector<std::size_t> afterLastFrame;
    for (std::size_t i = record.size(); i-- > 0;) {
        if (record[i].physicalAddress >= parallelBus) {
            continue;
        }
        if (record[i].isWrite && record[i].physicalAddress == miiCommand) {
            next = record[i].value >> phyAddressPosition & phyAddressMask;
            for (std::size_t const later : afterLastFrame) {
                switches[later] = *next;
            }
            afterLastFrame.clear();
        }
        if (next) {
            switches[i] = *next;
        } else {
            afterLastFrame.push_back(i);
        }
    }
    return switches;
}

} // namespace fault_test
