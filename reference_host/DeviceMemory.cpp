#include "reference_host/DeviceMemory.hpp"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/types.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "reference_host/DeviceLock.hpp"
#include "reference_host/FileDescriptor.hpp"

namespace reference_host {

namespace {

// O_SYNC is what makes the kernel map the pages of a register block uncached.
constexpr int openFlags = O_RDWR | O_SYNC;

std::size_t pageSize() {
    return static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
}

std::size_t roundedUp(std::size_t length, std::size_t unit) {
    return (length + unit - 1) / unit * unit;
}

} // namespace

DeviceMemory::DeviceMemory(std::string devicePath) : _devicePath(std::move(devicePath)) {}

bool DeviceMemory::isAccessible(std::string const& devicePath, std::string& reason) {
    FileDescriptor const device(devicePath, openFlags);
    if (!device.isOpen()) {
        reason = devicePath + ": " + device.error();
    }
    return device.isOpen() && DeviceLock::take(devicePath, reason);
}

bool DeviceMemory::map(unsigned int physicalAddress, unsigned int size, Mapping& mapping,
                       std::string& reason) {
    FileDescriptor const device(_devicePath, openFlags);
    if (!device.isOpen()) {
        reason = _devicePath + ": " + device.error();
        return false;
    }
    if (!DeviceLock::take(_devicePath, reason)) {
        return false;
    }
    std::size_t const startOffset = physicalAddress % pageSize();
    std::size_t const length = size == 0 ? 0 : roundedUp(startOffset + size, pageSize());
    void* const pages = ::mmap(nullptr, length, PROT_READ | PROT_WRITE, MAP_SHARED, device.get(),
                               static_cast<off_t>(physicalAddress - startOffset));
    if (pages == MAP_FAILED) { // NOLINT
        reason = _devicePath + ": mmap: " + systemErrorText(errno);
        return false;
    }
    mapping.baseAddress = reinterpret_cast<std::uintptr_t>(pages); // NOLINT
    mapping.startOffset = static_cast<unsigned int>(startOffset);
    mapping.length = length;
    return true;
}

void DeviceMemory::unmap(Mapping const& mapping) noexcept {
    ::munmap(reinterpret_cast<void*>(mapping.baseAddress), mapping.length); // NOLINT
}

} // namespace reference_host
