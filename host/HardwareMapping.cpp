#include "host/HardwareMapping.hpp"

namespace {

using Word = std::uint32_t;

Word volatile& wordAt(std::uintptr_t base, unsigned int offset) {
    std::uintptr_t const wordAligned = ~(std::uintptr_t{sizeof(Word)} - 1);
    // A device register has no object behind it: its address is all there is.
    return *reinterpret_cast<Word volatile*>(base + (offset & wordAligned)); // NOLINT
}

} // namespace

bool HardwareMapping::set(unsigned int offset, unsigned int value) {
    if (_baseAddress == notMapped) {
        return false;
    }
    wordAt(_baseAddress, _startOffset + offset) = value;
    if (_dummySection != nullptr && _dummySection->_baseAddress != notMapped) {
        ++_dummySectionWriteCounts;
        wordAt(_dummySection->_baseAddress, 0) = _dummySectionWriteCounts;
    }
    return true;
}

bool HardwareMapping::get(unsigned int offset, unsigned int& value) const {
    if (_baseAddress == notMapped) {
        return false;
    }
    value = wordAt(_baseAddress, _startOffset + offset);
    return true;
}
