#include "tests/traffic/TrafficBoard.hpp"

#include <algorithm>

using simulation::Decision;
using simulation::EthernetFrame;

TrafficBoard::TrafficBoard(std::string const& path, std::vector<Cable> const& cables) : _models(path) {
    for (auto const& [one, other] : cables) {
        _network.connect(one, other);
    }
    for (unsigned const id : getSwitchIds()) {
        for (unsigned port = 0; port < getForwarding(id).getNumberOfPorts(); ++port) {
            End const end{id, port};
            if (std::any_of(cables.begin(), cables.end(), [&end](Cable const& cable) {
                    return cable.first == end || cable.second == end;
                })) {
                continue;
            }
            _network.attach(end, [this, end](EthernetFrame const& frame) {
                _result.arrivals.push_back({end, frame});
            });
            _stations.push_back(end);
        }
    }
    _network.observe([this](End const& at, EthernetFrame const& frame, Decision const& decision) {
        _result.steps.push_back({at, frame, decision});
    });
}

TrafficBoard::Result TrafficBoard::send(End const& from, EthernetFrame const& frame) {
    _result = {};
    _network.inject(from, frame);
    _network.run();
    auto const findings = _network.getFindings();
    _result.findings.assign(findings.begin() + static_cast<std::ptrdiff_t>(_findings), findings.end());
    _findings = findings.size();
    return std::move(_result);
}

simulation::ChipForwarding& TrafficBoard::getForwarding(unsigned switchId) {
    return *_models.getBoard().getChip(switchId).getForwarding();
}

void TrafficBoard::passSecond() {
    _models.getBoard().getClock().advanceNanoseconds(simulation::VirtualClock::nanosecondsPerSecond);
}
