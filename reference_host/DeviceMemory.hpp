#pragma once

#include <string>

#include "reference_host/PhysicalMemory.hpp"

namespace reference_host {

/// The real physical addresses of the board, through a device like /dev/mem.
///
/// Holds nothing between calls: every mapping opens the device, and keeps its pages when the device
/// is closed again.
class DeviceMemory : public PhysicalMemory {
public:
    static constexpr char const* defaultDevicePath = "/dev/mem";

    explicit DeviceMemory(std::string devicePath = defaultDevicePath);

    /// Whether the device can be opened for reading and writing, so that a tool can refuse before
    /// it starts anything.
    /// \param reason set to the device's path and the system's reason when it cannot.
    static bool isAccessible(std::string const& devicePath, std::string& reason);

    /// Maps the whole pages that hold the window, uncached as far as the device does that.
    bool map(unsigned int physicalAddress, unsigned int size, Mapping& mapping, std::string& reason) override;

    void unmap(Mapping const& mapping) noexcept override;

private:
    std::string _devicePath;
};

} // namespace reference_host
