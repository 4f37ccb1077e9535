#pragma once

#include <memory>

#include "benchmarks/required/BoardPlan.hpp"
#include "host/MappedSection.hpp"
#include "host/SystemLogInterface.hpp"

namespace required::marvell {

/// The Ethernet MAC's registers, by which the MDIO bus is reached.
constexpr unsigned macPhysicalAddress = 0x80010000;
constexpr unsigned macSize = 0x30;

/// One chip. The mapping is the caller's.
struct Chip {
    HardwareMapping& mac;
    unsigned address;
    unsigned countedPorts;
};

// What each operation requires of the bus, as plain functions: every access that the chip's protocol
// asks for, every wait with its time limit, and nothing else. A failed access is not noticed.

std::unique_ptr<MappedSection> sectionOf(SystemLogInterface& log);
unsigned openMac(HardwareMapping& mac);
void closeMac(HardwareMapping& mac, unsigned saved);
unsigned read(Chip const& chip, unsigned device, unsigned number);
void write(Chip const& chip, unsigned device, unsigned number, unsigned value);
unsigned readPhy(Chip const& chip, unsigned phy, unsigned number);
void writePhy(Chip const& chip, unsigned phy, unsigned number, unsigned value);
bool isThere(Chip const& chip);
void setAgeTime(Chip const& chip, unsigned seconds);
void clearTables(Chip const& chip);
void addToVlan(Chip const& chip, unsigned port, TagMembership const& vlan);
void configureVlans(Chip const& chip, PortPlan const& port);
/// Of a port that is no "other" one.
void setLink(Chip const& chip, PortPlan const& port);
void configurePort(Chip const& chip, PortPlan const& port);
void readCounters(Chip const& chip, unsigned port);

} // namespace required::marvell
