#include "benchmarks/ReplayRun.hpp"

namespace benchmarks {

ReplayRun::ReplayRun(Xml& document, std::vector<AccessList::Section> const& list)
    : _board(document),
      _clock(_board.getClock()),
      _memory(_board),
      _application(_log, _memory),
      _replay(_application) {
    for (AccessList::Section const& section : list) {
        _operations.push_back({section.name, [this, steps = _replay.prepare(section.accesses)] {
                                   _unexpected += Floor::run(steps);
                               }});
    }
}

simulation::SimulatedBoard& ReplayRun::getBoard() {
    return _board;
}

void ReplayRun::bringUp() {
    _operations.front().run();
}

std::vector<MeasuredRun::Operation> ReplayRun::getOperations() {
    return {_operations.begin() + 1, _operations.end()};
}

} // namespace benchmarks
