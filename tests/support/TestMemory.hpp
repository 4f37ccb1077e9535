#pragma once

#include <cstddef>
#include <cstdint>
#include <map>

#include "reference_host/PhysicalMemory.hpp"

namespace test_support {

/// Physical memory in which a test places its windows; nothing answers anywhere else.
class TestMemory : public reference_host::PhysicalMemory {
public:
    /// \param size bytes from `physicalAddress` that a section may ask for.
    /// \param baseAddress what the section gets as its base address, with `startOffset`.
    void place(unsigned int physicalAddress, std::size_t size, std::uintptr_t baseAddress,
               unsigned int startOffset = 0);

    bool map(unsigned int physicalAddress, unsigned int size, Mapping& mapping, std::string& reason) override;
    void unmap(Mapping const& mapping) noexcept override;

    /// How many sections are mapped right now.
    int mappedSections() const { return _mapped; }

    /// How many sections have been mapped so far.
    int mappingsSoFar() const { return _mappings; }

    /// What the last section asked for.
    unsigned int lastPhysicalAddress() const { return _lastPhysicalAddress; }
    unsigned int lastSize() const { return _lastSize; }

private:
    struct Window {
        std::size_t size;
        Mapping mapping;
    };

    std::map<unsigned int, Window> _windows;
    int _mapped = 0;
    int _mappings = 0;
    unsigned int _lastPhysicalAddress = 0;
    unsigned int _lastSize = 0;
};

} // namespace test_support
