#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace simulation {

/// A line that the serial controller understands: a letter and decimal operands, each after one blank
/// and without padding.
struct SerialControllerCommand {
    enum class Operation { readRegister, writeRegister, readPhy, writePhy };

    Operation operation;
    /// Of registers: block, sub-block, address, and the value to write. Of PHYs: PHY, register, value.
    std::vector<std::uint32_t> operands;

    /// \param line without its line end.
    /// \param reason set to what is wrong with the line when it is no command.
    static std::optional<SerialControllerCommand> parse(std::string const& line, std::string& reason);
};

} // namespace simulation
