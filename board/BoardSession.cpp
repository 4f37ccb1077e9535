#include "board/BoardSession.hpp"

#include <algorithm>
#include <ctime>
#include <functional>
#include <sstream>
#include <utility>
#include <vector>

#include "board/SimulatedMemory.hpp"
#include "chips/ChipKinds.hpp"
#include "host/Threads.hpp"
#include "model/ManagedSwitch.hpp"

namespace board {

using reference_host::DeviceMemory;
using reference_host::PhysicalMemory;
using simulation::SimulatedBoard;
using simulation::VirtualClock;

namespace {

std::unique_ptr<SimulatedBoard> makeBoard(Xml& document, BoardSession::Options const& options) {
    if (!options.simulate) {
        return nullptr;
    }
    return std::make_unique<SimulatedBoard>(document, options.board);
}

std::unique_ptr<ClockAdoption> makeAdoption(SimulatedBoard* board) {
    if (board == nullptr) {
        return nullptr;
    }
    return std::make_unique<ClockAdoption>(board->getClock());
}

std::unique_ptr<PhysicalMemory> makeMemory(SimulatedBoard* board, BoardSession::Options const& options) {
    std::unique_ptr<PhysicalMemory> memory;
    if (board != nullptr) {
        memory = std::make_unique<SimulatedMemory>(*board);
    } else {
        memory = std::make_unique<DeviceMemory>(options.memoryDevice);
    }
    if (options.wrapMemory) {
        return options.wrapMemory(std::move(memory));
    }
    return memory;
}

} // namespace

BoardSession::BoardSession(Xml& document, Options const& options)
    : _board(makeBoard(document, options)),
      _clock(makeAdoption(_board.get())),
      _memory(makeMemory(_board.get(), options)),
      _log(options.log),
      _application(_log, *_memory),
      _manager(_application, document, false, options.noHardwareAccess) {
    if (_board) {
        VirtualClock& clock = _board->getClock();
        _application.getThreads().setStartHook([&clock](Thread&) { VirtualClock::adopt(&clock); });
    }
}

BoardSession::~BoardSession() {
    _application.getThreads().endEventLoops();
}

StartUpMonitor::Outcome BoardSession::bringUp() {
    std::vector<std::function<void()>> phyInterfacesReady;
    _manager.phyInterfaceParsedCallbackfunctions(phyInterfacesReady);
    _manager.setStartUpEndedCallback([this](char const* failure) { _monitor.reportEnd(failure); });
    _manager.start();
    // This host has no PHY interfaces of its own to set up first.
    for (auto const& report : phyInterfacesReady) {
        report();
    }
    StartUpMonitor::Outcome outcome = _monitor.wait();
    if (_board) {
        _effort.registerAccesses = _board->getRegisterAccesses();
        _effort.busAccesses = _board->getBusAccesses();
        _effort.busNanoseconds = _board->getBusNanoseconds();
        _effort.elapsedNanoseconds = _board->getClock().getNanoseconds();
    }
    return outcome;
}

bool BoardSession::writeStatistics(chips::PortAddress const& port, std::ostream& out) {
    if (!hasPort(port)) {
        return false;
    }
    // A stream of its own: the library leaves it set to hexadecimal.
    std::ostringstream table;
    std::timespec time{};
    std::string text;
    if (!_manager.collectSwitchPortDiagnostics(port.switchId, port.portId, table, time, text) || !table) {
        return false;
    }
    out << table.str();
    return true;
}

bool BoardSession::isUp(BoardReading::Wanted const& entry) {
    ManagedSwitch const* const managedSwitch = _manager.getManagedSwitch(entry.id);
    chips::ChipKind const* const kind = chips::ChipKinds::find(entry.model);
    return managedSwitch != nullptr && kind != nullptr && kind->drives(*managedSwitch);
}

bool BoardSession::isComplete(BoardReading const& document) {
    auto const& switches = document.getWanted();
    return !switches.empty() &&
           std::all_of(switches.begin(), switches.end(), [this](auto const& entry) { return isUp(entry); });
}

SimulatedBoard* BoardSession::getBoard() {
    return _board.get();
}

bool BoardSession::hasPort(chips::PortAddress const& port) {
    ManagedSwitch const* const managedSwitch = _manager.getManagedSwitch(port.switchId);
    return managedSwitch != nullptr && managedSwitch->getPorts().count(port.portId) != 0;
}

} // namespace board
