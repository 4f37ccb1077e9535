#include "simulation/network/ChipForwarding.hpp"

#include <stdexcept>
#include <string>

namespace simulation {

Decision ChipForwarding::receive(unsigned port, EthernetFrame const& frame) {
    auto const held = lockFor(port);
    return doReceive(port, frame);
}

Decision ChipForwarding::decide(unsigned port, EthernetFrame const& frame, std::uint32_t among) const {
    auto const held = lockFor(port);
    return doDecide(port, frame, among);
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
