#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace chips {

/// A counter of a chip's ports: what it is called, what it counts, and where it is.
struct Counter {
    enum class Unit { bytes, frames, events };

    enum class Place {
        /// Registers of the port.
        portRegister,
        /// Counters that the statistics unit of an 88E6096 captures and hands out.
        statisticsUnit,
    };

    /// As the library's text has it; of a chip, each name once.
    char const* name;
    /// In OpenMetrics, without what all have in common and without the unit.
    char const* metric;
    /// For people, one sentence.
    char const* help;
    Unit unit;
    Place place;
    /// The register's address, or the counter's number in the statistics unit: of the counter, or of its
    /// low half.
    unsigned low;
    /// Of its high half, when it has one.
    std::optional<unsigned> high;
    /// Bits of one such register.
    unsigned bitsOfRegister;
    /// Whether what it counts is wrong in itself: no traffic, no rule and no lack of room makes it go on.
    bool isError = false;

    unsigned getBits() const { return high ? 2 * bitsOfRegister : bitsOfRegister; }

    /// The largest value; one more, and it begins at 0 again.
    std::uint64_t getLargest() const { return ~std::uint64_t{0} >> (64U - getBits()); }

    /// "bytes", "frames" or "events".
    char const* getUnitName() const;

    /// The name of its OpenMetrics family, for example "switch_port_in_unicast_frames".
    std::string getFamily() const;
};

} // namespace chips
