#include "switchctl/audit/AuditedBoard.hpp"

#include "reference_host/DeviceMemory.hpp"
#include "switchctl/SimulatedMemory.hpp"
#include "switchctl/registers/CommandError.hpp"
#include "switchctl/registers/SmiTransport.hpp"
#include "switchctl/registers/VitesseTransport.hpp"
#include "vitesse/VitesseParallelCommunication.hpp"

namespace switchctl::audit {

using reference_host::DeviceMemory;

namespace {

std::unique_ptr<reference_host::PhysicalMemory> openMemory(std::string const& device) {
    std::string reason;
    if (!DeviceMemory::isAccessible(device, reason)) {
        throw CommandError(ExitStatus::noHardware,
                           reason + " (the chips are reached through this device; see --simulate)");
    }
    return std::make_unique<DeviceMemory>(device);
}

} // namespace

AuditedBoard::AuditedBoard(simulation::SimulatedBoard& board)
    : _memory(std::make_unique<SimulatedMemory>(board)), _application(_errors, *_memory) {}

AuditedBoard::AuditedBoard(std::string const& memoryDevice)
    : _memory(openMemory(memoryDevice)), _application(_errors, *_memory) {}

std::unique_ptr<RegisterTransport> AuditedBoard::connect(unsigned switchId, std::string const& model) {
    std::unique_ptr<RegisterTransport> transport;
    if (model == "vsc7390") {
        transport = std::make_unique<VitesseTransport>(
            _errors, std::make_unique<VitesseParallelCommunication>(_application, false));
    } else {
        transport = std::make_unique<SmiTransport>(_application, _errors, switchId);
    }
    std::string const reason = _errors.take();
    if (!reason.empty()) {
        throw CommandError(ExitStatus::noHardware, "switch " + std::to_string(switchId) + ": " + reason);
    }
    return transport;
}

Application& AuditedBoard::getApplication() {
    return _application;
}

AccessErrors& AuditedBoard::getErrors() {
    return _errors;
}

} // namespace switchctl::audit
