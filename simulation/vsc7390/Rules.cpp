#include "simulation/vsc7390/Rules.hpp"

#include <fmt/format.h>

#include <string_view>
#include <utility>

#include "simulation/vsc7390/Registers.hpp"

namespace simulation::vitesse {

namespace {

using Class = EthernetFrame::DestinationClass;

constexpr EthernetFrame::Address lastBridgeAddress = 0x0180C200000F;
constexpr EthernetFrame::Address firstBridgeAddress = 0x0180C2000000;
constexpr unsigned nibble = 0xF;

bool isBridgeAddress(EthernetFrame::Address address) {
    return firstBridgeAddress <= address && address <= lastBridgeAddress;
}

/// By its type, which nothing stands before.
bool isMacControl(EthernetFrame const& frame) {
    return frame.countTags() == 0 && frame.getEtherType() == EthernetFrame::macControl;
}

/// The longest frame, FCS included, that the port takes with the tags that this one has.
std::size_t longest(Passage const& passage) {
    unsigned const tags = passage.frame.countTags();
    if (passage.receiver.expectsTwoTags && tags >= 2) {
        return passage.receiver.maximumLength + 2 * EthernetFrame::tagLength;
    }
    return passage.receiver.maximumLength +
           (passage.receiver.expectsTag && tags >= 1 ? EthernetFrame::tagLength : 0);
}

/// Of the frame's own VLAN, so that a tag that only carries a priority is none.
bool isTagged(Passage const& passage) {
    return passage.tag && passage.tag->vid != 0;
}

} // namespace

Rules::Rules(Context const& context, Snapshot const& snapshot, Analyser const& analyser)
    : _context(context), _snapshot(snapshot), _analyser(analyser) {}

void Rules::apply(Passage& passage) const {
    Decision& decision = passage.decision;
    static constexpr std::string_view numbers[] = {"V1", "V2", "V3", "V4",  "V5",  "V6",
                                                   "V7", "V8", "V9", "V10", "V11", "V12"};
    decision.rules = {numbers,
                      askRules<&Rules::meetReceiver, &Rules::meetLengthAndFcs, &Rules::meetReservedAddresses,
                               &Rules::meetClassifierDrops, &Rules::classify, &Rules::meetReceiveMask,
                               &Rules::meetIngressCheck, &Rules::learn, &Rules::findDestination,
                               &Rules::meetMasks, &Rules::meetSenders, &Rules::giveForms>(*this, passage)};
    if (!decision.isDropped()) {
        decision.dropReason.clear();
    }
}

std::uint32_t Rules::getEgressPorts(unsigned ingress, std::uint64_t destination, std::uint64_t source,
                                    unsigned vid) const {
    EthernetFrame const frame = EthernetFrame::make(destination, source, 0);
    Decision decision;
    Passage passage(frame, ingress, _snapshot.getPort(ingress), decision);
    passage.classified.vid = vid;
    passage.vlan = _analyser.getVlanTable().getEntry(vid);
    bool const isAccepted = meetReceiveMask(passage) && meetIngressCheck(passage) && !passage.isDropped;
    return isAccepted && findDestination(passage) && meetMasks(passage) ? passage.ports : 0;
}

// V1: the receiver is on.
bool Rules::meetReceiver(Passage& passage) const {
    if (!passage.receiver.receives) {
        passage.drop(fmt::format("port {} has no link or its receiver is off", passage.ingress));
    }
    return passage.receiver.receives;
}

// V2: a good FCS, at least 64 bytes, and no more than the port takes.
bool Rules::meetLengthAndFcs(Passage& passage) const {
    std::size_t const length = passage.frame.getWireLength();
    if (!passage.frame.hasGoodFcs()) {
        passage.drop("bad FCS");
    } else if (length < EthernetFrame::minimumLength) {
        passage.drop(fmt::format("{} bytes are too short", length));
    } else if (length > longest(passage)) {
        passage.drop(fmt::format("{} bytes are more than the {} that port {} takes", length, longest(passage),
                                 passage.ingress));
    } else {
        passage.arrival = Passage::Arrival::good;
        return true;
    }
    passage.arrival = Passage::Arrival::bad;
    return false;
}

// V3: MAC control goes on where the port lets it, and what bridges say to each other goes to no port.
bool Rules::meetReservedAddresses(Passage& passage) const {
    bool const floods = _context.options.bridgeFrames == Vsc7390Options::BridgeFrames::likeOthers;
    if (passage.destination == Class::pause) {
        if (!passage.receiver.forwardsPause) {
            passage.drop("pause is for the port itself");
        }
        return passage.receiver.forwardsPause;
    }
    if (isMacControl(passage.frame) && !passage.receiver.forwardsControl) {
        passage.drop("MAC control is for the port itself");
        return false;
    }
    if (isBridgeAddress(passage.frame.getDestination()) && !floods) {
        passage.drop("what bridges say to each other goes to no port");
        return false;
    }
    return true;
}

// V4: what the port's classifier is told to drop.
bool Rules::meetClassifierDrops(Passage& passage) const {
    Snapshot::PortSettings const& port = passage.receiver;
    if (isTagged(passage) && port.dropsTagged) {
        passage.drop(fmt::format("port {} drops tagged frames", passage.ingress));
    } else if (!isTagged(passage) && port.dropsUntagged) {
        passage.drop(fmt::format("port {} drops untagged frames", passage.ingress));
    } else if (passage.frame.hasGroupSource() && port.dropsGroupSource) {
        passage.drop(fmt::format("port {} drops frames from a group", passage.ingress));
    } else if ((passage.frame.getSource() == 0 || passage.frame.getDestination() == 0) &&
               port.dropsNullAddress) {
        passage.drop(fmt::format("port {} drops frames from or to address 0", passage.ingress));
    } else {
        return true;
    }
    passage.isDropped = true;
    return false;
}

// V5: which VLAN the frame is of. A tag that is ignored says nothing, its priority included.
bool Rules::classify(Passage& passage) const {
    passage.classified = passage.receiver.tag;
    if (passage.tag && !passage.receiver.ignoresTag) {
        unsigned const vid = isTagged(passage) ? passage.tag->vid : passage.receiver.tag.vid;
        passage.classified = {vid, passage.tag->priority, passage.tag->dropEligible};
    }
    passage.decision.vid = passage.classified.vid;
    passage.vlan = _analyser.getVlanTable().getEntry(passage.classified.vid);
    return true;
}

// V6: the receive mask has the port.
bool Rules::meetReceiveMask(Passage& passage) const {
    if (hasPort(analyser::receiveMask, passage.ingress)) {
        return true;
    }
    passage.drop(fmt::format("port {} is not in the receive mask", passage.ingress));
    passage.isDropped = true;
    return _context.options.closedPort == Vsc7390Options::ClosedPort::learns;
}

// V7: where the VLAN or the port asks for it, the port is a member. Whether it is learnt is the next rule's.
bool Rules::meetIngressCheck(Passage& passage) const {
    bool const isChecked = passage.vlan.sourceCheck || hasPort(analyser::vlanMask, passage.ingress);
    passage.isIntruder = isChecked && (passage.vlan.ports & bit(passage.ingress)) == 0;
    if (passage.isIntruder) {
        passage.drop(
            fmt::format("port {} is not a member of VLAN {}", passage.ingress, passage.classified.vid));
        passage.isDropped = true;
    }
    return true;
}

// V8: the source is learnt where the table has room.
bool Rules::learn(Passage& passage) const {
    passage.isToLearn = isToLearn(passage);
    return !passage.isDropped;
}

bool Rules::isToLearn(Passage const& passage) const {
    bool const spares = analyser::refusedNotLearnt.isSet(_snapshot.getWord(analyser::advancedLearning)) ||
                        _context.options.intruderLearning == Vsc7390Options::IntruderLearning::never;
    return hasPort(analyser::learnMask, passage.ingress) && !passage.vlan.learnDisabled &&
           !passage.frame.hasGroupSource() && !(passage.isIntruder && spares);
}

// V9: where the MAC table, or the mask for what it does not have, leads.
bool Rules::findDestination(Passage& passage) const {
    EthernetFrame::Address const address = passage.frame.getDestination();
    MacTable const& table = _analyser.getMacTable();
    MacEntry const* entry = table.findGroup(address, passage.classified.vid);
    if (entry == nullptr) {
        entry = table.find(address, passage.classified.vid);
    }
    if (entry != nullptr) {
        followEntry(passage, *entry);
    } else {
        passage.ports = _snapshot.getWord(floodRegister(passage.destination)) & allPorts;
    }
    passage.ports &= passage.among;
    if (passage.ports == 0) {
        passage.drop(fmt::format("{} leads to no port", entry != nullptr ? "its entry of the MAC table"
                                                                         : "the mask for unknown addresses"));
    }
    return passage.ports != 0;
}

void Rules::followEntry(Passage& passage, MacEntry const& entry) const {
    Vsc7390TestSide::MacEntry const hit = entry.decode();
    passage.decision.toProcessor = hit.cpuCopy && (passage.among & bit(Vsc7390TestSide::cpuPort)) != 0;
    passage.ignoresVlan = hit.ignoreVlan;
    if (!hit.forwardKill) {
        passage.ports = hit.isMulticast()
                            ? hit.getPorts()
                            : _snapshot.getWord(analyser::destinationMasks + hit.destination) & allPorts;
    }
}

// V10: all masks have the port.
bool Rules::meetMasks(Passage& passage) const {
    std::uint32_t const source = _snapshot.getWord(analyser::sourceMasks + passage.ingress);
    if (passage.vlan.mirror) {
        return refuse(passage, fmt::format("VLAN {} is mirrored", passage.classified.vid));
    }
    if (analyser::mirror.isSet(source) || analyser::cpuCopy.isSet(source)) {
        return refuse(passage, fmt::format("frames of port {} are copied", passage.ingress));
    }
    bool const skipsSource =
        passage.ignoresVlan && _context.options.ignoreVlan == Vsc7390Options::IgnoreVlan::skipsSourceMaskToo;
    std::uint32_t const vlanMask = passage.ignoresVlan ? allPorts : passage.vlan.ports;
    std::uint32_t const sourceMask = skipsSource ? allPorts : source;
    unsigned const code = aggregationCode(passage.frame);
    std::uint32_t const before = passage.ports;
    passage.ports &= vlanMask & sourceMask & _snapshot.getWord(analyser::aggregationMasks + code);
    if (passage.ports == 0) {
        char const* const mask = (before & vlanMask) == 0                ? "the VLAN's"
                                 : (before & vlanMask & sourceMask) == 0 ? "the source"
                                                                         : "the aggregation";
        passage.drop(fmt::format("{} mask leaves no port", mask));
    }
    return passage.ports != 0;
}

// V11: the sender is on. The processor's port has none.
bool Rules::meetSenders(Passage& passage) const {
    passage.decision.toProcessor |= (passage.ports & bit(Vsc7390TestSide::cpuPort)) != 0;
    passage.ports &= _snapshot.getSenders();
    if (passage.ports == 0) {
        passage.drop("no port that it may go to has link and a sender that is on");
    }
    return passage.ports != 0;
}

// V12: with a tag or without.
bool Rules::giveForms(Passage& passage) const {
    EthernetFrame const& frame = passage.frame;
    bool const keepsTag =
        passage.receiver.keepsTag ||
        (passage.receiver.ignoresTag && _context.options.ignoredTag == Vsc7390Options::IgnoredTag::stays);
    EthernetFrame const plain = keepsTag ? frame : frame.withTagPopped();
    std::optional<EthernetFrame> tagged;
    passage.decision.egress.reserve(countBits(passage.ports));
    for (unsigned port = 0; passage.ports >> port != 0; ++port) {
        if ((passage.ports & bit(port)) == 0) {
            continue;
        }
        Snapshot::PortSettings const& sender = _snapshot.getPort(port);
        if (sender.rewrites) {
            return refuse(passage, fmt::format("port {} rewrites priorities", port));
        }
        if (!sender.insertsTag || sender.untaggedVid == passage.classified.vid) {
            passage.decision.egress.push_back(
                {port, keepsTag ? Decision::Form::asReceived : Decision::Form::untagged, plain});
            continue;
        }
        if (!tagged) {
            tagged = keepsTag ? frame.withTagPushed(passage.classified) : frame.withTag(passage.classified);
        }
        passage.decision.egress.push_back(
            {port, keepsTag ? Decision::Form::tagAdded : Decision::Form::tagged, *tagged});
    }
    return true;
}

unsigned Rules::floodRegister(Class destination) const {
    switch (destination) {
    case Class::unicast:
        return analyser::unicastFlood;
    case Class::ipMulticast:
        return analyser::ipMulticastFlood;
    case Class::broadcast:
        return _context.options.broadcastFlood == Vsc7390Options::BroadcastFlood::unicastMask
                   ? analyser::unicastFlood
                   : analyser::multicastFlood;
    default:
        return analyser::multicastFlood;
    }
}

// All nibbles of both addresses on each other: any code is as good as another that keeps a flow together.
unsigned Rules::aggregationCode(EthernetFrame const& frame) const {
    if (_context.options.aggregationCode == Vsc7390Options::AggregationCode::zero) {
        return 0;
    }
    EthernetFrame::Address code = frame.getDestination() ^ frame.getSource();
    for (unsigned const half : {24U, 12U}) {
        code ^= code >> half;
    }
    return static_cast<unsigned>(code ^ code >> 4 ^ code >> 8) & nibble;
}

bool Rules::hasPort(unsigned maskRegister, unsigned port) const {
    return (_snapshot.getWord(maskRegister) & bit(port)) != 0;
}

bool Rules::refuse(Passage& passage, std::string reason) {
    Decision& decision = passage.decision;
    decision.egress.clear();
    decision.toProcessor = false;
    passage.isToLearn = false;
    passage.drop(reason);
    decision.notModelled = std::move(reason);
    return false;
}

} // namespace simulation::vitesse
