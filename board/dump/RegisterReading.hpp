#pragma once

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <ostream>
#include <string>

#include "chips/RegisterLocation.hpp"

namespace board {

/// A register and what was read from it or written to it.
struct RegisterReading {
    chips::RegisterLocation location;
    std::uint32_t value = 0;

    /// For example "0x007c".
    std::string getValueText() const;

    /// The register in one line, then each field in one.
    void print(std::ostream& out) const;

    /// In one line, indented: address, name, value, fields; as a dump has it.
    void printShort(std::ostream& out) const;

    nlohmann::ordered_json toJson() const;
};

} // namespace board
