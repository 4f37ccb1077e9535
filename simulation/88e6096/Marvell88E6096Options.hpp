#pragma once

#include <cstdint>

namespace simulation {

/// What the data sheet of an 88E6096 leaves open, and the delays of the model.
struct Marvell88E6096Options {
    enum class VlanTableReset { allButOwn, none };
    enum class PortStateReset : unsigned { disabled = 0, blocking = 1, learning = 2, forwarding = 3 };
    enum class StorageReset { asFamily, zero };
    enum class SidWidth : unsigned { bits6 = 6, bits12 = 12 };
    enum class SearchMiss { zeros, kept };
    enum class SoftwareReset { keepsRegisters, restoresDefaults };
    enum class DoneFlags { clearedByRead, stay };
    enum class PhyReset { keepsOtherBits, restoresDefaults };
    enum class VlanTableScope { everyMode, withoutVtuOnly };
    enum class SpanningTreeScope { ingressAndEgress, ingressOnly };

    /// Bits 3:0 of the switch identifier.
    unsigned revision = 0;

    /// Which ports a port may send to after reset.
    VlanTableReset vlanTableReset = VlanTableReset::allButOwn;

    /// DefaultVID of every port after reset.
    unsigned defaultVidReset = 1;

    /// A strap decides: a chip that is strapped to a processor starts with all ports disabled, and its
    /// driver has to open each. Nothing opens ports without link settings here, so boards that work have
    /// the other strap. Global 1 shows which one it is: 2 (stand-alone) unless ports start disabled. Likely:
    /// the codes are those of older chips of the family.
    PortStateReset portStateReset = PortStateReset::forwarding;

    /// What registers hold after reset that the model only stores. Likely: what chips of the same family
    /// hold. Zero for who wants to see all that a driver sets.
    StorageReset storageReset = StorageReset::asFamily;

    /// With 6 bits, VLANs whose numbers are equal modulo 64 share their spanning-tree states.
    SidWidth sidWidth = SidWidth::bits6;

    /// What a GetNext that finds nothing leaves in the staging registers besides the key.
    SearchMiss searchMiss = SearchMiss::zeros;

    /// What SWReset does besides clearing itself. Likely: later chips of the family keep their registers.
    SoftwareReset softwareReset = SoftwareReset::keepsRegisters;

    /// StatsDone, VTUDone and ATUDone of the global status once it was read over the bus. Likely: they are
    /// causes of interrupts, which later chips of the family clear that way.
    DoneFlags doneFlags = DoneFlags::clearedByRead;

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
