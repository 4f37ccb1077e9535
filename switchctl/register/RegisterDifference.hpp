#pragma once

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <ostream>
#include <vector>

#include "board/dump/RegisterDump.hpp"
#include "chips/RegisterLocation.hpp"

namespace switchctl::registers {

using board::RegisterDump;

/// A register that two dumps do not agree about.
struct RegisterDifference {
    chips::RegisterLocation location;
    /// Nothing where a dump does not have the register.
    std::optional<std::uint32_t> first;
    std::optional<std::uint32_t> second;

    /// The register in one line, then each field that differs in one.
    void print(std::ostream& out) const;
    nlohmann::ordered_json toJson() const;

    /// In the order of the first dump; then what only the second one has. Both must outlive the result.
    static std::vector<RegisterDifference> between(RegisterDump const& first, RegisterDump const& second);

private:
    struct Field {
        std::string name;
        std::uint32_t first;
        std::uint32_t second;
    };

    std::vector<Field> getFields() const;
};

} // namespace switchctl::registers
