#include "benchmarks/micro/PlainMemory.hpp"

#include "host/HardwareMapping.hpp"
#include "simulation/Arm920tMac.hpp"
#include "simulation/vsc7390/Vsc7390TestSide.hpp"

namespace benchmarks {

namespace {

using simulation::Arm920tMac;
using simulation::Vsc7390TestSide;

/// Block 7, sub-block 0, address 0x30.
constexpr unsigned readStatus = 7U << 14 | 0x30U << 2;
constexpr unsigned ready = 1U << 4;
constexpr unsigned miiData = 0x14;

/// Where accesses are written down, or null.
std::vector<Access>* recorded = nullptr;

void tell(std::uintptr_t address, bool isWrite, unsigned value) {
    if (recorded != nullptr) {
        recorded->push_back({static_cast<unsigned>(address), isWrite, value});
    }
}

unsigned volatile& wordAt(std::uintptr_t address) {
    return *reinterpret_cast<unsigned volatile*>(address);
}

} // namespace

PlainMemory::PlainMemory()
    : _mac(Arm920tMac::size / sizeof(unsigned)),
      _parallelBus(Vsc7390TestSide::windowSize / sizeof(unsigned)) {
    _parallelBus[readStatus / sizeof(unsigned)] = ready;
}

bool PlainMemory::map(unsigned int physicalAddress, unsigned int /*size*/, Mapping& mapping,
                      std::string& /*reason*/) {
    std::vector<unsigned>& window = physicalAddress == Arm920tMac::physicalAddress ? _mac : _parallelBus;
    mapping.baseAddress = reinterpret_cast<std::uintptr_t>(window.data());
    mapping.startOffset = 0;
    mapping.length = window.size() * sizeof(unsigned);
    return true;
}

void PlainMemory::unmap(Mapping const& /*mapping*/) noexcept {}

std::vector<Access> PlainMemory::record(std::function<void()> const& work) {
    std::vector<Access> accesses;
    recorded = &accesses;
    work();
    recorded = nullptr;
    auto const bus = reinterpret_cast<std::uintptr_t>(_parallelBus.data());
    auto const mac = reinterpret_cast<std::uintptr_t>(_mac.data());
    for (Access& access : accesses) {
        // Of the addresses in memory, the lower halves are enough.
        unsigned const offset = access.physicalAddress - static_cast<unsigned>(bus);
        access.physicalAddress =
            offset < Vsc7390TestSide::windowSize
                ? Vsc7390TestSide::physicalAddress + offset
                : Arm920tMac::physicalAddress + (access.physicalAddress - static_cast<unsigned>(mac));
    }
    return accesses;
}

} // namespace benchmarks

// The dynamic linker prefers these to the library's.

bool HardwareMapping::set(unsigned int offset, unsigned int value) {
    if (_baseAddress == notMapped) {
        return false;
    }
    if (offset != benchmarks::miiData) {
        benchmarks::wordAt(_baseAddress + _startOffset + offset) = value;
    }
    benchmarks::tell(_baseAddress + _startOffset + offset, true, value);
    return true;
}

bool HardwareMapping::get(unsigned int offset, unsigned int& value) const {
    if (_baseAddress == notMapped) {
        return false;
    }
    value = benchmarks::wordAt(_baseAddress + _startOffset + offset);
    benchmarks::tell(_baseAddress + _startOffset + offset, false, value);
    return true;
}
