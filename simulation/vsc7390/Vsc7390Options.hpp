#pragma once

#include <cstdint>

namespace simulation {

/// What the data sheet of a VSC7390 leaves open, and the delays of the model.
struct Vsc7390Options {
    enum class DestinationMaskReset { ownPort, allPorts, none };
    enum class AggregationMaskReset { allPorts, none };
    enum class SourceMaskReset { allButOwn, allPorts, none };
    enum class VlanClear { allPortsMembers, noMembers };
    enum class MulticastMatch { lowBytesAndVid, lowBytes };
    enum class AggregationCode { nibblesOfAddresses, zero };
    enum class BroadcastFlood { multicastMask, unicastMask };
    enum class MacFlush { noEffect, deletesUnlocked };
    enum class LearnOverLocked { replaces, leaves };
    enum class MasterReset { restoresDefaults, keepsRegisters };
    enum class UntoldLink { up, down };
    enum class BridgeFrames { toNoPort, likeOthers };
    enum class IgnoredTag { isRemoved, stays };
    enum class ClosedPort { learnsNothing, learns };
    enum class IntruderLearning { unlessTold, never };
    enum class IgnoreVlan { skipsVlanMask, skipsSourceMaskToo };
    enum class FailedAccess { refused, lost };

    /// Bits 31:28 and 11:0 of the chip's identifier.
    unsigned revision = 0;
    unsigned identifierLow = 0;

    /// Of every port after reset.
    unsigned maximumLengthReset = 1518;
    unsigned portVidReset = 1;

    /// Masks of the ports after reset. The destination masks past the ports' own are 0 always.
    DestinationMaskReset destinationMaskReset = DestinationMaskReset::ownPort;
    AggregationMaskReset aggregationMaskReset = AggregationMaskReset::allPorts;
    SourceMaskReset sourceMaskReset = SourceMaskReset::allButOwn;

    /// What the VLAN table's command 3, and a reset, leave in every entry.
    VlanClear vlanClear = VlanClear::allPortsMembers;

    /// What a frame's address and VID have to share with a multicast entry of its row.
    MulticastMatch multicastMatch = MulticastMatch::lowBytesAndVid;

    /// Which of the sixteen aggregation masks a pair of addresses gets. AGGRCTRL is to say how a code is
    /// made, but what its values mean is not public: the code is the same whatever is written there.
    AggregationCode aggregationCode = AggregationCode::nibblesOfAddresses;

    /// Frames to 01:80:C2:00:00:00 to 0F. Drivers of the family expect them from the processor's interface
    /// only, and send them there.
    BridgeFrames bridgeFrames = BridgeFrames::toNoPort;

    /// What becomes of a tag that a port ignores, when it is not told to keep tags: the one says what the
    /// VLAN is, the other what the frame looks like.
    IgnoredTag ignoredTag = IgnoredTag::isRemoved;

    /// Whether a port that the receive mask stops learns from what it drops: no more than one that is off.
    ClosedPort closedPort = ClosedPort::learnsNothing;

    /// Whether senders that are no members of their VLAN are learnt: the name of ADVLEARN's bit 25, which
    /// drivers set with the check, leaves little else than that they are not then.
    IntruderLearning intruderLearning = IntruderLearning::unlessTold;

    /// What an entry with IGNORE_VLAN goes past. The name says the VLAN's mask and no more.
    IgnoreVlan ignoreVlan = IgnoreVlan::skipsVlanMask;

    /// Broadcasts are groups, and nothing says that they have a mask of their own.
    BroadcastFlood broadcastFlood = BroadcastFlood::multicastMask;

    /// What the MAC table's command 4 does. Its name, FLUSH beside CLEAR, leaves little else than that
    /// locked entries stay.
    MacFlush macFlush = MacFlush::deletesUnlocked;

    /// What the MAC table's command LEARN does to a locked entry of the same address. No driver relies on
    /// either; who gives the command has asked for it, while a frame never moves a locked entry.
    LearnOverLocked learnOverLocked = LearnOverLocked::replaces;

    /// What writing MASTER_RESET does before the bit clears itself. Drivers of the family set the chip up
    /// from nothing after it, memories included.
    MasterReset masterReset = MasterReset::restoresDefaults;

    /// Whether somebody is at the other end of a port of which neither plugLink() nor unplugLink() has been
    /// called. The MAC sends and receives whatever its PHY says, and there are modules that say nothing.
    UntoldLink untoldLink = UntoldLink::up;

    /// What Vsc7390TestSide::failAccess does to an access. Refused: the bus reports an error, so the
    /// accessor returns false. Lost: a read gives all ones, an indirect one when it is ready, and a
    /// write does nothing.
    FailedAccess failedAccess = FailedAccess::refused;

    /// What the bus read that starts an indirect one returns.
    std::uint32_t startingReadValue = 0;
    /// What is read from a block that the chip does not have.
    std::uint32_t absentBlockValue = 0;
    /// What is read from the window while no chip is in its socket.
    std::uint32_t idleBusValue = 0xFFFFFFFF;

    /// A 32-bit access over the parallel bus, in nanoseconds.
    std::uint64_t busAccessNanoseconds = 100;

    /// From the bus read that starts an indirect one until its data is ready.
    std::uint64_t indirectReadNanoseconds = 1'000;

    /// How long the tables show a command. Results are there at once, and inputs are taken at the
    /// start, however long it is.
    std::uint64_t vlanClearNanoseconds = 50'000;
    std::uint64_t vlanAccessNanoseconds = 0;
    std::uint64_t macAgeNanoseconds = 50'000;
    std::uint64_t macClearNanoseconds = 50'000;
    std::uint64_t macAccessNanoseconds = 0;

    /// A transfer to or from a PHY, with and without preamble. Data that was read is there at its end.
    std::uint64_t miiNanoseconds = 25'600;
    std::uint64_t miiWithoutPreambleNanoseconds = 12'800;

    /// From the write that makes the arbiter discard a port's frames until none is left.
    std::uint64_t arbiterDrainNanoseconds = 0;
};

} // namespace simulation
