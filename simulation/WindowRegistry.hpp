#pragma once

#include <cstdint>
#include <map>
#include <shared_mutex>

#include "simulation/BusDevice.hpp"

namespace simulation {

/// All simulated windows of the process by base address. Any thread may call it.
class WindowRegistry {
public:
    /// Lives until the process ends, whatever is destroyed before.
    static WindowRegistry& getInstance();

    void add(std::uintptr_t baseAddress, BusDevice& device);
    void remove(std::uintptr_t baseAddress);

    /// What answers the window that starts there; null when the address is not simulated.
    BusDevice* find(std::uintptr_t baseAddress) const;

private:
    WindowRegistry() = default;

    std::map<std::uintptr_t, BusDevice*> _devices;
    mutable std::shared_mutex _mutex;
};

} // namespace simulation
