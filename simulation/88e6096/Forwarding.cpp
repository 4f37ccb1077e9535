#include "simulation/88e6096/Forwarding.hpp"

namespace simulation::marvell {

Forwarding::Forwarding(Context& context, std::deque<Port>& ports, Global1& global1, Global2 const& global2)
    : ChipForwarding(context.services),
      _context(context),
      _ports(ports),
      _global1(global1),
      _snapshot(ports, global1, global2),
      _counters(global1.getStatistics(), ports) {}

void Forwarding::doReceive(unsigned port, EthernetFrame const& frame, Decision& decision) {
    leaveTraces(port, frame, follow(port, frame, everyPort, decision), decision);
}

void Forwarding::doDecide(unsigned port, EthernetFrame const& frame, std::uint32_t among,
                          Decision& decision) const {
    Passage const passage = follow(port, frame, among, decision);
    if (auto const& learning = passage.getLearning()) {
        decision.learnt =
            _global1.getAtu().tryLearning(learning->fid, learning->address) == Atu::Learning::learned;
    }
}

Passage Forwarding::follow(unsigned port, EthernetFrame const& frame, std::uint32_t among,
                           Decision& decision) const {
    _snapshot.refresh();
    Passage passage(_snapshot, _global1.getVtu(), _global1.getAtu(), _context.options, port, frame, decision);
    passage.run(among);
    return passage;
}

void Forwarding::leaveTraces(unsigned port, EthernetFrame const& frame, Passage const& passage,
                             Decision& decision) {
    _counters.countReceived(port, frame, passage.getReception());
    if (passage.isFilteredAtIngress()) {
        _counters.countInFiltered(port);
    }
    _counters.countOutFiltered(passage.getFilteredAtEgress());
    if (auto const& violation = passage.getViolation()) {
        _global1.getVtu().noteViolation(decision.vid.value_or(0), port, *violation);
    }
    if (auto const& learning = passage.getLearning()) {
        decision.learnt = _global1.getAtu().learn(learning->fid, learning->address, learning->ports, port) ==
                          Atu::Learning::learned;
    }
    for (Decision::Egress const& copy : decision.egress) {
        _counters.countSent(copy.port, copy.frame);
    }
}

} // namespace simulation::marvell
