#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "board/SimulatedMemory.hpp"
#include "manager/SwitchManager.hpp"
#include "reference_host/HostApplication.hpp"
#include "reference_host/XmlDocument.hpp"
#include "simulation/SimulatedBoard.hpp"
#include "tests/support/RecordingLog.hpp"

namespace race_test {

/// A host with a manager of a simulated board. Its management thread lives by the board's clock.
class BoardHost {
public:
    /// \param example name of a document of the examples.
    explicit BoardHost(std::string const& example)
        : BoardHost(reference_host::XmlDocument::fromFile(EXAMPLES_FOLDER "/" + example + ".xml")) {}

    /// \param document may be shared with other hosts.
    explicit BoardHost(std::shared_ptr<reference_host::XmlDocument> document)
        : _document(std::move(document)), _board(*_document) {
        simulation::VirtualClock& clock = _board.getClock();
        _application.getThreads().setStartHook(
            [&clock](Thread&) { simulation::VirtualClock::adopt(&clock); });
    }

    /// Ends the management thread and takes the manager down.
    ~BoardHost() { _application.getThreads().endEventLoops(); }
    BoardHost(BoardHost const&) = delete;
    BoardHost& operator=(BoardHost const&) = delete;

    /// \param populated called on the management thread when start-up has finished.
    void start(std::function<void()> const& populated) {
        std::vector<std::function<void()>> callbacks = {populated};
        _manager.start(callbacks);
    }

    void report() { _manager.phyInterfacesHaveNowBeenSetup(); }

    bool collectDiagnostics(unsigned switchId, unsigned portId, std::ostream& out) {
        std::timespec time{};
        std::string text;
        return _manager.collectSwitchPortDiagnostics(switchId, portId, out, time, text);
    }

    SwitchManager& manager() { return _manager; }
    simulation::SimulatedBoard& board() { return _board; }
    test_support::RecordingLog& log() { return _log; }

private:
    std::shared_ptr<reference_host::XmlDocument> _document;
    simulation::SimulatedBoard _board;
    board::SimulatedMemory _memory{_board};
    test_support::RecordingLog _log;
    reference_host::HostApplication _application{_log, _memory};
    SwitchManager _manager{_application, *_document, false, false};
};

} // namespace race_test
