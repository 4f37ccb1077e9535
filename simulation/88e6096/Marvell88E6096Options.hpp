#pragma once

#include <cstdint>

namespace simulation {

/// What the data sheet of an 88E6096 leaves open, and the delays of the model.
struct Marvell88E6096Options {
    enum class VlanTableReset { allButOwn, none };
    enum class PortStateReset : unsigned { disabled = 0, blocking = 1, learning = 2, forwarding = 3 };
    enum class SidWidth : unsigned { bits6 = 6, bits12 = 12 };
    enum class SearchMiss { zeros, kept };
    enum class PhyReset { keepsOtherBits, restoresDefaults };
    enum class VlanTableScope { everyMode, withoutVtuOnly };
    enum class SpanningTreeScope { ingressAndEgress, ingressOnly };

    /// Bits 3:0 of the switch identifier.
    unsigned revision = 0;

    /// Which ports a port may send to after reset.
    VlanTableReset vlanTableReset = VlanTableReset::allButOwn;

    /// DefaultVID of every port after reset.
    unsigned defaultVidReset = 1;

    PortStateReset portStateReset = PortStateReset::forwarding;

    /// With 6 bits, VLANs whose numbers are equal modulo 64 share their spanning-tree states.
    SidWidth sidWidth = SidWidth::bits6;

    /// What a GetNext that finds nothing leaves in the staging registers besides the key.
    SearchMiss searchMiss = SearchMiss::zeros;

    PhyReset phyReset = PhyReset::keepsOtherBits;

    /// Matters to forwarded frames only, which this model does not carry; no register shows it.
    VlanTableScope vlanTableScope = VlanTableScope::everyMode;

    /// As vlanTableScope: for forwarded frames only.
    SpanningTreeScope spanningTreeScope = SpanningTreeScope::ingressAndEgress;

    /// How long each command unit shows busy after a command, in nanoseconds. Results are there at
    /// once and inputs are taken at the start, however long it is.
    std::uint64_t smiBusyNanoseconds = 0;
    std::uint64_t smiPhyBusyNanoseconds = 0;
    std::uint64_t vtuBusyNanoseconds = 0;
    std::uint64_t atuBusyNanoseconds = 0;
    std::uint64_t statisticsBusyNanoseconds = 0;
};

} // namespace simulation
