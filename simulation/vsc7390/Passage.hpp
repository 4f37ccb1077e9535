#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "simulation/network/Decision.hpp"
#include "simulation/vsc7390/Snapshot.hpp"

namespace simulation::vitesse {

/// A frame on its way through the chip, and what the rules have made of it so far.
struct Passage {
    /// What the counters of the port have of the frame.
    enum class Arrival { none, good, bad };

    /// All must outlive the object.
    Passage(EthernetFrame const& received, unsigned port, Snapshot::PortSettings const& settings,
            Decision& made)
        : frame(received),
          ingress(port),
          receiver(settings),
          destination(received.getDestinationClass()),
          tag(received.getTag()),
          decision(made) {}

    EthernetFrame const& frame;
    unsigned ingress;
    Snapshot::PortSettings const& receiver;
    EthernetFrame::DestinationClass destination;
    /// The outer tag that the frame came with.
    std::optional<EthernetFrame::Tag> tag;

    Decision& decision;
    Arrival arrival = Arrival::none;
    /// The receiving port counts it as dropped.
    bool isDropped = false;
    /// Not a frame of its VLAN.
    bool isIntruder = false;
    /// The MAC table is to have its source.
    bool isToLearn = false;

    /// VLAN and priority that the frame has got.
    EthernetFrame::Tag classified;
    VlanTable::Entry vlan;
    /// Where it may go, bit n for port n.
    std::uint32_t ports = 0;
    bool ignoresVlan = false;
    /// The ports that the destination may lie behind.
    std::uint32_t among = ~0U;

    /// No port gets the frame; the first reason stays.
    void drop(std::string reason) {
        ports = 0;
        if (decision.dropReason.empty()) {
            decision.dropReason = std::move(reason);
        }
    }
};

} // namespace simulation::vitesse
