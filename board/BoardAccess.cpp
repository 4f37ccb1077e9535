#include "board/BoardAccess.hpp"

#include "board/SimulatedMemory.hpp"
#include "chips/88e6096/SmiTransport.hpp"
#include "chips/ToolError.hpp"
#include "chips/vsc7390/VitesseTransport.hpp"
#include "reference_host/DeviceMemory.hpp"
#include "vitesse/VitesseParallelCommunication.hpp"

namespace board {

using reference_host::DeviceMemory;

namespace {

std::unique_ptr<reference_host::PhysicalMemory> openMemory(std::string const& device) {
    std::string reason;
    if (!DeviceMemory::isAccessible(device, reason)) {
        throw chips::ToolError(chips::ExitStatus::noHardware,
                               reason + " (the chips are reached through this device; see --simulate)");
    }
    return std::make_unique<DeviceMemory>(device);
}

} // namespace

BoardAccess::BoardAccess(simulation::SimulatedBoard& board)
    : _memory(std::make_unique<SimulatedMemory>(board)), _application(_errors, *_memory) {}

BoardAccess::BoardAccess(std::string const& memoryDevice)
    : _memory(openMemory(memoryDevice)), _application(_errors, *_memory) {}

std::unique_ptr<chips::RegisterTransport> BoardAccess::connect(unsigned switchId, std::string const& model) {
    std::unique_ptr<chips::RegisterTransport> transport;
    if (model == "vsc7390") {
        transport = std::make_unique<chips::VitesseTransport>(
            _errors, std::make_unique<VitesseParallelCommunication>(_application, false));
    } else {
        transport = std::make_unique<chips::SmiTransport>(_application, _errors, switchId);
    }
    std::string const reason = _errors.take();
    if (!reason.empty()) {
        throw chips::ToolError(chips::ExitStatus::noHardware,
                               "switch " + std::to_string(switchId) + ": " + reason);
    }
    return transport;
}

Application& BoardAccess::getApplication() {
    return _application;
}

chips::AccessErrors& BoardAccess::getErrors() {
    return _errors;
}

} // namespace board
