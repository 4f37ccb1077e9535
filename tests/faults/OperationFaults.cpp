#include "tests/faults/OperationFaults.hpp"

#include <memory>

#include "board/ClockAdoption.hpp"
#include "board/SimulatedMemory.hpp"
#include "marvell/MarvellSwitch.hpp"
#include "reference_host/HostApplication.hpp"
#include "reference_host/XmlDocument.hpp"
#include "tests/faults/SimulatedSession.hpp"
#include "tests/support/RecordingLog.hpp"
#include "vitesse/VitesseSwitch.hpp"

namespace fault_test {

namespace {

constexpr unsigned short marvellPorts = 11;
constexpr unsigned short vitessePorts = 4;

char const* const marvellBoard = "<switches><switch id='0' switchModel='88e6096'/></switches>";
char const* const vitesseBoard = "<switches><switch id='0' switchModel='vsc7390'/></switches>";

std::string outcomeOf(ChipOperation const& operation, Application& application, ManagedSwitch* device,
                      ChipOperation::Values& values) {
    try {
        bool const result = operation.call(application, device, values);
        if (operation.isQuestion) {
            return result ? "answer: yes" : "answer: no";
        }
        return result ? "success" : "failure";
    } catch (char const* text) {
        return std::string("threw ") + text;
    }
}

} // namespace

OperationFaults::OperationFaults(Family family, ChipOperation const& operation)
    : _family(family), _operation(operation) {
    measure();
}

RunResult OperationFaults::perform(std::function<void(simulation::SimulatedBoard&)> const& begin,
                                   std::function<void(RunResult&)> const& end) {
    bool const isMarvell = _family == Family::marvell;
    auto const document =
        reference_host::XmlDocument::fromText(isMarvell ? marvellBoard : vitesseBoard, "board");
    test_support::RecordingLog log;
    simulation::SimulatedBoard board(*document, simulatedSession(log).board);
    board::ClockAdoption const adoption(board.getClock());
    board::SimulatedMemory memory(board);
    reference_host::HostApplication application(log, memory);
    std::unique_ptr<ManagedSwitch> device;
    if (_operation.needsSwitch && isMarvell) {
        device = std::make_unique<MarvellSwitch>(application, 0U, marvellPorts, false);
    } else if (_operation.needsSwitch) {
        device = std::make_unique<VitesseSwitch>(application, 0U, vitessePorts, false);
    }
    RunResult result;
    ChipOperation::Values values;
    begin(board);
    result.result = outcomeOf(_operation, application, device.get(), values);
    result.messages = comparable(log.lines());
    end(result);
    std::vector<std::uint64_t>& image = result.image[0];
    image.insert(image.end(), values.begin(), values.end());
    return result;
}

} // namespace fault_test
