#pragma once

#include <memory>

#include "benchmarks/required/BoardPlan.hpp"
#include "host/MappedSection.hpp"
#include "host/SystemLogInterface.hpp"

namespace required::vitesse {

/// The chip's window on the parallel bus.
constexpr unsigned physicalAddress = 0xF3000000;
constexpr unsigned size = 0x1000000;

/// One chip. The mapping is the caller's.
struct Chip {
    HardwareMapping& bus;
    unsigned countedPorts;
    /// The chip's ports.
    std::vector<PortPlan> const& ports;
};

// What each operation requires of the bus, as for the other family.

std::unique_ptr<MappedSection> sectionOf(SystemLogInterface& log);
void openBus(HardwareMapping& bus);
unsigned read(HardwareMapping const& bus, unsigned block, unsigned subBlock, unsigned address);
void write(HardwareMapping& bus, unsigned block, unsigned subBlock, unsigned address, unsigned value);
unsigned readPhy(Chip const& chip, unsigned phy, unsigned number);
void writePhy(Chip const& chip, unsigned phy, unsigned number, unsigned value);
bool isThere(HardwareMapping const& bus);
void setUp(HardwareMapping& bus);
void clearTables(Chip const& chip);
void addToVlan(Chip const& chip, unsigned port, TagMembership const& vlan);
void configureVlans(Chip const& chip, PortPlan const& port);
void joinGroup(Chip const& chip, unsigned port, GroupMembership const& group);
void aggregate(Chip const& chip, std::vector<unsigned> const& members);
/// Of a port that is no "other" one.
void setLink(Chip const& chip, PortPlan const& port);
void configurePort(Chip const& chip, PortPlan const& port);
void readCounters(Chip const& chip, unsigned port);

/// The row of the MAC table for an address whose byte 0 is the last on the wire.
unsigned hash(unsigned char const (&mac)[6], unsigned vid);

} // namespace required::vitesse
