#pragma once

#include <array>
#include <cstdint>
#include <deque>

#include "simulation/88e6096/Passage.hpp"
#include "simulation/88e6096/Registers.hpp"
#include "simulation/88e6096/Statistics.hpp"

namespace simulation::marvell {

/// What ports count of frames that come and go.
class FrameCounters {
public:
    /// A counter that no frame moves, because nothing here makes happen what it counts.
    struct StillCounter {
        /// Of the 32 counters, or a register of the port.
        unsigned counter;
        char const* reason;
    };
    static constexpr std::array<StillCounter, 9> stillCounters = {{
        {statistics::outFcsError, "no frame is spoilt inside"},
        {statistics::deferred, "no half-duplex line is shared"},
        {statistics::excessive, "no half-duplex line is shared"},
        {statistics::single, "no half-duplex line is shared"},
        {statistics::outPause, "no port runs out of room"},
        {statistics::multiple, "no half-duplex line is shared"},
        {statistics::inRxError, "a line sends whole bytes"},
        {statistics::collisions, "no half-duplex line is shared"},
        {statistics::late, "no half-duplex line is shared"},
    }};
    static constexpr std::array<StillCounter, 2> stillRegisters = {{
        {port::inDiscardsLow, "the chip does not run out of room"},
        {port::inDiscardsHigh, "the chip does not run out of room"},
    }};

    /// Both must outlive the object.
    FrameCounters(Statistics& statistics, std::deque<Port>& ports) : _statistics(statistics), _ports(ports) {}

    void countReceived(unsigned port, EthernetFrame const& frame, Passage::Reception reception);
    void countSent(unsigned port, EthernetFrame const& frame);

    /// Frames that VLAN rules keep from entering, or from leaving by ports, bit n for port n.
    void countInFiltered(unsigned port);
    void countOutFiltered(std::uint32_t ports);

private:
    void countSize(unsigned port, std::size_t octets);

    Statistics& _statistics;
    std::deque<Port>& _ports;
};

} // namespace simulation::marvell
