#pragma once

#include <cstdint>
#include <deque>

#include "simulation/88e6096/Passage.hpp"
#include "simulation/88e6096/Statistics.hpp"

namespace simulation::marvell {

/// What ports count of frames that come and go.
///
/// Not modelled, because nothing here makes them happen: Deferred, Excessive, Single, Multiple, Collisions
/// and Late (no half-duplex line is shared), OutFCSErr (no frame is spoilt inside), InRxErr (a line sends
/// whole bytes), OutPause (no port runs out of room), InDiscards (nor does the chip).
class FrameCounters {
public:
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
