#include "simulation/network/ChipForwarding.hpp"

#include <stdexcept>
#include <string>

namespace simulation {

Decision ChipForwarding::receive(unsigned port, EthernetFrame const& frame) {
    Decision decision;
    receive(port, frame, decision);
    return decision;
}

void ChipForwarding::receive(unsigned port, EthernetFrame const& frame, Decision& decision) {
    auto const held = lockFor(port);
    decision.clear();
    doReceive(port, frame, decision);
}

Decision ChipForwarding::decide(unsigned port, EthernetFrame const& frame, std::uint32_t among) const {
    auto const held = lockFor(port);
    Decision decision;
    doDecide(port, frame, among, decision);
    return decision;
}

bool ChipForwarding::hasLink(unsigned port) const {
    auto const held = lockFor(port);
    return doHasLink(port);
}

unsigned ChipForwarding::getMegabits(unsigned port) const {
    auto const held = lockFor(port);
    return doGetMegabits(port);
}

std::unique_lock<std::recursive_mutex> ChipForwarding::lockFor(unsigned port) const {
    if (port >= getNumberOfPorts()) {
        throw std::out_of_range("the chip has no port " + std::to_string(port));
    }
    return std::unique_lock<std::recursive_mutex>(_services.mutex);
}

} // namespace simulation
