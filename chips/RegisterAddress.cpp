#include "chips/RegisterAddress.hpp"

#include <fmt/format.h>

namespace chips {

namespace {

constexpr unsigned bitsOfMdio = 16;
constexpr unsigned bitsOfBlocks = 32;
constexpr unsigned mdioAddresses = 32;
constexpr unsigned blocks = 16;
constexpr unsigned addressesInBlock = 256;

} // namespace

unsigned RegisterAddress::getBits() const {
    return space == Space::block ? bitsOfBlocks : bitsOfMdio;
}

bool RegisterAddress::isUnitInRange() const {
    return space == Space::block ? block < blocks && unit < blocks : unit < mdioAddresses;
}

bool RegisterAddress::isInRange() const {
    return isUnitInRange() && address < (space == Space::block ? addressesInBlock : mdioAddresses);
}

bool RegisterAddress::isSameUnit(UnitPlace const& other) const {
    return !(*this < other) && !(other < *this);
}

std::string RegisterAddress::getUnitText() const {
    switch (space) {
    case Space::block:
        return fmt::format("{}.{}", block, unit);
    case Space::phy:
        return fmt::format("phy{}", unit);
    case Space::device:
        break;
    }
    return fmt::format("0x{:02x}", unit);
}

std::string RegisterAddress::getNumberText() const {
    return fmt::format("0x{:02x}", address);
}

} // namespace chips
