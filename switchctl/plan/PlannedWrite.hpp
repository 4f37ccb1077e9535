#pragma once

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "simulation/AccessLog.hpp"

namespace switchctl::plan {

/// A register write of a bring-up.
struct PlannedWrite {
    /// Since the start of the bring-up, to the end of the transfer.
    std::uint64_t nanoseconds = 0;
    std::string registerName;
    /// Number of the register in its unit.
    unsigned address = 0;
    std::uint32_t value = 0;
    /// Hexadecimal digits of the value.
    unsigned digits = 4;
    /// The fields that get another value.
    std::vector<simulation::AccessLog::FieldChange> changes;

    /// Whether the chip gets the same from both; time and what was there before do not count.
    bool operator==(PlannedWrite const& other) const;

    /// Register, number, value and fields in one line, without a line end.
    std::string getText() const;

    nlohmann::ordered_json toJson() const;
};

} // namespace switchctl::plan
