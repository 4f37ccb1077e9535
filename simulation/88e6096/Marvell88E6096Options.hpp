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
    enum class DisabledPort { alwaysCloses, vlanStateGoesFirst };
    enum class UnknownSid { ownState, blocking };
    enum class OwnPort { vlanTableOnly, never };
    enum class PriorityTag { countsAsUntagged, countsAsTagged };
    enum class ForcedVid { with8021QOnly, always };
    enum class EgressCheck { none, withoutVtuHit };
    enum class DisabledCounting { off, on };

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

    /// \name What happens to frames
    /// @{

    /// Whether VLANTable of the ingress port limits frames of VLANs in the VTU, too. Likely: drivers of the
    /// family open it fully when they turn 802.1Q on.
    VlanTableScope vlanTableScope = VlanTableScope::everyMode;

    /// Whether the states of a VLAN close ports to frames that leave. Likely: a tree that blocks a port
    /// would not be free of loops otherwise.
    SpanningTreeScope spanningTreeScope = SpanningTreeScope::ingressAndEgress;

    /// Whether PortState 0 closes a port whatever the state of the VLAN. Assumed: who disables a port does
    /// so with PortState alone.
    DisabledPort disabledPort = DisabledPort::alwaysCloses;

    /// What a VLAN's SID says without an entry in the STU. Assumed: what it says in an entry of zeros.
    UnknownSid unknownSid = UnknownSid::ownState;

    /// Whether anything besides the port's own bit of VLANTable keeps a frame from where it came. Likely not:
    /// drivers of the family clear that bit for this very reason.
    OwnPort ownPort = OwnPort::vlanTableOnly;

    /// What a tag with VID 0 is to the VLAN rules. Assumed: IEEE 802.1Q says that it has a priority only.
    PriorityTag priorityTag = PriorityTag::countsAsUntagged;

    /// Whether ForceDefaultVID matters to a port with 802.1Q disabled. Likely not: a later chip's reference
    /// says so.
    ForcedVid forcedVid = ForcedVid::with8021QOnly;

    /// Whether a port that checks VLANs, or is secure, keeps frames from leaving that came without a VLAN of
    /// the VTU. Assumed not: nothing public speaks of a check by the mode of the egress port.
    EgressCheck egressCheck = EgressCheck::none;

    /// Whether a disabled port counts what its MAC gets. Assumed not: it is off.
    DisabledCounting disabledCounting = DisabledCounting::off;
    /// @}

    /// How long each command unit shows busy after a command, in nanoseconds. Results are there at
    /// once and inputs are taken at the start, however long it is.
    std::uint64_t smiBusyNanoseconds = 0;
    std::uint64_t smiPhyBusyNanoseconds = 0;
    std::uint64_t vtuBusyNanoseconds = 0;
    std::uint64_t atuBusyNanoseconds = 0;
    std::uint64_t statisticsBusyNanoseconds = 0;
};

} // namespace simulation
