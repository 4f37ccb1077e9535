#include "simulation/vsc7390/Forwarding.hpp"

namespace simulation::vitesse {

Forwarding::Forwarding(Context const& context, Analyser& analyser, std::deque<Port>& portUnits,
                       std::deque<Phy>& phyUnits)
    : ChipForwarding(context.services),
      _analyser(analyser),
      _snapshot(context, analyser, portUnits, phyUnits),
      _rules(context, _snapshot, analyser) {
    for (Port& port : portUnits) {
        _ports.push_back(&port);
    }
}

void Forwarding::doReceive(unsigned port, EthernetFrame const& frame, Decision& decision) {
    Passage const passage = pass(port, frame, everyPort, decision);
    countIn(passage);
    decision.learnt = passage.isToLearn && learn(passage);
    for (Decision::Egress const& copy : decision.egress) {
        countOut(copy);
    }
}

void Forwarding::doDecide(unsigned port, EthernetFrame const& frame, std::uint32_t among,
                          Decision& decision) const {
    Passage const passage = pass(port, frame, among, decision);
    decision.learnt =
        passage.isToLearn && _analyser.getMacTable().canLearn(frame.getSource(), passage.classified.vid);
}

bool Forwarding::doHasLink(unsigned port) const {
    Snapshot::PortSettings const& settings = _snapshot.getPort(port);
    return settings.receives || settings.sends;
}

unsigned Forwarding::doGetMegabits(unsigned port) const {
    return _snapshot.getPort(port).megabits;
}

Passage Forwarding::pass(unsigned port, EthernetFrame const& frame, std::uint32_t among,
                         Decision& decision) const {
    Passage passage(frame, port, _snapshot.getPort(port), decision);
    passage.among = among;
    _rules.apply(passage);
    return passage;
}

bool Forwarding::learn(Passage const& passage) {
    Vsc7390TestSide::MacEntry entry;
    entry.mac = passage.frame.getSource();
    entry.vid = passage.classified.vid;
    entry.destination = passage.ingress;
    return _analyser.getMacTable().insert(MacEntry(entry), MacTable::LockedSame::kept);
}

void Forwarding::countIn(Passage const& passage) {
    if (passage.arrival == Passage::Arrival::none) {
        return;
    }
    Port& port = *_ports[passage.ingress];
    port.count(port::octetsIn, passage.frame.getWireLength());
    port.count(port::packetsIn);
    if (passage.arrival == Passage::Arrival::bad) {
        port.count(port::errorsIn);
    } else if (EthernetFrame::isGroup(passage.frame.getDestination())) {
        port.count(port::broadcastMulticastIn);
    }
    if (passage.isDropped) {
        port.count(port::dropsIn);
    }
}

void Forwarding::countOut(Decision::Egress const& copy) {
    Port& port = *_ports[copy.port];
    port.count(port::octetsOut, copy.frame.getWireLength());
    port.count(port::packetsOut);
    if (EthernetFrame::isGroup(copy.frame.getDestination())) {
        port.count(port::broadcastMulticastOut);
    }
}

} // namespace simulation::vitesse
