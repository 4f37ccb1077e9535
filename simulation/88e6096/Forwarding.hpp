#pragma once

#include <deque>

#include "simulation/88e6096/Context.hpp"
#include "simulation/88e6096/FrameCounters.hpp"
#include "simulation/88e6096/Snapshot.hpp"
#include "simulation/network/ChipForwarding.hpp"

namespace simulation::marvell {

/// How an 88E6096 forwards frames. The rules are in Passage.
class Forwarding : public ChipForwarding {
public:
    /// All must outlive the object.
    Forwarding(Context& context, std::deque<Port>& ports, Global1& global1, Global2 const& global2);

    unsigned getNumberOfPorts() const override { return Snapshot::numberOfPorts; }

    /// \name Registers or links have changed; with the board's mutex held
    /// @{
    void markPort(unsigned port) { _snapshot.markPort(port); }
    void markChip() { _snapshot.markChip(); }
    void markAll() { _snapshot.markAll(); }
    /// @}

private:
    void doReceive(unsigned port, EthernetFrame const& frame, Decision& decision) override;
    void doDecide(unsigned port, EthernetFrame const& frame, std::uint32_t among,
                  Decision& decision) const override;
    bool doHasLink(unsigned port) const override { return _ports[port].hasLink(); }
    unsigned doGetMegabits(unsigned port) const override { return _ports[port].getMegabits(); }

    Passage follow(unsigned port, EthernetFrame const& frame, std::uint32_t among, Decision& decision) const;
    void leaveTraces(unsigned port, EthernetFrame const& frame, Passage const& passage, Decision& decision);

    Context& _context;
    std::deque<Port> const& _ports;
    Global1& _global1;
    mutable Snapshot _snapshot;
    FrameCounters _counters;
};

} // namespace simulation::marvell
