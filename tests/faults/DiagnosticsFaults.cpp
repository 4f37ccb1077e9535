#include "tests/faults/DiagnosticsFaults.hpp"

#include <functional>
#include <sstream>

#include "board/BoardSession.hpp"
#include "tests/faults/SimulatedSession.hpp"
#include "tests/support/RecordingLog.hpp"

namespace fault_test {

DiagnosticsFaults::DiagnosticsFaults(std::string const& documentPath, chips::PortAddress const& port)
    : _document(reference_host::XmlDocument::fromFile(documentPath)), _port(port) {
    measure();
}

RunResult DiagnosticsFaults::perform(std::function<void(simulation::SimulatedBoard&)> const& begin,
                                     std::function<void(RunResult&)> const& end) {
    RunResult result;
    test_support::RecordingLog log;
    board::BoardSession session(*_document, simulatedSession(log));
    session.bringUp();
    log.take();
    begin(*session.getBoard());
    std::ostringstream text;
    bool const written = session.writeStatistics(_port, text);
    result.result = written ? "written" : "refused";
    if (!written && !text.str().empty()) {
        result.result = "refused, and yet something is written";
    }
    result.messages = comparable(log.lines());
    end(result);
    result.image[_port.switchId].push_back(std::hash<std::string>()(text.str()));
    return result;
}

} // namespace fault_test
