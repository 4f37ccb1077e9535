#include "simulation/UnitIdentity.hpp"

#include <fmt/format.h>

#include <tuple>

namespace simulation {

namespace {

std::string nameOf(UnitKind kind, unsigned number) {
    switch (kind) {
    case UnitKind::port:
        return fmt::format("port {}", number);
    case UnitKind::global:
        return fmt::format("global {}", number);
    case UnitKind::phy:
        return fmt::format("phy {}", number);
    case UnitKind::mii:
        return fmt::format("mii {}", number);
    case UnitKind::capture:
        return fmt::format("capture {}", number);
    case UnitKind::analyser:
        return "analyser";
    case UnitKind::arbiter:
        return "arbiter";
    case UnitKind::memory:
        return "memory";
    case UnitKind::system:
        return "system";
    case UnitKind::unknown:
        break;
    }
    return "unknown";
}

} // namespace

bool UnitPlace::operator<(UnitPlace const& other) const {
    return std::tie(space, block, unit) < std::tie(other.space, other.block, other.unit);
}

UnitIdentity::UnitIdentity(std::string const& chipName, UnitKind unitKind, unsigned unitNumber,
                           UnitPlace unitPlace)
    : chip(chipName),
      unit(nameOf(unitKind, unitNumber)),
      kind(unitKind),
      number(unitNumber),
      place(unitPlace) {}

UnitIdentity::UnitIdentity(std::string const& chipName, std::string const& unitName, UnitPlace unitPlace)
    : chip(chipName), unit(unitName), kind(UnitKind::unknown), place(unitPlace) {}

std::string UnitIdentity::registerName(unsigned address) const {
    Register const* const description = registers.find(address);
    return description != nullptr ? description->getName() : fmt::format("register 0x{:02x}", address);
}

} // namespace simulation
