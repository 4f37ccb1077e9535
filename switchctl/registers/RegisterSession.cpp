#include "switchctl/registers/RegisterSession.hpp"

#include <stdexcept>

#include "reference_host/DeviceMemory.hpp"
#include "reference_host/XmlDocument.hpp"
#include "switchctl/SimulatedMemory.hpp"
#include "switchctl/registers/CommandError.hpp"
#include "switchctl/registers/SmiTransport.hpp"
#include "switchctl/registers/VitesseTransport.hpp"
#include "vitesse/VitesseParallelCommunication.hpp"
#include "vitesse/VitesseSerialCommunications.hpp"

namespace switchctl {

using reference_host::DeviceMemory;
using reference_host::HostApplication;
using reference_host::XmlDocument;
using simulation::SerialController;
using simulation::SimulatedBoard;
using Way = TransportOptions::Way;

namespace {

/// A board with just the chip.
std::string documentOf(TransportOptions const& options) {
    unsigned const id = options.getWay() == Way::smi ? options.getSwitchId() : 0;
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
                                 std::ostream& errors)
    : _options(options), _memoryDevice(memoryDevice), _errors(errors), _diversion(errors) {
    if (_options.isSimulated()) {
        simulate();
    } else {
        requireHardware();
        _memory = std::make_unique<DeviceMemory>(_memoryDevice);
    }
    connect();
}

RegisterSession::~RegisterSession() {
    if (_controller != nullptr && _options.showsTraffic()) {
        showTraffic();
    }
}

RegisterTransport& RegisterSession::getTransport() {
    return *_transport;
}

void RegisterSession::simulate() {
    if (_options.getDocumentPath().empty()) {
        _document = XmlDocument::fromText(documentOf(_options), "board");
        _ownBoard = std::make_unique<SimulatedBoard>(*_document);
        _board = _ownBoard.get();
        _clock = std::make_unique<ClockAdoption>(_board->getClock());
    } else {
        bringUp();
    }
    _memory = std::make_unique<SimulatedMemory>(*_board);
    if (_options.getWay() != Way::serial) {
        return;
    }
    _realTime = std::make_unique<RealTime>();
    try {
        _controller = std::make_unique<SerialController>(*_board);
    } catch (std::out_of_range const& error) {
        throw CommandError(ExitStatus::noHardware, _options.getDocumentPath() + ": " + error.what());
    }
}

void RegisterSession::bringUp() {
    try {
        _document = XmlDocument::fromFile(_options.getDocumentPath());
    } catch (reference_host::XmlError const& error) {
        throw CommandError(ExitStatus::badDocument, error.what());
    }
    BoardSession::Options options;
    options.simulate = true;
    _session = std::make_unique<BoardSession>(*_document, options);
    StartUpMonitor::Outcome const outcome = _session->bringUp();
    if (!outcome.populated) {
        throw CommandError(ExitStatus::startUpFailed,
                           _options.getDocumentPath() + ": start-up failed: " + outcome.reason);
    }
    _board = _session->getBoard();
}

void RegisterSession::requireHardware() const {
    std::string reason;
    if (_options.getWay() != Way::serial && !DeviceMemory::isAccessible(_memoryDevice, reason)) {
        throw CommandError(ExitStatus::noHardware,
                           reason + " (the chip is reached through this device; see --simulate)");
    }
}

void RegisterSession::connect() {
    _application = std::make_unique<HostApplication>(_accessErrors, *_memory);
    _transport = makeTransport();
    std::string const reason = _accessErrors.take();
    if (!reason.empty()) {
        std::string const where =
            _options.getWay() == Way::serial && !_options.isSimulated() ? _options.getDevice() + ": " : "";
        throw CommandError(ExitStatus::noHardware, where + reason);
    }
    if (!_options.getTracePath().empty()) {
        _trace = std::make_unique<trace::RegisterTrace>(_options);
        _trace->attach(*_transport);
    }
}

std::unique_ptr<RegisterTransport> RegisterSession::makeTransport() {
    switch (_options.getWay()) {
    case Way::smi:
        return std::make_unique<SmiTransport>(*_application, _accessErrors, _options.getSwitchId());
    case Way::serial:
        return std::make_unique<VitesseTransport>(
            _accessErrors,
            std::make_unique<VitesseSerialCommunications>(
                *_application, false, _controller ? _controller->getDevicePath() : _options.getDevice()));
    case Way::parallel:
        break;
    }
    return std::make_unique<VitesseTransport>(
        _accessErrors, std::make_unique<VitesseParallelCommunication>(*_application, false));
}

void RegisterSession::showTraffic() const {
    if (_transport != nullptr) {
        _controller->waitForCommands(_transport->getAccesses());
    }
    _errors << "to the controller:   \"" << visible(_controller->getReceived()) << "\"\n"
            << "from the controller: \"" << visible(_controller->getSent()) << "\"\n";
}

} // namespace switchctl
