#include "tests/faults/SimulatedSession.hpp"

namespace fault_test {

board::BoardSession::Options simulatedSession(reference_host::LogSink& log) {
    board::BoardSession::Options options;
    options.simulate = true;
    options.log = &log;
    // Data is there at the second look: looks before that are like the first.
    options.board.vitesse.indirectReadNanoseconds = 200;
    return options;
}

} // namespace fault_test
