#pragma once

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "simulation/UnitIdentity.hpp"
#include "simulation/VirtualClock.hpp"

namespace simulation {

/// What reached the inside of the chips of one board: one entry for each access to an internal
/// register, in one sequence for all chips, the same on every run. The transfers that carried
/// these accesses are only counted.
///
/// Any thread may call it.
class AccessLog {
public:
    enum class Kind { read, write };

    /// A field of the register that a write has given another value.
    struct FieldChange {
        std::string field;
        std::uint32_t before;
        std::uint32_t after;
    };

    /// One access, decoded.
    struct Entry {
        /// Position in the log, from 1.
        std::size_t sequence;
        /// Virtual time at the end of the transfer.
        std::uint64_t nanoseconds;
        /// The chip's command, counted from 1, that carried the access. Accesses that follow from
        /// one command (to a PHY, through the command unit) share the number.
        unsigned transfer;
        /// For example "switch 0".
        std::string chip;
        /// For example "port 3", "global 1", "phy 3".
        std::string unit;
        /// For example "PortControl"; "register 0x1a" when the chip knows none there.
        std::string registerName;
        unsigned address;
        Kind kind;
        /// What was written, or what the read returned.
        std::uint32_t value;
        /// Of a write only. The fields as the chip took them, before a command took effect.
        std::vector<FieldChange> changes;
        /// What the unit is, where, and what its registers are.
        std::shared_ptr<UnitIdentity const> identity;
    };

    explicit AccessLog(VirtualClock const& clock);

    /// Called by the models. `before` and `after` are the register's contents around a write.
    void addRead(std::shared_ptr<UnitIdentity const> const& unit, unsigned address, unsigned transfer,
                 std::uint32_t value);
    void addWrite(std::shared_ptr<UnitIdentity const> const& unit, unsigned address, unsigned transfer,
                  std::uint32_t value, std::uint32_t before, std::uint32_t after);
    void countBusAccess();
    void countMdioFrame();

    /// Number of entries.
    std::size_t getSize() const;

    /// The entry at `index`, from 0; throws std::out_of_range.
    Entry getEntry(std::size_t index) const;

    /// The entries from `first` (counted from 0) to the last.
    std::vector<Entry> getEntries(std::size_t first = 0) const;

    /// 32-bit accesses to simulated windows of physical addresses so far.
    std::uint64_t getBusAccesses() const;

    /// MDIO frames so far, also those that nothing answered.
    std::uint64_t getMdioFrames() const;

    /// One line for each entry, as line() gives it.
    void print(std::ostream& out) const;

    /// The entry in one line without a line end, for example
    /// "   12  0.001536000  switch 0  port 3    PhysicalControl       W 0x003f  LinkValue 0->0x1".
    static std::string line(Entry const& entry);

    /// Forgets the entries; the counters and the numbering start over.
    void clear();

private:
    struct Record {
        std::uint64_t nanoseconds;
        std::shared_ptr<UnitIdentity const> unit;
        unsigned address;
        unsigned transfer;
        Kind kind;
        std::uint32_t value;
        std::uint32_t before;
        std::uint32_t after;
    };

    static Entry decode(Record const& record, std::size_t sequence);

    VirtualClock const& _clock;
    std::vector<Record> _records;
    std::uint64_t _busAccesses = 0;
    std::uint64_t _mdioFrames = 0;
    mutable std::mutex _mutex;
};

} // namespace simulation
