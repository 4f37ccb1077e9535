#include "switchctl/register/RegisterSession.hpp"

#include <stdexcept>

#include "board/SimulatedMemory.hpp"
#include "board/StartUpFailure.hpp"
#include "chips/ChipKinds.hpp"
#include "chips/ToolError.hpp"
#include "reference_host/DeviceLock.hpp"
#include "reference_host/DeviceMemory.hpp"
#include "reference_host/XmlDocument.hpp"

namespace switchctl::registers {

using reference_host::DeviceMemory;
using reference_host::HostApplication;
using reference_host::XmlDocument;
using simulation::SerialController;
using simulation::SimulatedBoard;
using Way = TransportOptions::Way;

namespace {

/// A board with just the chip.
std::string documentOf(TransportOptions const& options) {
    unsigned const id = options.getSwitchId();
    return "<switches><switch id='" + std::to_string(id) + "' switchModel='" + options.getModel() +
           "'/></switches>";
}

std::string visible(std::string const& text) {
    std::string result;
    for (char const character : text) {
        result += character == '\r' ? "\\r" : character == '\n' ? "\\n" : std::string(1, character);
    }
    return result;
}

} // namespace

RegisterSession::RegisterSession(TransportOptions const& options, std::string const& memoryDevice,
                                 std::ostream& out, std::ostream& errors)
    : _options(options), _memoryDevice(memoryDevice), _errors(errors), _diversion(errors) {
    if (_options.isSimulated()) {
        simulate();
        _options.strike(*_board, _controller.get());
    } else {
        requireHardware();
        _memory = std::make_unique<DeviceMemory>(_memoryDevice);
    }
    connect(out);
}

RegisterSession::~RegisterSession() {
    if (_controller != nullptr && _options.showsTraffic()) {
        showTraffic();
    }
}

void RegisterSession::simulate() {
    if (_options.getDocumentPath().empty()) {
        _document = XmlDocument::fromText(documentOf(_options), "board");
        _ownBoard = std::make_unique<SimulatedBoard>(*_document);
        _board = _ownBoard.get();
        _clock = std::make_unique<board::ClockAdoption>(_board->getClock());
    } else {
        bringUp();
    }
    _memory = std::make_unique<board::SimulatedMemory>(*_board);
    if (_options.getWay() != Way::serial) {
        return;
    }
    _realTime = std::make_unique<board::ClockAdoption>(nullptr);
    try {
        _controller = std::make_unique<SerialController>(*_board);
    } catch (std::out_of_range const& error) {
        throw chips::ToolError(chips::ExitStatus::noHardware,
                               _options.getDocumentPath() + ": " + error.what());
    }
}

void RegisterSession::bringUp() {
    _document = XmlDocument::fromFile(_options.getDocumentPath());
    board::BoardSession::Options options;
    options.simulate = true;
    _session = std::make_unique<board::BoardSession>(*_document, options);
    board::StartUpMonitor::Outcome const outcome = _session->bringUp();
    if (!outcome.populated) {
        throw chips::ToolError(chips::ExitStatus::startUpFailed,
                               board::startUpFailureText(_options.getDocumentPath(), outcome.reason));
    }
    _board = _session->getBoard();
}

void RegisterSession::requireHardware() const {
    std::string reason;
    if (_options.getWay() == Way::serial && !reference_host::DeviceLock::take(_options.getDevice(), reason)) {
        throw chips::ToolError(chips::ExitStatus::noHardware, reason);
    }
    if (_options.getWay() != Way::serial && !DeviceMemory::isAccessible(_memoryDevice, reason)) {
        throw chips::ToolError(chips::ExitStatus::noHardware,
                               reason + " (the chip is reached through this device; see --simulate)");
    }
}

void RegisterSession::connect(std::ostream& out) {
    _application = std::make_unique<HostApplication>(_accessErrors, *_memory);
    _transport =
        chips::ChipKinds::reachedOver(_options.getWay())
            .connect(_options.getWay(), {*_application, _accessErrors, _options.getSwitchId(),
                                         _controller ? _controller->getDevicePath() : _options.getDevice()});
    std::string const reason = _accessErrors.take();
    if (!reason.empty()) {
        std::string const where =
            _options.getWay() == Way::serial && !_options.isSimulated() ? _options.getDevice() + ": " : "";
        throw chips::ToolError(chips::ExitStatus::noHardware, where + reason);
    }
    if (!_options.getTracePath().empty()) {
        _trace = std::make_unique<board::RegisterTrace>(_options.getTracePath(), out, _options.getModel(),
                                                        _options.getSwitchId(), _options.getWay());
        _trace->attach(*_transport);
    }
}

void RegisterSession::finish() {
    if (_trace != nullptr) {
        _trace->finish();
    }
}

void RegisterSession::showTraffic() const {
    if (_transport != nullptr) {
        _controller->waitForCommands(_transport->getAccesses());
    }
    _errors << "to the controller:   \"" << visible(_controller->getReceived()) << "\"\n"
            << "from the controller: \"" << visible(_controller->getSent()) << "\"\n";
}

} // namespace switchctl::registers
