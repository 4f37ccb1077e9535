#pragma once

#include <cstdint>
#include <string>

namespace reference_host {

/// Where hardware sections get their addresses from: the real bus, or a simulated one.
class PhysicalMemory {
public:
    /// A window of physical addresses as the process sees it.
    struct Mapping {
        /// Address of the first mapped page; all ones when nothing is mapped.
        std::uintptr_t baseAddress = ~std::uintptr_t{0};
        /// Bytes from there to the first byte that was asked for.
        unsigned int startOffset = 0;
        /// Bytes mapped, whole pages.
        std::size_t length = 0;
    };

    virtual ~PhysicalMemory() = default;

    /// Maps `size` bytes from `physicalAddress`.
    /// \return true with `mapping` filled, or false with `reason` saying in one line why not.
    virtual bool map(unsigned int physicalAddress, unsigned int size, Mapping& mapping,
                     std::string& reason) = 0;

    /// Gives back what map() gave. Does not throw.
    virtual void unmap(Mapping const& mapping) noexcept = 0;
};

} // namespace reference_host
