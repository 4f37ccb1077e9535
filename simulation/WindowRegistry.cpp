#include "simulation/WindowRegistry.hpp"

#include <mutex>

namespace simulation {

WindowRegistry& WindowRegistry::getInstance() {
    static auto* const registry = new WindowRegistry;
    return *registry;
}

void WindowRegistry::add(std::uintptr_t baseAddress, BusDevice& device) {
    std::unique_lock<std::shared_mutex> const lock(_mutex);
    _devices[baseAddress] = &device;
}

void WindowRegistry::remove(std::uintptr_t baseAddress) {
    std::unique_lock<std::shared_mutex> const lock(_mutex);
    _devices.erase(baseAddress);
}

BusDevice* WindowRegistry::find(std::uintptr_t baseAddress) const {
    std::shared_lock<std::shared_mutex> const lock(_mutex);
    auto const found = _devices.find(baseAddress);
    return found == _devices.end() ? nullptr : found->second;
}

} // namespace simulation
