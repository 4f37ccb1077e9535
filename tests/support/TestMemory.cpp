#include "tests/support/TestMemory.hpp"

namespace test_support {

void TestMemory::place(unsigned int physicalAddress, std::size_t size, std::uintptr_t baseAddress,
                       unsigned int startOffset) {
    _windows[physicalAddress] = Window{size, Mapping{baseAddress, startOffset, startOffset + size}};
}

bool TestMemory::map(unsigned int physicalAddress, unsigned int size, Mapping& mapping, std::string& reason) {
    _lastPhysicalAddress = physicalAddress;
    _lastSize = size;
    auto const found = _windows.find(physicalAddress);
    if (found == _windows.end() || found->second.size < size) {
        reason = "nothing answers there";
        return false;
    }
    mapping = found->second.mapping;
    ++_mapped;
    ++_mappings;
    return true;
}

void TestMemory::unmap(Mapping const&) noexcept {
    --_mapped;
}

} // namespace test_support
