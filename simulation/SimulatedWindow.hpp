#pragma once

#include <cstddef>
#include <cstdint>

#include "simulation/BusDevice.hpp"

namespace simulation {

/// A range of addresses in this process that stands for a window of physical addresses: every
/// access that HardwareMapping::set or HardwareMapping::get makes to it goes to a BusDevice.
///
/// The range is reserved but not accessible, so an access that bypasses those two faults at once.
/// Registered process-wide from construction to destruction.
class SimulatedWindow {
public:
    /// `device` must outlive the window.
    SimulatedWindow(BusDevice& device, std::size_t size);
    ~SimulatedWindow();
    SimulatedWindow(SimulatedWindow const&) = delete;
    SimulatedWindow& operator=(SimulatedWindow const&) = delete;

    /// What a host gives a section as its base address; the start offset is 0.
    std::uintptr_t getBaseAddress() const { return _baseAddress; }
    std::size_t getLength() const { return _length; }

private:
    std::uintptr_t _baseAddress;
    std::size_t _length;
};

} // namespace simulation
