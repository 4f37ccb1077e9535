#include "simulation/88e6096/FrameCounters.hpp"

namespace simulation::marvell {

namespace {

using namespace statistics;
using Class = EthernetFrame::DestinationClass;
using Reception = Passage::Reception;

unsigned sizeCounter(std::size_t octets) {
    struct Bin {
        std::size_t longest;
        Counter counter;
    };
    static constexpr Bin bins[] = {
        {64, octets64}, {127, octets65}, {255, octets128}, {511, octets256}, {1023, octets512}};
    for (Bin const& bin : bins) {
        if (octets <= bin.longest) {
            return bin.counter;
        }
    }
    return octets1024;
}

unsigned kindCounter(EthernetFrame const& frame, unsigned unicast, unsigned multicast, unsigned broadcast) {
    switch (frame.getDestinationClass()) {
    case Class::unicast:
        return unicast;
    case Class::broadcast:
        return broadcast;
    default:
        return multicast;
    }
}

unsigned receptionCounter(EthernetFrame const& frame, Reception reception) {
    switch (reception) {
    case Reception::pause:
        return inPause;
    case Reception::undersize:
        return inUndersize;
    case Reception::fragment:
        return inFragments;
    case Reception::oversize:
        return inOversize;
    case Reception::jabber:
        return inJabber;
    case Reception::badFcs:
        return inFcsError;
    default:
        return kindCounter(frame, inUnicast, inMulticast, inBroadcast);
    }
}

} // namespace

// InBadOctets has one register: it wraps.
void FrameCounters::countReceived(unsigned port, EthernetFrame const& frame, Reception reception) {
    if (reception == Reception::none) {
        return;
    }
    _statistics.count(port, receptionCounter(frame, reception));
    std::size_t const octets = frame.getWireLength();
    if (reception == Reception::good || reception == Reception::pause) {
        _statistics.countOctets(port, inGoodOctets, octets);
        countSize(port, octets);
    } else {
        _statistics.count(port, inBadOctets, octets);
    }
}

void FrameCounters::countSent(unsigned port, EthernetFrame const& frame) {
    _statistics.count(port, kindCounter(frame, outUnicast, outMulticast, outBroadcast));
    _statistics.countOctets(port, outOctets, frame.getWireLength());
    countSize(port, frame.getWireLength());
}

void FrameCounters::countSize(unsigned port, std::size_t octets) {
    _statistics.count(port, sizeCounter(octets));
}

void FrameCounters::countInFiltered(unsigned port) {
    _ports[port].countFiltered(port::inFiltered);
}

void FrameCounters::countOutFiltered(std::uint32_t ports) {
    for (unsigned number = 0; ports != 0; ++number, ports >>= 1) {
        if ((ports & 1) != 0) {
            _ports[number].countFiltered(port::outFiltered);
        }
    }
}

} // namespace simulation::marvell
