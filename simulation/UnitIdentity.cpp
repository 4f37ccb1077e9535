#include "simulation/UnitIdentity.hpp"

#include <cstdio>

namespace simulation {

std::string UnitIdentity::registerName(unsigned address) const {
    if (Register const* const description = registers.find(address)) {
        return description->getName();
    }
    char text[32];
    std::snprintf(text, sizeof text, "register 0x%02x", address);
    return text;
}

} // namespace simulation
