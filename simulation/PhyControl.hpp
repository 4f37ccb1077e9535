#pragma once

#include "simulation/RegisterTable.hpp"

/// The registers that all PHYs have, and the control register among them.
namespace simulation::phy {

enum Register : unsigned { control = 0, status = 1, identifier1 = 2, identifier2 = 3 };
constexpr Field reset{"Reset", 15};
constexpr Field speedLow{"SpeedLow", 13};
constexpr Field autoNegotiation{"AutoNegotiation", 12};
constexpr Field powerDown{"PowerDown", 11};
constexpr Field restartNegotiation{"RestartNegotiation", 9};
constexpr Field duplex{"Duplex", 8};
constexpr Field speedHigh{"SpeedHigh", 6};

/// The row of the control register.
inline simulation::Register controlRow(std::uint32_t resetValue) {
    return simulation::Register(control, "Control", resetValue)
        .selfClearing(reset)
        .field("Loopback", 14)
        .field(speedLow)
        .field(autoNegotiation)
        .field(powerDown)
        .field("Isolate", 10)
        .selfClearing(restartNegotiation)
        .field(duplex)
        .field("CollisionTest", 7)
        .field(speedHigh);
}

/// What stays of a word that was written there.
constexpr std::uint32_t kept(std::uint32_t value) {
    return value & ~(reset.getMask() | restartNegotiation.getMask());
}

} // namespace simulation::phy
