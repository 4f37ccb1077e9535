#include "tests/faults/BringUpFaults.hpp"

#include "board/BoardSession.hpp"
#include "tests/faults/SimulatedSession.hpp"
#include "tests/support/RecordingLog.hpp"

namespace fault_test {

BringUpFaults::BringUpFaults(std::string const& documentPath)
    : _document(reference_host::XmlDocument::fromFile(documentPath)) {
    measure();
}

RunResult BringUpFaults::perform(std::function<void(simulation::SimulatedBoard&)> const& begin,
                                 std::function<void(RunResult&)> const& end) {
    RunResult result;
    test_support::RecordingLog log;
    board::BoardSession session(*_document, simulatedSession(log));
    begin(*session.getBoard());
    auto const outcome = session.bringUp();
    result.result = outcome.populated ? "populated" : "gave up: " + outcome.reason;
    result.messages = comparable(log.lines());
    end(result);
    return result;
}

} // namespace fault_test
