#include "board/BoardAccess.hpp"

#include "board/SimulatedMemory.hpp"
#include "chips/ChipKinds.hpp"
#include "chips/ToolError.hpp"
#include "reference_host/DeviceMemory.hpp"

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

BoardAccess::BoardAccess(simulation::SimulatedBoard& board, WrapMemory const& wrap)
    : _memory(wrap ? wrap(std::make_unique<SimulatedMemory>(board))
                   : std::make_unique<SimulatedMemory>(board)),
      _application(_errors, *_memory) {}

BoardAccess::BoardAccess(std::string const& memoryDevice, WrapMemory const& wrap)
    : _memory(wrap ? wrap(openMemory(memoryDevice)) : openMemory(memoryDevice)),
      _application(_errors, *_memory) {}

std::unique_ptr<chips::RegisterTransport> BoardAccess::connect(unsigned switchId, std::string const& model) {
    chips::ChipKind const& kind = chips::ChipKinds::get(model, "switchctl");
    auto transport = kind.connect(kind.getFacts().transports.front(), {_application, _errors, switchId});
    std::string const reason = _errors.take();
    if (!reason.empty()) {
        throw chips::ToolError(chips::ExitStatus::noHardware,
                               "switch " + std::to_string(switchId) + ": " + reason);
    }
    return transport;
}

} // namespace board
