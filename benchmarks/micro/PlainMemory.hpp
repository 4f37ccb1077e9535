#pragma once

#include <functional>
#include <vector>

#include "benchmarks/Access.hpp"
#include "reference_host/PhysicalMemory.hpp"

namespace benchmarks {

/// Ordinary memory in the place of a board's registers, on which every access takes next to no time: never
/// busy, a fetched value always there, and all values 0. Comes with register accessors for the whole process
/// that lose what is written to the MAC's data register: a frame's answer is 0, too.
class PlainMemory : public reference_host::PhysicalMemory {
public:
    PlainMemory();

    bool map(unsigned int physicalAddress, unsigned int size, Mapping& mapping, std::string& reason) override;
    void unmap(Mapping const& mapping) noexcept override;

    /// What a function accesses.
    std::vector<Access> record(std::function<void()> const& work);

private:
    std::vector<unsigned> _mac;
    std::vector<unsigned> _parallelBus;
};

} // namespace benchmarks
