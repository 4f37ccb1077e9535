#pragma once

#include <string>

#include "reference_host/PhysicalMemory.hpp"

namespace reference_host {

/// The real physical addresses of the board, through a device like /dev/mem.
///
/// Holds nothing between calls: every mapping opens the device, and keeps its pages when the device
/// is closed again. But the process that has used the device keeps its DeviceLock until it ends, so that
/// two of them do not mix their accesses.
class DeviceMemory : public PhysicalMemory {
public:
    static constexpr char const* defaultDevicePath = "/dev/mem";

    explicit DeviceMemory(std::string devicePath = defaultDevicePath);

    /// Whether the device can be opened for reading and writing and is this process's, after a wait if
    /// DeviceLock's policy wants one, so that a tool can refuse before it starts anything.
    /// \param reason set to the device's path and what is in the way when it is not.
    static bool isAccessible(std::string const& devicePath, std::string& reason);

    /// Maps the whole pages that hold the window, uncached as far as the device does that, once the device is
    /// this process's.
    bool map(unsigned int physicalAddress, unsigned int size, Mapping& mapping, std::string& reason) override;

    void unmap(Mapping const& mapping) noexcept override;

private:
    std::string _devicePath;
};

} // namespace reference_host
