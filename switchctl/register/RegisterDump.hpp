#pragma once

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "chips/ChipCatalogue.hpp"
#include "switchctl/register/RegisterReading.hpp"

namespace switchctl::registers {

/// Registers of one chip and their contents at a time.
struct RegisterDump {
    std::shared_ptr<chips::ChipCatalogue const> catalogue;
    std::vector<RegisterReading> readings;

    /// A line with the chip, then each unit in one line, and under it each register.
    /// \param transport how the chip was reached.
    void print(std::ostream& out, std::string const& transport) const;
    nlohmann::ordered_json toJson(std::string const& transport) const;

    /// Reads what print() or printJson() has written. Throws ToolError (badDocument), with file and
    /// line.
    static RegisterDump fromFile(std::string const& path);
};

} // namespace switchctl::registers
