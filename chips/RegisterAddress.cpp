#include "chips/RegisterAddress.hpp"

#include "chips/NumberText.hpp"

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

bool RegisterAddress::isSameUnit(RegisterAddress const& other) const {
    return space == other.space && block == other.block && unit == other.unit;
}

std::string RegisterAddress::getText() const {
    std::string const number = "/" + NumberText::hexadecimal(address, 2);
    switch (space) {
    case Space::block:
        return std::to_string(block) + "." + std::to_string(unit) + number;
    case Space::phy:
        return "phy" + std::to_string(unit) + number;
    case Space::device:
        break;
    }
    return NumberText::hexadecimal(unit, 2) + number;
}

} // namespace chips
