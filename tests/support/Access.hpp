#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace test_support {

/// One row of a table of hardware accesses, as a test writes it down. What the units and numbers
/// mean depends on the kind.
struct Access {
    enum class Kind {
        reads,       ///< an internal register of a chip: device, register (88E6096) or block and
                     ///< sub-block in 16 bits each, address (VSC7390)
        writes,      ///< likewise
        phyReads,    ///< a PHY register: PHY, register
        phyWrites,   ///< likewise
        frameReads,  ///< an MDIO frame: address on the bus, register
        frameWrites, ///< likewise
        gets,        ///< a word of a mapped section: 0, offset
        sets,        ///< likewise
    };

    Kind kind;
    unsigned int unit;
    unsigned int number;
    /// What a read gives or a write carries.
    unsigned int value;
    bool fails = false;
    /// By how much the thread's virtual clock moves when the access takes place.
    std::chrono::nanoseconds duration{0};

    /// The same access, not succeeding.
    Access failing() const;

    /// The same access, taking that long.
    Access taking(std::chrono::nanoseconds time) const;

    bool isRead() const;

    /// Whether an access that takes place is this one: its kind, its place and, for a write, its value.
    bool matches(Access const& actual) const;

    /// For example "writes 0x1B.0x05 = 0xC000".
    std::string describe() const;

    /// Moves the clock that the calling thread lives by, if there is one.
    void passTime() const;
};

using Accesses = std::vector<Access>;

Access reads(unsigned int device, unsigned int registerNumber, unsigned int value);
Access writes(unsigned int device, unsigned int registerNumber, unsigned int value);
Access reads(unsigned int block, unsigned int subBlock, unsigned int address, unsigned int value);
Access writes(unsigned int block, unsigned int subBlock, unsigned int address, unsigned int value);
Access phyReads(unsigned int phy, unsigned int registerNumber, unsigned int value);
Access phyWrites(unsigned int phy, unsigned int registerNumber, unsigned int value);
Access frameReads(unsigned int address, unsigned int registerNumber, unsigned int value);
Access frameWrites(unsigned int address, unsigned int registerNumber, unsigned int value);
Access gets(unsigned int offset, unsigned int value);
Access sets(unsigned int offset, unsigned int value);

/// The tables one after the other.
Accesses operator+(Accesses first, Accesses const& second);

} // namespace test_support
