#pragma once

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <mutex>
#include <string>
#include <vector>

#include "simulation/AccessLog.hpp"
#include "simulation/VirtualClock.hpp"

namespace simulation {

/// What a driver did to the chips of one board that their makers do not foresee. The models carry
/// on as real chips would; nothing of this shows on the bus.
///
/// Any thread may call it.
class MisuseReport {
public:
    enum class Kind {
        /// An access to a register that the model does not know. It is plain storage.
        unknownRegister,
        /// A write that tried to set bits which are reserved or read-only. They did not change.
        unwritableBits,
        /// A command that was started while the unit showed busy. It was carried out.
        commandWhileBusy,
        /// A command without a meaning, or for an item that does not exist. Nothing happened.
        meaninglessCommand,
        /// A read of a data register before the data was there. It gave what the last one left.
        dataNotReady,
        /// An access to a part that the chip does not have. It reads the same always.
        absentBlock,
        /// A line to the serial controller that is no command of its. It got no answer.
        malformedCommand,
    };

    struct Entry {
        Kind kind;
        std::uint64_t nanoseconds;
        /// How many register accesses the board's log had, this one included; see AccessLog::Entry::sequence.
        std::size_t access;
        /// Who was misused, as in the access log.
        std::string chip;
        std::string unit;
        std::string registerName;
        /// What happened, in words, with the values.
        std::string text;
    };

    MisuseReport(VirtualClock const& clock, AccessLog const& log);

    void add(Kind kind, std::string const& chip, std::string const& unit, std::string const& registerName,
             std::string const& text);

    std::size_t getSize() const;
    std::size_t getSize(Kind kind) const;
    std::vector<Entry> getEntries() const;

    /// One line for each entry.
    void print(std::ostream& out) const;
    void clear();

    /// For example "unknown register".
    static char const* name(Kind kind);

private:
    VirtualClock const& _clock;
    AccessLog const& _log;
    std::vector<Entry> _entries;
    mutable std::mutex _mutex;
};

} // namespace simulation
